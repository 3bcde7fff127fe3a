#include "export/export_network.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "core/xerror_msg.h"
#include "tests/export/sample_results.h"

namespace kcp {
namespace {

using testing::Community;
using testing::Link;
using testing::Weighted_link;
using Positions = std::vector<std::uint32_t>;

// Folding, both directions of a directed pair and the communities of every node and link are
// pinned by the exact texts in graphml_writer_test.cc and json_writer_test.cc.
TEST(ExportNetwork, SumsTheWeightsOfFoldedLinesAsTheRunDoes) {
  RunResults results;
  results.weighted = true;
  results.nodes = {"p", "q"};
  results.links = {Weighted_link("p", "q", 0.25, "0.25"), Weighted_link("q", "p", 0.5, "0.5")};
  const ExportNetwork network = Build_export_network(results);
  ASSERT_EQ(network.links.size(), 1u);
  EXPECT_DOUBLE_EQ(*network.links[0].weight, 0.75);
}

TEST(ExportNetwork, RefusesUnknownCommunityNodesAndNamesThatWouldBeWrittenAlike) {
  RunResults results = testing::Undirected_sample();
  results.per_k[0].communities[0].nodes.push_back("ghost");
  try {
    Build_export_network(results);
    FAIL() << "no exception";
  } catch (const Xerror_msg& error) {
    EXPECT_NE(std::string(error.what()).find("ghost"), std::string::npos) << error.what();
    EXPECT_NE(std::string(error.what()).find("k=3"), std::string::npos) << error.what();
  }
  results = RunResults{};
  results.nodes = {"n\xFF", "n\\xFF"};
  results.links = {Link("n\xFF", "n\\xFF")};
  EXPECT_THROW(Build_export_network(results), Xerror_msg);
  // Distinct safe forms pass, and the link joins the two nodes.
  results.nodes = {"n\xFF", "n\xFE"};
  results.links = {Link("n\xFE", "n\xFF")};
  const ExportNetwork network = Build_export_network(results);
  ASSERT_EQ(network.links.size(), 1u);
  EXPECT_EQ(network.links[0].source, 1u);
  EXPECT_EQ(network.links[0].target, 0u);
}

TEST(ExportNetwork, LabelsCommunitiesAndWeightsAsTheFilesWriteThem) {
  KResults at_k;
  at_k.communities = {Community(0, {}, {}), Community(5, {}, {}), Community(-12, {}, {}),
                      Community(0, {}, {})};
  at_k.communities[3].approximate = true;  // "-0": approximate, no exact community before it
  EXPECT_EQ(Community_label(at_k.communities[3]), "-0");
  EXPECT_EQ(Community_label(at_k.communities[2]), "-12");
  std::string text;
  Append_community_labels(text, Positions({0, 1, 2, 3}), at_k);
  EXPECT_EQ(text, "0,5,-12,-0");
  text.clear();
  Append_community_labels(text, Positions{}, at_k);
  EXPECT_EQ(text, "");
  // Weights in their shortest exact form.
  for (const auto& [weight, expected] : std::vector<std::pair<double, std::string>>{
           {1, "1"}, {0.15, "0.15"}, {0.1 + 0.2, "0.30000000000000004"}, {2e6, "2e+06"}}) {
    EXPECT_EQ(Weight_text(weight), expected);
  }
}

}  // namespace
}  // namespace kcp
