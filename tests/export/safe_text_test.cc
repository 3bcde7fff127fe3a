#include "export/safe_text.h"

#include <gtest/gtest.h>

#include <string>

namespace kcp {
namespace {

TEST(SafeText, KeepsValidUtf8AndWritesEveryOtherByteAsHex) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      // ASCII and well-formed UTF-8 pass unchanged.
      {"Valjean", "Valjean"},
      {"a&b<c>\"'", "a&b<c>\"'"},
      {"Mme\xC3\xA9", "Mme\xC3\xA9"},
      {"\xE6\x97\xA5\xE6\x9C\xAC", "\xE6\x97\xA5\xE6\x9C\xAC"},
      {"\xF0\x9F\x98\x80", "\xF0\x9F\x98\x80"},
      {"tab\there", "tab\there"},
      {"del\x7F", "del\x7F"},
      {"\xEF\xBF\xBD", "\xEF\xBF\xBD"},
      {"\xF4\x8F\xBF\xBF", "\xF4\x8F\xBF\xBF"},  // U+10FFFF itself
      // Stray and truncated bytes.
      {"a\x80z", "a\\x80z"},
      {"\xFF\xFE", "\\xFF\\xFE"},
      {"Mm\xE9x", "Mm\\xE9x"},  // Latin-1 e acute: the lead byte lacks its continuation
      {"\xE6\x97", "\\xE6\\x97"},
      // Overlong forms, surrogates and codes above U+10FFFF.
      {"\xC0\xAF", "\\xC0\\xAF"},
      {"\xE0\x80\xAF", "\\xE0\\x80\\xAF"},
      {"\xED\xA0\x80", "\\xED\\xA0\\x80"},
      {"\xF4\x90\x80\x80", "\\xF4\\x90\\x80\\x80"},
      // Characters XML cannot carry.
      {std::string("a\0b", 3), "a\\x00b"},
      {"\x01\x1F", "\\x01\\x1F"},
      {"\xEF\xBF\xBE", "\\xEF\\xBF\\xBE"},  // U+FFFE
      {"\xEF\xBF\xBF", "\\xEF\\xBF\\xBF"},  // U+FFFF
  };
  for (const auto& [text, expected] : cases) {
    SCOPED_TRACE(expected);
    EXPECT_EQ(Safe_text(text), expected);
    EXPECT_EQ(Is_safe_text(text), text == expected);
  }
}

}  // namespace
}  // namespace kcp
