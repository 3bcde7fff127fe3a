#include "communities/intensity_percolation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "communities/k_clique_intensity.h"
#include "core/xerror_msg.h"
#include "tests/cli/cout_capture.h"
#include "tests/support/brute_cliques.h"
#include "tests/support/random_graph.h"

namespace kcp {
namespace {

using namespace Coms_from_k_cls_sub;

void Add_clique_links(const NodeList& clique, const double& w, IndexLinkMap& links) {
  for (std::size_t a = 0; a < clique.size(); ++a) {
    for (std::size_t b = a + 1; b < clique.size(); ++b) links[{clique[a], clique[b]}] = w;
  }
}

TEST(IntersectionTest, DecidesStrictlyAboveTheThresholdAndStopsOnceTheLeastSumExceedsIt) {
  IndexLinkMap links{{{1, 2}, 0.5}, {{1, 3}, 0.5}, {{2, 3}, 0.9}, {{3, 4}, 1.0}, {{1, 4}, 0.5},
                     {{2, 4}, 0.8}, {{5, 6}, 3.0}, {{7, 8}, 3.0}, {{7, 9}, 3.0}, {{8, 9}, -1.0}};
  NodeList twelve;
  for (NodeIndex v = 21; v <= 32; ++v) twelve.push_back(v);
  Add_clique_links(twelve, 1e300, links);
  const struct {
    NodeList nodes;
    double intensity;
    bool passes;
  } cases[] = {
      // 0.5 * 0.5 * 0.9 = 0.225 > 0.6^3 = 0.216; 0.5 * 0.5 * 0.8 = 0.2 is not.
      {{1, 2, 3}, 0.6, true},
      {{1, 2, 4}, 0.6, false},
      {{5, 6}, 2.9, true},
      {{5, 6}, 3.1, false},
      // Weight 1 against I = 1: log 1 = 0 is not above log 1 = 0.
      {{3, 4}, 1.0, false},
      // The log of the negative weight is NaN, which never lowers the least log (log 3): at I = 2
      // 3 * log 3 > log 8 decides before any sum; at I = 3.5 the NaN sum is not above log 42.875.
      {{7, 8, 9}, 2.0, true},
      {{7, 8, 9}, 3.5, false},
      // pow(1e10, 66) is infinite; pow(1e10, 1) is not.
      {twelve, 1e10, false},
      {{21, 22}, 1e10, true},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Check_intersection(c.nodes, links, c.intensity), c.passes) << c.nodes.size();
  }
  links.erase({23, 24});
  try {
    Check_intersection(twelve, links, 1.0);
    ADD_FAILURE() << "no error for a missing link";
  } catch (const Xerror_msg& e) {
    EXPECT_STREQ(e.what(), "ERROR: Get_sub_links_and_thresh_abs: missing link.\n");
  }
}

TEST(NodeComInds, WalkStopsAtTheFirstSetBeyondTheSecondSmallestNodeAndReportsEveryKClique) {
  // Numbered out of lexicographic order on purpose: {5,6,7} ends the walk of {1,2,3} before
  // {1,2,4}, its real neighbour, is reached; in lexicographic numbering they meet.
  IndexLinkMap links;
  for (const NodeList& k_clique : {NodeList{1, 2, 3}, {5, 6, 7}, {1, 2, 4}}) {
    Add_clique_links(k_clique, 2.0, links);
  }
  LabelSets label_sets;
  {
    testing::CoutCapture quiet;
    Get_node_com_inds({{0, {1, 2, 3}}, {1, {5, 6, 7}}, {2, {1, 2, 4}}}, 3, label_sets, links, 1.0);
  }
  EXPECT_EQ(label_sets, (LabelSets{{0, {0}}, {1, {1}}, {2, {2}}}));
  testing::CoutCapture capture;
  Get_node_com_inds({{0, {1, 2, 3}}, {1, {1, 2, 4}}}, 3, label_sets, links, 0.25);
  EXPECT_EQ(label_sets, (LabelSets{{0, {0}}, {1, {0}}}));
  const std::string block = std::string(50, '_') +
                            "\n Extracting communities from the k-cliques at k=3,\n and a link "
                            "weight intensity threshlod I=0.250000:\n";
  EXPECT_EQ(capture.text(), block + " 2 of 2 k-cliques to do (0.00% done)\n" + block +
                                " 1 of 2 k-cliques to do (50.00% done)\n");
}

TEST(TransRules, SharedLabelsMergeIntoTheSmallestEvenOverLongChains) {
  const LabelSets label_sets{{0, {0, 20}}, {1, {1, 2}}, {2, {2, 3}}, {3, {9}},      {4, {20, 21}},
                             {5, {1, 4}},  {6, {3, 5}}, {7, {4, 6}}, {8, {30, 31}}, {9, {5, 7}}};
  TransRules rules{{100, 0}};  // stale content is cleared
  Get_trans_rules(label_sets, rules);
  EXPECT_EQ(
      rules,
      (TransRules{{20, 0}, {21, 0}, {2, 1}, {3, 1}, {4, 1}, {5, 1}, {6, 1}, {7, 1}, {31, 30}}));
  LabelSets chain;
  const std::uint32_t n = 50000;
  for (std::uint32_t i = 0; i < n; ++i) chain[i] = {i, i + 1};
  Get_trans_rules(chain, rules);
  ASSERT_EQ(rules.size(), n);
  EXPECT_EQ(rules.begin()->first, 1u);
  EXPECT_EQ(rules.rbegin()->first, n);
  EXPECT_TRUE(std::all_of(rules.begin(), rules.end(), [](const auto& r) { return r.second == 0; }));
}

// Generation and percolation as the community stage runs them, against brute force. The link
// list of a community is made of blocks of k(k-1)/2 pairs, each the ascending pairs of one of its
// k-cliques, latest first.
void Expect_brute_force_communities(const IndexLinkMap& links, const std::uint32_t& k,
                                    const double& intensity) {
  const std::set<NodeList> maximal = testing::Brute_maximal_cliques(links);
  KCliqueSet k_cliques;
  NumberedKCliques numbered;
  std::map<std::uint32_t, NodeList> nodes{{4, {1}}};
  std::map<std::uint32_t, LinkList> link_lists{{4, {{1, 2}}}};
  testing::CoutCapture quiet;
  Generate_k_cls_from_cls(CliqueList(maximal.begin(), maximal.end()), links, k_cliques, k,
                          intensity);
  ASSERT_EQ(k_cliques, testing::Brute_k_cliques(links, k, intensity));
  std::map<LinkList, std::size_t> number_of;  // the ascending pairs of each k-clique
  for (const NodeList& k_clique : k_cliques) {
    LinkList pairs;
    for (std::size_t a = 0; a < k; ++a) {
      for (std::size_t b = a + 1; b < k; ++b) pairs.emplace_back(k_clique[a], k_clique[b]);
    }
    number_of[pairs] = numbered.size();
    numbered.emplace(static_cast<std::uint32_t>(numbered.size()), k_clique);
  }
  Intensity_coms_from_k_cliques(numbered, nodes, link_lists, k, links, intensity);
  std::set<NodeList> found;
  for (const auto& [label, community] : nodes) found.insert(community);
  EXPECT_EQ(found, testing::Brute_k_clique_communities(links, k, intensity));
  ASSERT_EQ(link_lists.size(), nodes.size());
  const std::size_t block = k * (k - 1) / 2;
  for (const auto& [label, list] : link_lists) {
    ASSERT_EQ(list.size() % block, 0u);
    std::size_t previous = numbered.size();
    for (auto at = list.begin(); at != list.end(); at += block) {
      const auto pairs = number_of.find(LinkList(at, at + block));
      ASSERT_NE(pairs, number_of.end());
      EXPECT_LT(pairs->second, previous);
      previous = pairs->second;
    }
  }
}

TEST(IntensityCommunities, MatchBruteForceOnRandomWeightedGraphs) {
  for (std::uint32_t seed = 1; seed <= 20; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    IndexLinkMap links = testing::Random_undirected_links(seed <= 12 ? 10 : 11, 0.62, seed);
    // Weights below 1 make the lower bounds of the enumeration exact; equal weights above I give
    // the plain percolation of the k-cliques.
    std::mt19937 random(seed);
    for (auto& [link, w] : links)
      w = seed <= 12 ? std::uniform_real_distribution(0.2, 0.99)(random) : 3.0;
    for (const std::uint32_t k : {3u, 4u, 5u}) {
      for (const double intensity : {0.45, 0.6, 2.0}) {
        SCOPED_TRACE("k " + std::to_string(k) + " I " + std::to_string(intensity));
        if ((intensity < 1) == (seed <= 12)) Expect_brute_force_communities(links, k, intensity);
      }
    }
  }
}

}  // namespace
}  // namespace kcp
