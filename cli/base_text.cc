#include "cli/base_text.h"

#include "fsutil/path_query.h"
#include "text/conversions.h"

namespace kcp {

namespace {
constexpr std::uint32_t kDecimals = 6;
}

void Generate_alap_szoveg(std::string& alap, const std::string& input_file, const bool& lower_flag,
                          const double& lower, const bool& upper_flag,
                          [[maybe_unused]] const double& upper) {
  alap = " from " + Get_total_path(input_file) + "\n";
  if (lower_flag) {
    alap += "# at a lower link weight threshold of " + double2string(lower, kDecimals) + ",\n";
  } else {
    alap += "# at no lower link weight threshold,\n";
  }
  if (upper_flag) {
    // The lower threshold's value, not the upper one: a deliberate detail of the record.
    alap += "# and at an upper link weight threshold of " + double2string(lower, kDecimals) + ".\n";
  } else {
    alap += "# and at no upper link weight threshold.\n";
  }
}

void Extend_alap_szoveg(std::string& alap, const bool& intensity_flag, const double& intensity,
                        const bool& directed, const bool& time_flag, const double& max_time,
                        const bool& fixed_k_flag, const std::uint32_t& fixed_k) {
  if (intensity_flag) {
    alap += "# A lower link weight intensity threshold of " + double2string(intensity, kDecimals) +
            " was set.\n";
  }
  alap +=
      directed ? "# Links were treated as directed.\n" : "# Links were treated as undirected.\n";
  if (time_flag) {
    alap += "# The maximal allowed time per node during clique search was " +
            double2string(max_time, kDecimals) + " secs.\n";
  } else {
    alap += "# No time limit was set for the clique search.\n";
  }
  if (fixed_k_flag) {
    alap += "# The communities were extracted solely at k=" + int2string(fixed_k) + "\n.";
  }
}

}  // namespace kcp
