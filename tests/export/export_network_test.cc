#include "export/export_network.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "driver/xerror_msg.h"
#include "tests/export/sample_results.h"

namespace kcp {
namespace {

using testing::Community;
using testing::Link;
using testing::Weighted_link;
using Positions = std::vector<std::uint32_t>;

Positions As_vector(std::span<const std::uint32_t> positions) {
  return Positions(positions.begin(), positions.end());
}

TEST(ExportNetwork, FoldsReciprocalLinesOfAnUndirectedRunIntoOneLink) {
  const ExportNetwork network = Build_export_network(testing::Undirected_sample());
  // a b, a c, b c, (c a folded into a c), c d
  ASSERT_EQ(network.links.size(), 4u);
  EXPECT_EQ(network.links[1].source, 0u);
  EXPECT_EQ(network.links[1].target, 2u);
  EXPECT_EQ(network.links[3].source, 2u);
  EXPECT_EQ(network.links[3].target, 3u);
}

TEST(ExportNetwork, SumsTheWeightsOfFoldedLinesAsTheRunDoes) {
  RunResults results;
  results.weighted = true;
  results.nodes = {"p", "q"};
  results.links = {Weighted_link("p", "q", 0.25, "0.25"), Weighted_link("q", "p", 0.5, "0.5")};
  const ExportNetwork network = Build_export_network(results);
  ASSERT_EQ(network.links.size(), 1u);
  EXPECT_DOUBLE_EQ(*network.links[0].weight, 0.75);
}

TEST(ExportNetwork, KeepsBothDirectionsOfADirectedRun) {
  const ExportNetwork network = Build_export_network(testing::Directed_sample());
  ASSERT_EQ(network.links.size(), 3u);
  EXPECT_EQ(network.links[0].source, 0u);
  EXPECT_EQ(network.links[1].source, 1u);
  EXPECT_DOUBLE_EQ(*network.links[1].weight, 2);
}

TEST(ExportNetwork, ListsTheCommunitiesOfEachNodeInFileOrderPerK) {
  const ExportNetwork network = Build_export_network(testing::Undirected_sample());
  ASSERT_EQ(network.per_k.size(), 2u);
  const KMemberships& k3 = network.per_k[0];
  EXPECT_EQ(k3.k, 3u);
  EXPECT_EQ(As_vector(k3.nodes.of(0)), Positions({0}));
  EXPECT_EQ(As_vector(k3.nodes.of(1)), Positions({0, 1}));
  EXPECT_EQ(As_vector(k3.nodes.of(3)), Positions({1}));
  const KMemberships& k4 = network.per_k[1];
  EXPECT_EQ(k4.k, 4u);
  for (std::size_t node = 0; node < 4; ++node) EXPECT_TRUE(k4.nodes.of(node).empty());
}

TEST(ExportNetwork, PutsALinkInACommunityWhicheverWayItsListNamesTheEnds) {
  const ExportNetwork network = Build_export_network(testing::Undirected_sample());
  const KMemberships& k3 = network.per_k[0];
  EXPECT_EQ(As_vector(k3.links.of(0)), Positions({0}));     // a b
  EXPECT_EQ(As_vector(k3.links.of(1)), Positions({0}));     // a c, listed as "c a"
  EXPECT_EQ(As_vector(k3.links.of(2)), Positions({0, 1}));  // b c
  EXPECT_EQ(As_vector(k3.links.of(3)), Positions({1}));     // c d
}

TEST(ExportNetwork, GivesBothDirectionsOfADirectedPairToTheCommunity) {
  const ExportNetwork network = Build_export_network(testing::Directed_sample());
  const KMemberships& k3 = network.per_k[0];
  EXPECT_EQ(As_vector(k3.links.of(0)), Positions({0}));  // x y
  EXPECT_EQ(As_vector(k3.links.of(1)), Positions({0}));  // y x
  EXPECT_EQ(As_vector(k3.links.of(2)), Positions({0}));  // x a&b, listed as "a&b x"
}

TEST(ExportNetwork, ThrowsOnACommunityNodeTheGraphLacks) {
  RunResults results = testing::Undirected_sample();
  results.per_k[0].communities[0].nodes.push_back("ghost");
  try {
    Build_export_network(results);
    FAIL() << "no exception";
  } catch (const Xerror_msg& error) {
    EXPECT_NE(std::string(error.what()).find("ghost"), std::string::npos) << error.what();
    EXPECT_NE(std::string(error.what()).find("k=3"), std::string::npos) << error.what();
  }
}

TEST(ExportNetwork, ThrowsWhenTwoNamesShareTheirSafeForm) {
  RunResults results;
  results.nodes = {"n\xFF", "n\\xFF"};
  results.links = {Link("n\xFF", "n\\xFF")};
  EXPECT_THROW(Build_export_network(results), Xerror_msg);
  results.nodes = {"n\xFF", "n\xFE"};
  results.links = {Link("n\xFF", "n\xFE")};
  EXPECT_NO_THROW(Build_export_network(results));
}

TEST(ExportNetwork, LabelsCommunitiesAsTheFilesNumberThem) {
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
}

TEST(ExportNetwork, WritesWeightsInTheirShortestExactForm) {
  EXPECT_EQ(Weight_text(1), "1");
  EXPECT_EQ(Weight_text(0.15), "0.15");
  EXPECT_EQ(Weight_text(0.1 + 0.2), "0.30000000000000004");
  EXPECT_EQ(Weight_text(2e6), "2e+06");
}

}  // namespace
}  // namespace kcp
