#include "export/xml_text.h"

#include <gtest/gtest.h>

namespace kcp {
namespace {

TEST(XmlText, EscapesMarkupAndControlsAfterTheSafeForm) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"a&b<c>d\"e'f", "a&amp;b&lt;c&gt;d&quot;e&apos;f"},
      {"&amp;", "&amp;amp;"},
      {"a\tb\nc\rd", "a&#9;b&#10;c&#13;d"},
      {"<\xFF>", "&lt;\\xFF&gt;"},
      {"\xC3\xA9&", "\xC3\xA9&amp;"},
  };
  for (const auto& [name, expected] : cases) EXPECT_EQ(Xml_text(name), expected) << name;
}

}  // namespace
}  // namespace kcp
