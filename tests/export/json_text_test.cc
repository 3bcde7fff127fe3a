#include "export/json_text.h"

#include <gtest/gtest.h>

namespace kcp {
namespace {

TEST(JsonText, QuotesAndEscapesQuoteAndBackslash) {
  EXPECT_EQ(Json_string("plain"), "\"plain\"");
  EXPECT_EQ(Json_string("say \"hi\""), "\"say \\\"hi\\\"\"");
  EXPECT_EQ(Json_string("C:\\dir"), "\"C:\\\\dir\"");
  EXPECT_EQ(Json_string(""), "\"\"");
}

TEST(JsonText, EscapesWhiteSpaceControls) {
  EXPECT_EQ(Json_string("a\tb\nc\rd"), "\"a\\tb\\nc\\rd\"");
}

TEST(JsonText, WritesBytesOfTheSafeFormWithTheirBackslashEscaped) {
  // The safe form of 0xFF is the four characters \xFF; JSON needs its backslash doubled.
  EXPECT_EQ(Json_string("a\xFF"), "\"a\\\\xFF\"");
  EXPECT_EQ(Json_string("\x01"), "\"\\\\x01\"");
  EXPECT_EQ(Json_string("\xC3\xA9</"), "\"\xC3\xA9</\"");
}

}  // namespace
}  // namespace kcp
