#include "cli/base_text.h"

#include <string_view>

#include "core/result_layout.h"
#include "fsutil/path_query.h"
#include "text/conversions.h"

namespace kcp {

namespace {
constexpr std::uint32_t kDecimals = 6;

std::string Setting_line(std::string_view start, const std::string& value, std::string_view end) {
  return std::string(start) + value + std::string(end);
}
}  // namespace

void Generate_alap_szoveg(std::string& alap, const std::string& input_file, const bool& lower_flag,
                          const double& lower, const bool& upper_flag,
                          [[maybe_unused]] const double& upper) {
  alap = " from " + Get_total_path(input_file) + "\n";
  if (lower_flag) {
    alap += Setting_line(layout::kLowerThresholdLine, double2string(lower, kDecimals),
                         layout::kLowerThresholdEnd);
  } else {
    alap += layout::kNoLowerThresholdLine;
  }
  if (upper_flag) {
    // The lower threshold's value, not the upper one: a deliberate detail of the record.
    alap += Setting_line(layout::kUpperThresholdLine, double2string(lower, kDecimals),
                         layout::kUpperThresholdEnd);
  } else {
    alap += layout::kNoUpperThresholdLine;
  }
}

void Extend_alap_szoveg(std::string& alap, const bool& intensity_flag, const double& intensity,
                        const bool& directed, const bool& time_flag, const double& max_time,
                        const bool& fixed_k_flag, const std::uint32_t& fixed_k) {
  if (intensity_flag) {
    alap += Setting_line(layout::kIntensityLine, double2string(intensity, kDecimals),
                         layout::kIntensityEnd);
  }
  alap += directed ? layout::kDirectedLinksLine : layout::kUndirectedLinksLine;
  if (time_flag) {
    alap += Setting_line(layout::kTimeLimitLine, double2string(max_time, kDecimals),
                         layout::kTimeLimitEnd);
  } else {
    alap += layout::kNoTimeLimitLine;
  }
  if (fixed_k_flag) {
    alap += Setting_line(layout::kFixedKLine, int2string(fixed_k), layout::kFixedKEnd);
  }
}

}  // namespace kcp
