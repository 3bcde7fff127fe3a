#include "text/conversions.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace kcp {
namespace {

TEST(Conversions, GRoundSendsHalvesUpAndClampsToInt) {
  const std::vector<std::pair<double, std::int32_t>> cases = {
      {2.5, 3},   {0.5, 1},   {-0.5, 0},          {-1.5, -1},
      {-2.5, -2}, {3.5, 4},   {0.0, 0},           {2.4, 2},
      {2.6, 3},   {-0.4, 0},  {-1.7, -2},         {-2.2, -2},
      {7.0, 7},   {-7.0, -7}, {1e12, 2147483647}, {-1e12, -2147483647 - 1}};
  for (const auto& [input, expected] : cases) {
    SCOPED_TRACE(input);
    EXPECT_EQ(gRound(input), expected);
  }
}

TEST(Conversions, StringtodoubleAcceptsOnlyOneNumberWithBlanksAround) {
  const std::vector<std::pair<std::string, double>> good = {
      {" 3 ", 3.0}, {"0.15", 0.15}, {".5", 0.5}, {"1e3", 1000.0}, {"-2", -2.0}};
  for (const auto& [text, expected] : good) {
    SCOPED_TRACE(text);
    double value = -1.0;
    EXPECT_TRUE(stringtodouble(text, value));
    EXPECT_EQ(value, expected);
  }
  for (const std::string text : {"", " ", "abc", "1.5 2", "1.5 x", "1.5x", "x1.5"}) {
    SCOPED_TRACE(text);
    double value = 42.0;
    EXPECT_FALSE(stringtodouble(text, value));
    EXPECT_EQ(value, 42.0);
  }
}

TEST(Conversions, StringAndDoubleFormsNeverFlagSuspicious) {
  std::string text = "old";
  bool suspicious = true;
  EXPECT_TRUE(Convert_from_string("", text, suspicious));
  EXPECT_EQ(text, "");
  EXPECT_FALSE(suspicious);
  EXPECT_TRUE(Convert_from_string("my dir", text, suspicious));
  EXPECT_EQ(text, "my dir");

  double value = 9.0;
  suspicious = true;
  EXPECT_TRUE(Convert_from_string("0.35", value, suspicious));
  EXPECT_EQ(value, 0.35);
  EXPECT_FALSE(suspicious);
  suspicious = true;
  EXPECT_FALSE(Convert_from_string("abc", value, suspicious));
  EXPECT_EQ(value, 0.35);
  EXPECT_FALSE(suspicious);
}

// One text converted into a whole number: accepted?, value afterwards, suspicious flag.
template <typename T>
struct WholeCase {
  std::string text;
  bool accepted;
  T value;
  bool suspicious;
};

template <typename T>
void CheckWholeForm(T start, const std::vector<WholeCase<T>>& cases) {
  T value = start;
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    bool suspicious = !c.suspicious;
    EXPECT_EQ(Convert_from_string(c.text, value, suspicious), c.accepted);
    EXPECT_EQ(value, c.value);
    EXPECT_EQ(suspicious, c.suspicious);
  }
}

TEST(Conversions, IntFormRoundsAndFlagsFractionalLookingTexts) {
  CheckWholeForm<std::int32_t>(0, {{"7", true, 7, false},
                                   {"2.6", true, 3, true},
                                   {"1e2", true, 100, true},
                                   // Only a lower-case 'e' is looked for.
                                   {"1E2", true, 100, false},
                                   {"-2.5", true, -2, true},
                                   {"x", false, -2, true}});
}

TEST(Conversions, UnsignedFormRoundsAndRefusesNegatives) {
  CheckWholeForm<std::uint32_t>(0, {{"3", true, 3u, false},
                                    {"3.0", true, 3u, true},
                                    {"3.5", true, 4u, true},
                                    {"-1", false, 4u, true},
                                    // Refused although it would round to 0.
                                    {"-0.4", false, 4u, true},
                                    {"four", false, 4u, true},
                                    {"4294967295", true, 4294967295u, false}});
}

TEST(Conversions, BoolFormKnowsExactlyTwelveWords) {
  const std::vector<std::pair<std::string, bool>> words = {
      {"yes", true},  {"Yes", true},    {"YES", true},    {"true", true},
      {"True", true}, {"TRUE", true},   {"no", false},    {"No", false},
      {"NO", false},  {"false", false}, {"False", false}, {"FALSE", false}};
  for (const auto& [word, expected] : words) {
    SCOPED_TRACE(word);
    bool value = !expected;
    bool suspicious = true;
    EXPECT_TRUE(Convert_from_string(word, value, suspicious));
    EXPECT_EQ(value, expected);
    EXPECT_FALSE(suspicious);
  }
  for (const std::string word : {"yEs", "1", "0", "y", "", "tRUE"}) {
    SCOPED_TRACE(word);
    bool value = true;
    bool suspicious = true;
    EXPECT_FALSE(Convert_from_string(word, value, suspicious));
    EXPECT_TRUE(value);
    EXPECT_FALSE(suspicious);
  }
  // The same words written through a bit of a vector<bool>.
  std::vector<bool> bits = {false, true, false};
  bool suspicious = true;
  EXPECT_TRUE(Convert_from_string("True", bits[0], suspicious));
  EXPECT_TRUE(Convert_from_string("NO", bits[1], suspicious));
  EXPECT_FALSE(Convert_from_string("yEs", bits[2], suspicious));
  EXPECT_EQ(bits, (std::vector<bool>{true, false, false}));
}

TEST(Conversions, Double2stringWritesExactlyTheAskedDecimals) {
  struct Case {
    double value;
    std::uint32_t decimals;
    std::string expected;
  };
  const std::vector<Case> cases = {{1.0, 3, "1.000"},
                                   {0.15, 3, "0.150"},
                                   {1.35, 3, "1.350"},
                                   {0.15327, 2, "0.15"},
                                   {0.15327, 4, "0.1533"},
                                   {0.05, 3, "0.050"},
                                   {0.15, 6, "0.150000"},
                                   {2.5, 6, "2.500000"},
                                   {12.345678, 6, "12.345678"},
                                   {0.0, 2, "0.00"},
                                   {-1.5, 3, "-1.500"},
                                   // Rounded decimals carry into the whole part.
                                   {0.9996, 3, "1.000"},
                                   {2.9999, 2, "3.00"},
                                   {9.99999, 1, "10.0"},
                                   {-0.9996, 3, "-1.000"},
                                   {-2.9999, 2, "-3.00"},
                                   // No decimals: the fraction is dropped, not rounded.
                                   {0.15, 0, "0"},
                                   {2.7, 0, "2"},
                                   {0.7, 0, "0"},
                                   {3.0, 0, "3"},
                                   // The sign is lost between minus one and zero.
                                   {-0.15, 3, "0.150"},
                                   {3e9, 1, "3000000000.0"},
                                   {0.5, 20, "0.50000000000000000000"},
                                   {0.25, 18, "0.250000000000000000"}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.expected);
    EXPECT_EQ(double2string(c.value, c.decimals), c.expected);
  }
}

TEST(Conversions, Double2stringLengthCountsWithoutWritingTheText) {
  struct Case {
    double value;
    std::uint32_t decimals;
    std::size_t expected;
  };
  const std::vector<Case> cases = {{0.15, 3, 5},
                                   {0.9996, 3, 5},
                                   {9.99999, 1, 4},
                                   {-2.9999, 2, 5},
                                   {2.7, 0, 1},
                                   {3e9, 1, 12},
                                   {0.5, 20, 22},
                                   {0.25, 18, 20},
                                   {9.99, 40, 42},
                                   {0.0, 4096, 4098},
                                   {-1.5, 1000, 1003},
                                   // Ten digits of the whole part and every possible decimal.
                                   {1234567890.5, 4294967295u, 10 + 1 + std::size_t{4294967295u}},
                                   {0.0, 4294967295u, 1 + 1 + std::size_t{4294967295u}}};
  for (const auto& c : cases) {
    SCOPED_TRACE(std::to_string(c.value) + " " + std::to_string(c.decimals));
    EXPECT_EQ(double2string_length(c.value, c.decimals), c.expected);
    if (c.decimals <= 5000) {
      EXPECT_EQ(double2string(c.value, c.decimals).size(), c.expected);
    }
  }
}

TEST(Conversions, Int2stringWritesDecimalPaddedWithLeadingZeros) {
  EXPECT_EQ(int2string(std::int32_t{-12}), "-12");
  EXPECT_EQ(int2string(std::int32_t{0}), "0");
  EXPECT_EQ(int2string(std::uint32_t{4294967295u}), "4294967295");
  struct Case {
    std::int32_t n;
    std::uint32_t width;
    std::string expected;
  };
  const std::vector<Case> cases = {
      {0, 4, "0000"},  {0, 0, ""},       {7, 1, "7"},     {5, 3, "005"},
      {10, 3, "010"},  {99, 3, "099"},   {100, 3, "100"}, {1234, 3, "1234"},
      {-5, 3, "-005"}, {-10, 3, "-010"}, {5, 0, "5"},     {-2147483647 - 1, 3, "-2147483648"}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.expected);
    EXPECT_EQ(int2string(c.n, c.width), c.expected);
  }
  EXPECT_EQ(int2string(std::uint32_t{5}, 3), "005");
  EXPECT_EQ(int2string(std::uint32_t{0}, 2), "00");
  EXPECT_EQ(int2string(std::uint32_t{4294967295u}, 12), "004294967295");
}

TEST(Conversions, PlusAppendsTheDecimalText) {
  EXPECT_EQ(std::string("k=") + std::uint32_t{4}, "k=4");
  EXPECT_EQ(std::string("x") + std::int32_t{-3}, "x-3");
  EXPECT_EQ(std::string() + std::uint32_t{0}, "0");
}

}  // namespace
}  // namespace kcp
