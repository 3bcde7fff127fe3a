#include "cli/base_text.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace kcp {
namespace {

const std::string kFrom = " from /data/net.txt\n";
const std::string kNoLower = "# at no lower link weight threshold,\n";
const std::string kNoUpper = "# and at no upper link weight threshold.\n";

TEST(BaseText, NamesTheInputAndTheThresholds) {
  struct Case {
    bool lower_flag;
    double lower;
    bool upper_flag;
    double upper;
    std::string expected;
  };
  // The upper line shows the lower threshold's value (0 when there is none), as it always has.
  const std::vector<Case> cases = {
      {false, 0.0, false, 0.0, kFrom + kNoLower + kNoUpper},
      {true, 0.15327, false, 0.0,
       kFrom + "# at a lower link weight threshold of 0.153270,\n" + kNoUpper},
      {true, 0.1, true, 0.9,
       kFrom + "# at a lower link weight threshold of 0.100000,\n"
               "# and at an upper link weight threshold of 0.100000.\n"},
      {false, 0.0, true, 2.0,
       kFrom + kNoLower + "# and at an upper link weight threshold of 0.000000.\n"},
  };
  for (const Case& c : cases) {
    std::string alap = "old text that must go\n";
    Generate_alap_szoveg(alap, "/data/net.txt", c.lower_flag, c.lower, c.upper_flag, c.upper);
    EXPECT_EQ(alap, c.expected);
  }
  std::string alap;
  Generate_alap_szoveg(alap, "./sub/../net.txt", false, 0.0, false, 0.0);
  EXPECT_EQ(alap.substr(0, alap.find('\n') + 1),
            " from " + std::filesystem::current_path().string() + "/net.txt\n");
}

TEST(BaseText, ExtensionAddsIntensityDirectionTimeAndFixedK) {
  std::string alap = "X\n";
  Extend_alap_szoveg(alap, false, 0.0, false, false, 0.0, false, 0);
  EXPECT_EQ(alap,
            "X\n"
            "# Links were treated as undirected.\n"
            "# No time limit was set for the clique search.\n");
  alap = "X\n";
  Extend_alap_szoveg(alap, true, 0.35, true, true, 2.5, true, 4);
  EXPECT_EQ(alap,
            "X\n"
            "# A lower link weight intensity threshold of 0.350000 was set.\n"
            "# Links were treated as directed.\n"
            "# The maximal allowed time per node during clique search was 2.500000 secs.\n"
            "# The communities were extracted solely at k=4\n.");
}

}  // namespace
}  // namespace kcp
