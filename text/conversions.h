// Conversions between command-line words or file fields and numbers, and numbers into the
// fixed-digit texts used in directory and file names. Nothing here throws or prints: failures
// are reported by the bool result (true on success) and the `suspicious` out-flag, which means
// "converted, but the text did not look like a value of this type". Every rounding of the
// program goes through gRound, which sends exact halves up (2.5 -> 3, -0.5 -> 0).
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace kcp {

// True and value set when the whole text (blanks around allowed) is one number.
bool stringtodouble(const std::string& text, double& value);

int gRound(const double& x);

bool Convert_from_string(const std::string& text, std::string& value, bool& suspicious);
bool Convert_from_string(const std::string& text, double& value, bool& suspicious);
bool Convert_from_string(const std::string& text, std::int32_t& value, bool& suspicious);
bool Convert_from_string(const std::string& text, std::uint32_t& value, bool& suspicious);
bool Convert_from_string(const std::string& text, bool& value, bool& suspicious);
bool Convert_from_string(const std::string& text, std::vector<bool>::reference value,
                         bool& suspicious);

// Fixed-point text with exactly `digits` decimals, built digit by digit (see the .cc).
std::string double2string(const double& x, const std::uint32_t& digits);
// The length of double2string(x, digits), found without writing the decimals beyond those
// computed from x (any count of digits is accepted; billions would not fit in memory).
std::size_t double2string_length(const double& x, const std::uint32_t& digits);
std::string int2string(const std::int32_t& n);
std::string int2string(const std::uint32_t& n);
// Padded with leading zeros to `width` characters (after a minus sign).
std::string int2string(const std::int32_t& n, const std::uint32_t& width);
std::string int2string(const std::uint32_t& n, const std::uint32_t& width);

std::string operator+(const std::string& s, const std::int32_t& n);
std::string operator+(const std::string& s, const std::uint32_t& n);

}  // namespace kcp
