#include "export/safe_text.h"

#include <gtest/gtest.h>

#include <string>

namespace kcp {
namespace {

TEST(SafeText, PassesAsciiAndWellFormedUtf8Unchanged) {
  for (const std::string text : {"Valjean", "a&b<c>\"'", "Mme\xC3\xA9", "\xE6\x97\xA5\xE6\x9C\xAC",
                                 "\xF0\x9F\x98\x80", "tab\there", "del\x7F", "\xEF\xBF\xBD"}) {
    EXPECT_EQ(Safe_text(text), text);
    EXPECT_TRUE(Is_safe_text(text)) << text;
  }
}

TEST(SafeText, WritesStrayAndTruncatedBytesAsHex) {
  EXPECT_EQ(Safe_text("a\x80z"), "a\\x80z");
  EXPECT_EQ(Safe_text("\xFF\xFE"), "\\xFF\\xFE");
  // Latin-1 e acute followed by an ASCII letter: the lead byte lacks its continuation.
  EXPECT_EQ(Safe_text("Mm\xE9x"), "Mm\\xE9x");
  // A three-byte sequence cut short at the end of the name.
  EXPECT_EQ(Safe_text("\xE6\x97"), "\\xE6\\x97");
  EXPECT_FALSE(Is_safe_text("a\x80z"));
}

TEST(SafeText, RejectsOverlongSurrogatesAndOutOfRangeCodes) {
  EXPECT_EQ(Safe_text("\xC0\xAF"), "\\xC0\\xAF");                    // overlong "/"
  EXPECT_EQ(Safe_text("\xE0\x80\xAF"), "\\xE0\\x80\\xAF");           // overlong "/" in three bytes
  EXPECT_EQ(Safe_text("\xED\xA0\x80"), "\\xED\\xA0\\x80");           // U+D800
  EXPECT_EQ(Safe_text("\xF4\x90\x80\x80"), "\\xF4\\x90\\x80\\x80");  // above U+10FFFF
  EXPECT_EQ(Safe_text("\xF4\x8F\xBF\xBF"), "\xF4\x8F\xBF\xBF");      // U+10FFFF itself
}

TEST(SafeText, WritesCharactersXmlCannotCarryAsHex) {
  EXPECT_EQ(Safe_text(std::string("a\0b", 3)), "a\\x00b");
  EXPECT_EQ(Safe_text("\x01\x1F"), "\\x01\\x1F");
  EXPECT_EQ(Safe_text("\xEF\xBF\xBE"), "\\xEF\\xBF\\xBE");  // U+FFFE
  EXPECT_EQ(Safe_text("\xEF\xBF\xBF"), "\\xEF\\xBF\\xBF");  // U+FFFF
  EXPECT_FALSE(Is_safe_text("\x01"));
}

}  // namespace
}  // namespace kcp
