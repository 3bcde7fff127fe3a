// The base text `alap_szoveg`: the comment lines describing a run's input and settings that every
// result file repeats in its header. Its first line is a continuation (" from <absolute input
// path>") that each writer prefixes with its own phrase; every other line starts with "#". Numbers
// are written with 6 decimals. Neither function throws.
#pragma once

#include <cstdint>
#include <string>

namespace kcp {

// Replaces `alap` with the input line and the two threshold lines. The upper-threshold line
// reports the lower threshold's value; kept as is on purpose.
void Generate_alap_szoveg(std::string& alap, const std::string& input_file, const bool& lower_flag,
                          const double& lower, const bool& upper_flag, const double& upper);
// Appends the intensity, direction, time-limit and fixed-k lines. The fixed-k line ends in a
// newline followed by ".", kept as is on purpose.
void Extend_alap_szoveg(std::string& alap, const bool& intensity_flag, const double& intensity,
                        const bool& directed, const bool& time_flag, const double& max_time,
                        const bool& fixed_k_flag, const std::uint32_t& fixed_k);

}  // namespace kcp
