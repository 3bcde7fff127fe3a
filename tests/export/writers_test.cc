// The writers of the four formats and the escapes of names they share. networkx reads the
// GraphML and JSON of real runs back against their results in networkx_check_test.cc.
#include <gtest/gtest.h>

#include <sstream>

#include "export/csv_writer.h"
#include "export/graphml_writer.h"
#include "export/json_text.h"
#include "export/safe_text.h"
#include "export/xml_text.h"
#include "tests/results/results_fixtures.h"

namespace kcp {
namespace {

using testing::Community;

TEST(SafeText, KeepsValidUtf8AndWritesEveryOtherByteAsHex) {
  for (const std::string valid : {"a&b<c>\"' \t\x7F", "Mme\xC3\xA9", "\xE6\x97\xA5\xE6\x9C\xAC",
                                  "\xF0\x9F\x98\x80", "\xEF\xBF\xBD", "\xF4\x8F\xBF\xBF"}) {
    EXPECT_EQ(Safe_text(valid), valid);
    EXPECT_TRUE(Is_safe_text(valid)) << valid;
  }
  // Stray and truncated bytes (a Latin-1 e acute lacks its continuation); overlong forms,
  // surrogates and codes above U+10FFFF; characters XML cannot carry, U+FFFE and U+FFFF among them.
  for (const std::string bad :
       {"\x80", "\xFF\xFE", "\xE9", "\xE6\x97", "\xC0\xAF", "\xE0\x80\xAF", "\xED\xA0\x80",
        "\xF4\x90\x80\x80", "\x01\x1F", "\xEF\xBF\xBE", "\xEF\xBF\xBF"}) {
    std::string expected = "a";
    for (const unsigned char c : bad + '\0') {
      expected += "\\x" + std::string(1, "0123456789ABCDEF"[c >> 4]) + "0123456789ABCDEF"[c & 15];
    }
    EXPECT_EQ(Safe_text("a" + bad + '\0' + "z"), expected + "z");
    EXPECT_FALSE(Is_safe_text("a" + bad + "z")) << expected;
  }
}

TEST(XmlAndJsonText, EscapeMarkupAndControlsAfterTheSafeForm) {
  EXPECT_EQ(Xml_text("a&b<c>d\"e'f&amp;\t\n\r<\xFF>\xC3\xA9"),
            "a&amp;b&lt;c&gt;d&quot;e&apos;f&amp;amp;&#9;&#10;&#13;&lt;\\xFF&gt;\xC3\xA9");
  // The safe form of 0xFF is the four characters \xFF; JSON needs its backslash doubled.
  EXPECT_EQ(Json_string("say \"hi\" C:\\dir\t\n\r\xFF\x01\xC3\xA9</"),
            "\"say \\\"hi\\\" C:\\\\dir\\t\\n\\r\\\\xFF\\\\x01\xC3\xA9</\"");
  EXPECT_EQ(Json_string(""), "\"\"");
}

TEST(CsvWriter, WritesOneRowPerNodeOfEveryCommunity) {
  const std::string header = "k,community,approximate,node\n";
  RunResults minus_zero = testing::At_k(3, {Community(0, {"p"}, {}), Community(-1, {"q"}, {})});
  minus_zero.per_k[0].communities[0].approximate = true;
  // Far more than one buffered piece of output.
  RunResults large = testing::At_k(4, {Community(7, {}, {})});
  std::string large_csv = header;
  for (int i = 0; i < 20000; ++i) {
    large.per_k[0].communities[0].nodes.push_back("node" + std::to_string(i));
    large_csv += "4,7,false,node" + std::to_string(i) + "\n";
  }
  const std::vector<std::pair<RunResults, std::string>> cases = {
      // The approximate community 0 is written "-0".
      {minus_zero, header + "3,-0,true,p\n3,-1,true,q\n"},
      // Only names holding a comma or a double quote are quoted; other bytes stay as they are.
      {testing::At_k(5, {Community(2, {"a,b", "say\"hi\"", "plain", "\xFF;x"}, {})}),
       header + "5,2,false,\"a,b\"\n5,2,false,\"say\"\"hi\"\"\"\n5,2,false,plain\n"
                "5,2,false,\xFF;x\n"},
      {large, large_csv},
  };
  for (const auto& [results, expected] : cases) {
    std::ostringstream out;
    Write_community_csv(results, out);
    EXPECT_EQ(out.str(), expected);
  }
}

std::string Graphml_of(const RunResults& results) {
  std::ostringstream out;
  Write_graphml(results, Build_export_network(results), out);
  return out.str();
}

// Weights, both directions of a pair, an escaped name.
TEST(GraphmlWriter, WritesTheKeysNodesAndLinksOfARun) {
  EXPECT_EQ(Graphml_of(testing::Directed_sample()), testing::Expected("directed_sample.graphml"));
}

}  // namespace
}  // namespace kcp
