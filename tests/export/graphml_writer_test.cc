#include "export/graphml_writer.h"

#include <gtest/gtest.h>

#include <sstream>

#include "tests/export/sample_results.h"
#include "tests/export/xml_check.h"

namespace kcp {
namespace {

const char* const kHead =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<graphml xmlns=\"http://graphml.graphdrawing.org/xmlns\" "
    "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
    "xsi:schemaLocation=\"http://graphml.graphdrawing.org/xmlns "
    "http://graphml.graphdrawing.org/xmlns/1.0/graphml.xsd\">\n";

std::string Graphml_of(const RunResults& results) {
  std::ostringstream out;
  Write_graphml(results, Build_export_network(results), out);
  return out.str();
}

TEST(GraphmlWriter, WritesEachRunWithItsKeysNodesAndLinks) {
  const std::vector<std::pair<RunResults, std::string>> cases = {
      // Exact and approximate communities; "c a" folded into "a c".
      {testing::Undirected_sample(),
       std::string(kHead) +
           "  <key id=\"node_k3\" for=\"node\" attr.name=\"k3\" attr.type=\"string\"/>\n"
           "  <key id=\"node_k4\" for=\"node\" attr.name=\"k4\" attr.type=\"string\"/>\n"
           "  <key id=\"link_k3\" for=\"edge\" attr.name=\"k3\" attr.type=\"string\"/>\n"
           "  <key id=\"link_k4\" for=\"edge\" attr.name=\"k4\" attr.type=\"string\"/>\n"
           "  <graph id=\"G\" edgedefault=\"undirected\">\n"
           "    <node id=\"a\"><data key=\"node_k3\">0</data></node>\n"
           "    <node id=\"b\"><data key=\"node_k3\">0,-1</data></node>\n"
           "    <node id=\"c\"><data key=\"node_k3\">0,-1</data></node>\n"
           "    <node id=\"d\"><data key=\"node_k3\">-1</data></node>\n"
           "    <edge source=\"a\" target=\"b\"><data key=\"link_k3\">0</data></edge>\n"
           "    <edge source=\"a\" target=\"c\"><data key=\"link_k3\">0</data></edge>\n"
           "    <edge source=\"b\" target=\"c\"><data key=\"link_k3\">0,-1</data></edge>\n"
           "    <edge source=\"c\" target=\"d\"><data key=\"link_k3\">-1</data></edge>\n"
           "  </graph>\n"
           "</graphml>\n"},
      // Weights, both directions of a pair, an escaped name.
      {testing::Directed_sample(),
       std::string(kHead) +
           "  <key id=\"weight\" for=\"edge\" attr.name=\"weight\" attr.type=\"double\"/>\n"
           "  <key id=\"node_k3\" for=\"node\" attr.name=\"k3\" attr.type=\"string\"/>\n"
           "  <key id=\"link_k3\" for=\"edge\" attr.name=\"k3\" attr.type=\"string\"/>\n"
           "  <graph id=\"G\" edgedefault=\"directed\">\n"
           "    <node id=\"x\"><data key=\"node_k3\">0</data></node>\n"
           "    <node id=\"y\"><data key=\"node_k3\">0</data></node>\n"
           "    <node id=\"a&amp;b\"><data key=\"node_k3\">0</data></node>\n"
           "    <edge source=\"x\" target=\"y\"><data key=\"weight\">0.5</data>"
           "<data key=\"link_k3\">0</data></edge>\n"
           "    <edge source=\"y\" target=\"x\"><data key=\"weight\">2</data>"
           "<data key=\"link_k3\">0</data></edge>\n"
           "    <edge source=\"x\" target=\"a&amp;b\"><data key=\"weight\">1e+06</data>"
           "<data key=\"link_k3\">0</data></edge>\n"
           "  </graph>\n"
           "</graphml>\n"},
      {RunResults{}, std::string(kHead) + "  <graph id=\"G\" edgedefault=\"undirected\">\n"
                                          "  </graph>\n"
                                          "</graphml>\n"},
  };
  for (const auto& [results, expected] : cases) EXPECT_EQ(Graphml_of(results), expected);
}

TEST(GraphmlWriter, WritesLargeNetworksWhole) {
  // Far more than one buffered piece of output.
  RunResults results =
      testing::At_k(3, {testing::Community(0, {"node0", "node1", "node2"}, {{"node1", "node0"}})});
  for (int i = 0; i < 20000; ++i) {
    results.nodes.push_back("node" + std::to_string(i));
    if (i > 0) results.links.push_back(testing::Link(results.nodes[i - 1], results.nodes[i]));
  }
  const std::string xml = Graphml_of(results);
  ASSERT_GT(xml.size(), 1000000u);
  EXPECT_EQ(testing::Xml_fault(xml), "");
  EXPECT_EQ(testing::Count(xml, "<node "), 20000u);
  EXPECT_TRUE(
      xml.ends_with("    <edge source=\"node19998\" target=\"node19999\"></edge>\n"
                    "  </graph>\n</graphml>\n"));
  EXPECT_NE(
      xml.find("<edge source=\"node0\" target=\"node1\"><data key=\"link_k3\">0</data></edge>"),
      std::string::npos);
}

TEST(GraphmlWriter, StaysWellFormedWhateverBytesTheNamesHold) {
  const std::vector<std::string> names = {
      "<tag>", "q\"uote", "ap'os", "amp&amp;", "\xFF\xC3", "\x01", "\xC3\xA9t\xC3\xA9", "]]>"};
  RunResults results =
      testing::At_k(3, {testing::Community(0, {names[0], names[1], names[2]}, {})});
  results.nodes = names;
  for (std::size_t i = 1; i < names.size(); ++i) {
    results.links.push_back(testing::Link(names[i - 1], names[i]));
  }
  const std::string xml = Graphml_of(results);
  EXPECT_EQ(testing::Xml_fault(xml), "");
  EXPECT_NE(xml.find("<node id=\"\\xFF\\xC3\">"), std::string::npos);
  EXPECT_NE(xml.find("<node id=\"\\x01\">"), std::string::npos);
  EXPECT_NE(xml.find("<node id=\"]]&gt;\">"), std::string::npos);
  if (!testing::Python_available()) {
    GTEST_SKIP() << "python3 with xml.etree is not installed; checked in C++ only";
  }
  EXPECT_EQ(testing::Python_xml_fault(xml), "");
}

}  // namespace
}  // namespace kcp
