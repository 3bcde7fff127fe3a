#include "cli/base_text.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace kcp {
namespace {

TEST(BaseText, WritesInputAndNoThresholdLines) {
  std::string alap = "old text that must go\n";
  Generate_alap_szoveg(alap, "/data/net.txt", false, 0.0, false, 0.0);
  EXPECT_EQ(alap,
            " from /data/net.txt\n"
            "# at no lower link weight threshold,\n"
            "# and at no upper link weight threshold.\n");
}

TEST(BaseText, UpperLineReportsTheLowerThresholdValue) {
  std::string alap;
  Generate_alap_szoveg(alap, "/data/net.txt", true, 0.1, true, 0.9);
  EXPECT_EQ(alap,
            " from /data/net.txt\n"
            "# at a lower link weight threshold of 0.100000,\n"
            "# and at an upper link weight threshold of 0.100000.\n");
}

TEST(BaseText, UpperThresholdAloneReportsZero) {
  std::string alap;
  Generate_alap_szoveg(alap, "/data/net.txt", false, 0.0, true, 2.0);
  EXPECT_EQ(alap,
            " from /data/net.txt\n"
            "# at no lower link weight threshold,\n"
            "# and at an upper link weight threshold of 0.000000.\n");
}

TEST(BaseText, LowerThresholdAloneUsesSixDecimals) {
  std::string alap;
  Generate_alap_szoveg(alap, "/data/net.txt", true, 0.15327, false, 0.0);
  EXPECT_EQ(alap,
            " from /data/net.txt\n"
            "# at a lower link weight threshold of 0.153270,\n"
            "# and at no upper link weight threshold.\n");
}

TEST(BaseText, InputPathIsMadeAbsolute) {
  const std::string cwd = std::filesystem::current_path().string();
  std::string alap;
  Generate_alap_szoveg(alap, "./sub/../net.txt", false, 0.0, false, 0.0);
  EXPECT_EQ(alap.substr(0, alap.find('\n') + 1), " from " + cwd + "/net.txt\n");
}

TEST(BaseText, ExtendWithoutOptionsAddsDirectionAndTimeLines) {
  std::string alap = "X\n";
  Extend_alap_szoveg(alap, false, 0.0, false, false, 0.0, false, 0);
  EXPECT_EQ(alap,
            "X\n"
            "# Links were treated as undirected.\n"
            "# No time limit was set for the clique search.\n");
}

TEST(BaseText, ExtendWithEveryOptionEndsWithNewlineAndFullStop) {
  std::string alap = "X\n";
  Extend_alap_szoveg(alap, true, 0.35, true, true, 2.5, true, 4);
  EXPECT_EQ(alap,
            "X\n"
            "# A lower link weight intensity threshold of 0.350000 was set.\n"
            "# Links were treated as directed.\n"
            "# The maximal allowed time per node during clique search was 2.500000 secs.\n"
            "# The communities were extracted solely at k=4\n.");
}

TEST(BaseText, WholeTextOfATimeLimitedThresholdedRun) {
  std::string alap;
  Generate_alap_szoveg(alap, "/data/net.txt", true, 0.15, false, 0.0);
  Extend_alap_szoveg(alap, false, 0.0, false, true, 2.5, false, 0);
  EXPECT_EQ(alap,
            " from /data/net.txt\n"
            "# at a lower link weight threshold of 0.150000,\n"
            "# and at no upper link weight threshold.\n"
            "# Links were treated as undirected.\n"
            "# The maximal allowed time per node during clique search was 2.500000 secs.\n");
}

}  // namespace
}  // namespace kcp
