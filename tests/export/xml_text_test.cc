#include "export/xml_text.h"

#include <gtest/gtest.h>

namespace kcp {
namespace {

TEST(XmlText, EscapesTheFiveMarkupCharacters) {
  EXPECT_EQ(Xml_text("a&b<c>d\"e'f"), "a&amp;b&lt;c&gt;d&quot;e&apos;f");
  EXPECT_EQ(Xml_text("&amp;"), "&amp;amp;");
}

TEST(XmlText, WritesWhiteSpaceControlsAsCharacterReferences) {
  EXPECT_EQ(Xml_text("a\tb\nc\rd"), "a&#9;b&#10;c&#13;d");
}

TEST(XmlText, AppliesTheSafeFormBeforeEscaping) {
  EXPECT_EQ(Xml_text("<\xFF>"), "&lt;\\xFF&gt;");
  EXPECT_EQ(Xml_text("\xC3\xA9&"), "\xC3\xA9&amp;");
}

}  // namespace
}  // namespace kcp
