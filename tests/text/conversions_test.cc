#include "text/conversions.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace kcp {
namespace {

TEST(Conversions, GRoundSendsExactHalvesUp) {
  EXPECT_EQ(gRound(2.5), 3);
  EXPECT_EQ(gRound(0.5), 1);
  EXPECT_EQ(gRound(-0.5), 0);
  EXPECT_EQ(gRound(-1.5), -1);
  EXPECT_EQ(gRound(-2.5), -2);
  EXPECT_EQ(gRound(3.5), 4);
}

TEST(Conversions, GRoundRoundsToNearestOtherwise) {
  EXPECT_EQ(gRound(0.0), 0);
  EXPECT_EQ(gRound(2.4), 2);
  EXPECT_EQ(gRound(2.6), 3);
  EXPECT_EQ(gRound(-0.4), 0);
  EXPECT_EQ(gRound(-1.7), -2);
  EXPECT_EQ(gRound(-2.2), -2);
  EXPECT_EQ(gRound(7.0), 7);
  EXPECT_EQ(gRound(-7.0), -7);
}

TEST(Conversions, GRoundClampsValuesBeyondInt) {
  EXPECT_EQ(gRound(1e12), 2147483647);
  EXPECT_EQ(gRound(-1e12), -2147483647 - 1);
}

TEST(Conversions, StringtodoubleAcceptsOneNumberWithBlanksAround) {
  double value = -1.0;
  EXPECT_TRUE(stringtodouble(" 3 ", value));
  EXPECT_EQ(value, 3.0);
  EXPECT_TRUE(stringtodouble("0.15", value));
  EXPECT_EQ(value, 0.15);
  EXPECT_TRUE(stringtodouble(".5", value));
  EXPECT_EQ(value, 0.5);
  EXPECT_TRUE(stringtodouble("1e3", value));
  EXPECT_EQ(value, 1000.0);
  EXPECT_TRUE(stringtodouble("-2", value));
  EXPECT_EQ(value, -2.0);
}

TEST(Conversions, StringtodoubleRefusesAnythingElseAndKeepsTheValue) {
  for (const std::string text : {"", " ", "abc", "1.5 2", "1.5 x", "1.5x", "x1.5"}) {
    double value = 42.0;
    EXPECT_FALSE(stringtodouble(text, value)) << "'" << text << "'";
    EXPECT_EQ(value, 42.0) << "'" << text << "'";
  }
}

TEST(Conversions, StringFormCopiesEveryTextAndClearsSuspicious) {
  std::string value = "old";
  bool suspicious = true;
  EXPECT_TRUE(Convert_from_string("", value, suspicious));
  EXPECT_EQ(value, "");
  EXPECT_FALSE(suspicious);
  EXPECT_TRUE(Convert_from_string("my dir", value, suspicious));
  EXPECT_EQ(value, "my dir");
}

TEST(Conversions, DoubleFormSetsTheValueOnlyOnSuccess) {
  double value = 9.0;
  bool suspicious = true;
  EXPECT_TRUE(Convert_from_string("0.35", value, suspicious));
  EXPECT_EQ(value, 0.35);
  EXPECT_FALSE(suspicious);
  suspicious = true;
  EXPECT_FALSE(Convert_from_string("abc", value, suspicious));
  EXPECT_EQ(value, 0.35);
  EXPECT_FALSE(suspicious);
}

TEST(Conversions, IntFormRoundsAndFlagsFractionalLookingTexts) {
  std::int32_t value = 0;
  bool suspicious = true;
  EXPECT_TRUE(Convert_from_string("7", value, suspicious));
  EXPECT_EQ(value, 7);
  EXPECT_FALSE(suspicious);
  EXPECT_TRUE(Convert_from_string("2.6", value, suspicious));
  EXPECT_EQ(value, 3);
  EXPECT_TRUE(suspicious);
  EXPECT_TRUE(Convert_from_string("1e2", value, suspicious));
  EXPECT_EQ(value, 100);
  EXPECT_TRUE(suspicious);
  // Only a lower-case 'e' is looked for.
  EXPECT_TRUE(Convert_from_string("1E2", value, suspicious));
  EXPECT_EQ(value, 100);
  EXPECT_FALSE(suspicious);
  EXPECT_TRUE(Convert_from_string("-2.5", value, suspicious));
  EXPECT_EQ(value, -2);
  EXPECT_TRUE(suspicious);
}

TEST(Conversions, IntFormRefusesNonNumbersAsSuspicious) {
  std::int32_t value = 5;
  bool suspicious = false;
  EXPECT_FALSE(Convert_from_string("x", value, suspicious));
  EXPECT_TRUE(suspicious);
  EXPECT_EQ(value, 5);
}

TEST(Conversions, UnsignedFormRoundsAndRefusesNegatives) {
  std::uint32_t value = 0;
  bool suspicious = true;
  EXPECT_TRUE(Convert_from_string("3", value, suspicious));
  EXPECT_EQ(value, 3u);
  EXPECT_FALSE(suspicious);
  EXPECT_TRUE(Convert_from_string("3.0", value, suspicious));
  EXPECT_EQ(value, 3u);
  EXPECT_TRUE(suspicious);
  EXPECT_TRUE(Convert_from_string("3.5", value, suspicious));
  EXPECT_EQ(value, 4u);
  EXPECT_TRUE(suspicious);
  suspicious = false;
  EXPECT_FALSE(Convert_from_string("-1", value, suspicious));
  EXPECT_TRUE(suspicious);
  EXPECT_EQ(value, 4u);
  // Refused although it would round to 0.
  suspicious = false;
  EXPECT_FALSE(Convert_from_string("-0.4", value, suspicious));
  EXPECT_TRUE(suspicious);
  EXPECT_EQ(value, 4u);
  EXPECT_FALSE(Convert_from_string("four", value, suspicious));
  EXPECT_EQ(value, 4u);
}

TEST(Conversions, UnsignedFormCoversTheWholeUnsignedRange) {
  std::uint32_t value = 0;
  bool suspicious = true;
  EXPECT_TRUE(Convert_from_string("4294967295", value, suspicious));
  EXPECT_EQ(value, 4294967295u);
  EXPECT_FALSE(suspicious);
}

TEST(Conversions, BoolFormKnowsExactlyTwelveWords) {
  for (const std::string word : {"yes", "Yes", "YES", "true", "True", "TRUE"}) {
    bool value = false;
    bool suspicious = true;
    EXPECT_TRUE(Convert_from_string(word, value, suspicious)) << word;
    EXPECT_TRUE(value) << word;
    EXPECT_FALSE(suspicious) << word;
  }
  for (const std::string word : {"no", "No", "NO", "false", "False", "FALSE"}) {
    bool value = true;
    bool suspicious = true;
    EXPECT_TRUE(Convert_from_string(word, value, suspicious)) << word;
    EXPECT_FALSE(value) << word;
  }
  for (const std::string word : {"yEs", "1", "0", "y", "", "tRUE"}) {
    bool value = true;
    bool suspicious = true;
    EXPECT_FALSE(Convert_from_string(word, value, suspicious)) << word;
    EXPECT_TRUE(value) << word;
    EXPECT_FALSE(suspicious) << word;
  }
}

TEST(Conversions, BitFormWritesThroughTheBitReference) {
  std::vector<bool> bits = {false, true, false};
  bool suspicious = true;
  EXPECT_TRUE(Convert_from_string("True", bits[0], suspicious));
  EXPECT_TRUE(Convert_from_string("NO", bits[1], suspicious));
  EXPECT_FALSE(Convert_from_string("yEs", bits[2], suspicious));
  EXPECT_EQ(bits, (std::vector<bool>{true, false, false}));
  EXPECT_FALSE(suspicious);
}

TEST(Conversions, Double2stringWritesExactlyTheAskedDecimals) {
  EXPECT_EQ(double2string(1.0, 3), "1.000");
  EXPECT_EQ(double2string(0.15, 3), "0.150");
  EXPECT_EQ(double2string(1.35, 3), "1.350");
  EXPECT_EQ(double2string(0.15327, 2), "0.15");
  EXPECT_EQ(double2string(0.15327, 4), "0.1533");
  EXPECT_EQ(double2string(0.05, 3), "0.050");
  EXPECT_EQ(double2string(0.15, 6), "0.150000");
  EXPECT_EQ(double2string(2.5, 6), "2.500000");
  EXPECT_EQ(double2string(12.345678, 6), "12.345678");
  EXPECT_EQ(double2string(0.0, 2), "0.00");
  EXPECT_EQ(double2string(-1.5, 3), "-1.500");
}

TEST(Conversions, Double2stringCarriesDecimalsRoundedToAWholeUnit) {
  EXPECT_EQ(double2string(0.9996, 3), "1.000");
  EXPECT_EQ(double2string(2.9999, 2), "3.00");
  EXPECT_EQ(double2string(9.99999, 1), "10.0");
  EXPECT_EQ(double2string(-0.9996, 3), "-1.000");
  EXPECT_EQ(double2string(-2.9999, 2), "-3.00");
}

TEST(Conversions, Double2stringWithNoDecimalsDropsTheFraction) {
  EXPECT_EQ(double2string(0.15, 0), "0");
  EXPECT_EQ(double2string(2.7, 0), "2");
  EXPECT_EQ(double2string(0.7, 0), "0");
  EXPECT_EQ(double2string(3.0, 0), "3");
}

TEST(Conversions, Double2stringLosesTheSignBetweenMinusOneAndZero) {
  EXPECT_EQ(double2string(-0.15, 3), "0.150");
}

TEST(Conversions, Double2stringHandlesHugeValuesAndManyDecimals) {
  EXPECT_EQ(double2string(3e9, 1), "3000000000.0");
  EXPECT_EQ(double2string(0.5, 20), "0.50000000000000000000");
  EXPECT_EQ(double2string(0.25, 18), "0.250000000000000000");
}

TEST(Conversions, Int2stringWritesPlainDecimal) {
  EXPECT_EQ(int2string(std::int32_t{-12}), "-12");
  EXPECT_EQ(int2string(std::int32_t{0}), "0");
  EXPECT_EQ(int2string(std::uint32_t{4294967295u}), "4294967295");
}

TEST(Conversions, Int2stringPadsWithLeadingZeros) {
  const auto pad = [](std::int32_t n, std::uint32_t width) { return int2string(n, width); };
  EXPECT_EQ(pad(0, 4), "0000");
  EXPECT_EQ(pad(0, 0), "");
  EXPECT_EQ(pad(7, 1), "7");
  EXPECT_EQ(pad(5, 3), "005");
  EXPECT_EQ(pad(10, 3), "010");
  EXPECT_EQ(pad(99, 3), "099");
  EXPECT_EQ(pad(100, 3), "100");
  EXPECT_EQ(pad(1234, 3), "1234");
  EXPECT_EQ(pad(-5, 3), "-005");
  EXPECT_EQ(pad(-10, 3), "-010");
  EXPECT_EQ(pad(5, 0), "5");
  EXPECT_EQ(pad(-2147483647 - 1, 3), "-2147483648");
}

TEST(Conversions, Int2stringPadsUnsignedLikeSigned) {
  const auto pad = [](std::uint32_t n, std::uint32_t width) { return int2string(n, width); };
  EXPECT_EQ(pad(5, 3), "005");
  EXPECT_EQ(pad(0, 2), "00");
  EXPECT_EQ(pad(4294967295u, 12), "004294967295");
}

TEST(Conversions, PlusAppendsTheDecimalText) {
  EXPECT_EQ(std::string("k=") + std::uint32_t{4}, "k=4");
  EXPECT_EQ(std::string("x") + std::int32_t{-3}, "x-3");
  EXPECT_EQ(std::string() + std::uint32_t{0}, "0");
}

}  // namespace
}  // namespace kcp
