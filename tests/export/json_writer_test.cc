#include "export/json_writer.h"

#include <gtest/gtest.h>

#include <limits>
#include <sstream>

#include "tests/export/sample_results.h"

namespace kcp {
namespace {

std::string Json_of(const RunResults& results) {
  std::ostringstream out;
  Write_node_link_json(results, Build_export_network(results), out);
  return out.str();
}

TEST(JsonWriter, WritesDirectedWeightedLinks) {
  const std::string json = Json_of(testing::Directed_sample());
  EXPECT_TRUE(json.starts_with("{\n  \"directed\": true,\n  \"multigraph\": false,\n"));
  EXPECT_NE(json.find("\"flavour\": \"directed\",\n    \"weighted\": true,"), std::string::npos);
  EXPECT_NE(
      json.find("    {\"source\": \"y\", \"target\": \"x\", \"weight\": 2, \"k3\": \"0\"},\n"),
      std::string::npos);
  EXPECT_NE(json.find("{\"source\": \"x\", \"target\": \"a&b\", \"weight\": 1e+06, \"k3\": \"0\"}"),
            std::string::npos);
}

TEST(JsonWriter, WritesNodeLinkDataOfAnUndirectedAndAnEmptyRun) {
  EXPECT_EQ(Json_of(testing::Undirected_sample()),
            "{\n"
            "  \"directed\": false,\n"
            "  \"multigraph\": false,\n"
            "  \"graph\": {\n"
            "    \"flavour\": \"\",\n"
            "    \"weighted\": false,\n"
            "    \"k\": [3, 4],\n"
            "    \"communities\": {\n"
            "      \"3\": [\n"
            "        {\"id\": \"0\", \"approximate\": false, \"nodes\": [\"a\", \"b\", \"c\"]},\n"
            "        {\"id\": \"-1\", \"approximate\": true, \"nodes\": [\"b\", \"c\", \"d\"]}\n"
            "      ],\n"
            "      \"4\": []\n"
            "    }\n"
            "  },\n"
            "  \"nodes\": [\n"
            "    {\"id\": \"a\", \"k3\": \"0\"},\n"
            "    {\"id\": \"b\", \"k3\": \"0,-1\"},\n"
            "    {\"id\": \"c\", \"k3\": \"0,-1\"},\n"
            "    {\"id\": \"d\", \"k3\": \"-1\"}\n"
            "  ],\n"
            "  \"links\": [\n"
            "    {\"source\": \"a\", \"target\": \"b\", \"k3\": \"0\"},\n"
            "    {\"source\": \"a\", \"target\": \"c\", \"k3\": \"0\"},\n"
            "    {\"source\": \"b\", \"target\": \"c\", \"k3\": \"0,-1\"},\n"
            "    {\"source\": \"c\", \"target\": \"d\", \"k3\": \"-1\"}\n"
            "  ]\n"
            "}\n");
  EXPECT_EQ(Json_of(RunResults{}),
            "{\n"
            "  \"directed\": false,\n"
            "  \"multigraph\": false,\n"
            "  \"graph\": {\n"
            "    \"flavour\": \"\",\n"
            "    \"weighted\": false,\n"
            "    \"k\": [],\n"
            "    \"communities\": {}\n"
            "  },\n"
            "  \"nodes\": [],\n"
            "  \"links\": []\n"
            "}\n");
}

TEST(JsonWriter, EscapesNamesAndWritesNoNonFiniteNumber) {
  RunResults results;
  results.weighted = true;
  results.nodes = {"q\"uote", "back\\slash", "\xFF"};
  results.links = {testing::Weighted_link("q\"uote", "back\\slash",
                                          std::numeric_limits<double>::infinity(), "inf"),
                   testing::Weighted_link("back\\slash", "\xFF", 1, "1")};
  const std::string json = Json_of(results);
  EXPECT_NE(json.find("{\"id\": \"q\\\"uote\"}"), std::string::npos) << json;
  EXPECT_NE(json.find("{\"id\": \"back\\\\slash\"}"), std::string::npos) << json;
  EXPECT_NE(json.find("{\"id\": \"\\\\xFF\"}"), std::string::npos) << json;
  EXPECT_NE(json.find("\"weight\": null"), std::string::npos) << json;
  EXPECT_EQ(json.find("inf"), std::string::npos) << json;
}

}  // namespace
}  // namespace kcp
