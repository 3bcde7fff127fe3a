#include "export/json_text.h"

#include <gtest/gtest.h>

namespace kcp {
namespace {

TEST(JsonText, QuotesAndEscapesNames) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"plain", "\"plain\""},
      {"", "\"\""},
      {"say \"hi\"", "\"say \\\"hi\\\"\""},
      {"C:\\dir", "\"C:\\\\dir\""},
      {"a\tb\nc\rd", "\"a\\tb\\nc\\rd\""},
      // The safe form of 0xFF is the four characters \xFF; JSON needs its backslash doubled.
      {"a\xFF", "\"a\\\\xFF\""},
      {"\x01", "\"\\\\x01\""},
      {"\xC3\xA9</", "\"\xC3\xA9</\""},
  };
  for (const auto& [name, expected] : cases) EXPECT_EQ(Json_string(name), expected) << name;
}

}  // namespace
}  // namespace kcp
