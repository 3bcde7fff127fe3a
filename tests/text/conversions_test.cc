#include "text/conversions.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <sstream>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace kcp {
namespace {

TEST(Conversions, GRoundSendsHalvesUpAndClampsToInt) {
  const std::vector<std::pair<double, std::int32_t>> cases = {
      {2.5, 3}, {0.5, 1},  {-0.5, 0},  {-1.5, -1}, {-2.5, -2},         {2.4, 2},
      {2.6, 3}, {-0.4, 0}, {-1.7, -2}, {-2.2, -2}, {1e12, 2147483647}, {-1e12, INT32_MIN}};
  for (const auto& [input, expected] : cases) EXPECT_EQ(gRound(input), expected) << input;
}

TEST(Conversions, NumbersAreWholeTextsWholeNumbersAreRoundedAndFlaggedWhenFractional) {
  double d = 42.0;
  bool suspicious = true;
  for (const std::string text : {"", " ", "abc", "1.5 2", "1.5x", "x1.5"}) {
    EXPECT_FALSE(stringtodouble(text, d) || d != 42.0) << text;
  }
  EXPECT_TRUE(stringtodouble(" .5 ", d) && d == 0.5);
  EXPECT_TRUE(Convert_from_string("1e3", d, suspicious) && d == 1000.0 && !suspicious);
  std::string s;
  EXPECT_TRUE(Convert_from_string("my dir", s, suspicious) && s == "my dir");

  // text, accepted, value, suspicious ('E' is not looked for; negatives refused when unsigned).
  const std::vector<std::tuple<std::string, bool, std::int32_t, bool>> ints = {
      {"7", true, 7, false},     {"2.6", true, 3, true},   {"1e2", true, 100, true},
      {"1E2", true, 100, false}, {"-2.5", true, -2, true}, {"x", false, -2, true}};
  std::int32_t i = 0;
  for (const auto& [text, accepted, value, flagged] : ints) {
    EXPECT_EQ(Convert_from_string(text, i, suspicious), accepted) << text;
    EXPECT_EQ(std::pair(i, suspicious), std::pair(value, flagged)) << text;
  }
  const std::vector<std::tuple<std::string, bool, std::uint32_t, bool>> unsigneds = {
      {"3.5", true, 4, true}, {"-0.4", false, 4, true}, {"4294967295", true, 4294967295u, false}};
  std::uint32_t u = 0;
  for (const auto& [text, accepted, value, flagged] : unsigneds) {
    EXPECT_EQ(Convert_from_string(text, u, suspicious), accepted) << text;
    EXPECT_EQ(std::pair(u, suspicious), std::pair(value, flagged)) << text;
  }
}

TEST(Conversions, BoolFormKnowsExactlyTwelveWords) {
  for (const std::string word : {"yes", "Yes", "YES", "true", "True", "TRUE", "no", "No", "NO",
                                 "false", "False", "FALSE", "yEs", "1", "y", "", "tRUE"}) {
    const std::size_t at = std::string(" yes Yes YES true True TRUE no No NO false False FALSE ")
                               .find(" " + word + " ");
    // Each starts at the opposite of its word (a true word) or at true; an unknown one keeps it.
    const bool known = at != std::string::npos, after = !known || at < 27;
    bool suspicious = true;
    std::vector<bool> values = {at >= 27, at >= 27};
    bool value = values[1];
    EXPECT_EQ(Convert_from_string(word, values[0], suspicious), known) << word;
    EXPECT_EQ(Convert_from_string(word, value, suspicious) && !suspicious, known) << word;
    EXPECT_TRUE(values[0] == after && value == after) << word;
  }
}

// Rounded decimals carry into the whole part; without decimals the fraction is dropped, not
// rounded; the sign is lost between -1 and 0.
TEST(Conversions, Double2stringWritesExactlyTheAskedDecimals) {
  std::istringstream cases(  // value, decimals, text
      "0.15 3 0.150  0.15327 2 0.15  0.15327 4 0.1533  0.05 3 0.050  12.345678 6 12.345678  "
      "0 2 0.00  -1.5 3 -1.500  0.9996 3 1.000  9.99999 1 10.0  -2.9999 2 -3.00  2.7 0 2  "
      "-0.15 3 0.150  3e9 1 3000000000.0  0.5 20 0.50000000000000000000  "
      "0.25 18 0.250000000000000000");
  double value = 0;
  std::uint32_t decimals = 0;
  for (std::string expected; cases >> value >> decimals >> expected;) {
    EXPECT_EQ(double2string(value, decimals), expected);
    EXPECT_EQ(double2string_length(value, decimals), expected.size()) << expected;
  }
  EXPECT_EQ(double2string_length(-1.5, 1000), 1003u);
  EXPECT_EQ(double2string(-1.5, 1000), "-1.5" + std::string(999, '0'));
  // Ten digits of the whole part and every possible decimal.
  EXPECT_EQ(double2string_length(1234567890.5, 4294967295u), 11 + std::size_t{4294967295u});
}

TEST(Conversions, Int2stringPadsWithLeadingZerosAfterTheSign) {
  const std::vector<std::tuple<std::int32_t, std::uint32_t, std::string>> cases = {
      {0, 4, "0000"},  {0, 0, ""},       {7, 1, "7"},     {5, 3, "005"},
      {10, 3, "010"},  {99, 3, "099"},   {100, 3, "100"}, {1234, 3, "1234"},
      {-5, 3, "-005"}, {-10, 3, "-010"}, {5, 0, "5"},     {INT32_MIN, 3, "-2147483648"}};
  for (const auto& [n, width, expected] : cases) EXPECT_EQ(int2string(n, width), expected);
  EXPECT_EQ(int2string(std::uint32_t{4294967295u}, 12), "004294967295");
  EXPECT_EQ(std::string("k=") + std::uint32_t{4} + std::int32_t{-3}, "k=4-3");
}

}  // namespace
}  // namespace kcp
