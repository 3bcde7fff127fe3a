#include "communities/intensity_percolation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "communities/k_clique_intensity.h"
#include "core/xerror_msg.h"
#include "tests/support/brute_communities.h"

namespace kcp {
namespace {

using Coms_from_k_cls_sub::Check_intersection;
using Coms_from_k_cls_sub::Get_node_com_inds;
using Coms_from_k_cls_sub::Get_trans_rules;

struct Communities {
  std::map<std::uint32_t, NodeList> nodes;
  std::map<std::uint32_t, LinkList> links;
};

Communities Percolate_quietly(const NumberedKCliques& k_cliques, const std::uint32_t& k,
                              const IndexLinkMap& links, const double& intensity) {
  Communities result;
  ::testing::internal::CaptureStdout();
  Intensity_coms_from_k_cliques(k_cliques, result.nodes, result.links, k, links, intensity);
  ::testing::internal::GetCapturedStdout();
  return result;
}

void Add_clique_links(const NodeList& clique, const double& w, IndexLinkMap& links) {
  for (std::size_t a = 0; a < clique.size(); ++a) {
    for (std::size_t b = a + 1; b < clique.size(); ++b) links[{clique[a], clique[b]}] = w;
  }
}

TEST(IntersectionTest, DecidesStrictlyAboveTheThreshold) {
  const IndexLinkMap links{{{1, 2}, 0.5}, {{1, 3}, 0.5}, {{2, 3}, 0.9}, {{3, 4}, 1.0},
                           {{1, 4}, 0.5}, {{2, 4}, 0.8}, {{5, 6}, 3.0}};
  // 0.5 * 0.5 * 0.9 = 0.225 > 0.6^3 = 0.216; 0.5 * 0.5 * 0.8 = 0.2 is not.
  EXPECT_TRUE(Check_intersection({1, 2, 3}, links, 0.6));
  EXPECT_FALSE(Check_intersection({1, 2, 4}, links, 0.6));
  EXPECT_TRUE(Check_intersection({5, 6}, links, 2.9));
  EXPECT_FALSE(Check_intersection({5, 6}, links, 3.1));
  // Weight 1 against I = 1: log 1 = 0 is not above log 1 = 0.
  EXPECT_FALSE(Check_intersection({3, 4}, links, 1.0));
}

TEST(IntersectionTest, StopsAsSoonAsTheSmallestPossibleSumExceedsTheThreshold) {
  // The log of the negative weight is NaN; NaN never lowers the minimum (log 3), and before the
  // first step 3 * log 3 > log 8 already decides. A full sum would be NaN and fail.
  const IndexLinkMap links{{{1, 2}, 3.0}, {{1, 3}, 3.0}, {{2, 3}, -1.0}};
  EXPECT_TRUE(Check_intersection({1, 2, 3}, links, 2.0));
  // With I = 3.5 no early stop happens and the NaN sum is not above the threshold.
  EXPECT_FALSE(Check_intersection({1, 2, 3}, links, 3.5));
}

TEST(IntersectionTest, OverflowingThresholdFailsAndMissingLinkThrows) {
  NodeList nodes;
  IndexLinkMap links;
  for (NodeIndex v = 1; v <= 12; ++v) nodes.push_back(v);
  Add_clique_links(nodes, 1e300, links);
  // pow(1e10, 66) is infinite; pow(1e10, 1) is not.
  EXPECT_FALSE(Check_intersection(nodes, links, 1e10));
  EXPECT_TRUE(Check_intersection({1, 2}, links, 1e10));

  links.erase({3, 4});
  try {
    Check_intersection(nodes, links, 1.0);
    ADD_FAILURE() << "no error for a missing link";
  } catch (const Xerror_msg& e) {
    EXPECT_EQ(std::string(e.what()), "ERROR: Get_sub_links_and_thresh_abs: missing link.\n");
  }
}

TEST(NodeComInds, WalkStopsAtTheFirstSetBeyondTheSecondSmallestNode) {
  // Numbered out of lexicographic order on purpose: {5,6,7} ends the walk of {1,2,3} before
  // {1,2,4}, its real neighbour, is reached.
  const NumberedKCliques k_cliques{{0, {1, 2, 3}}, {1, {5, 6, 7}}, {2, {1, 2, 4}}};
  IndexLinkMap links;
  for (const auto& [number, k_clique] : k_cliques) Add_clique_links(k_clique, 2.0, links);
  LabelSets label_sets;
  ::testing::internal::CaptureStdout();
  Get_node_com_inds(k_cliques, 3, label_sets, links, 1.0);
  ::testing::internal::GetCapturedStdout();
  EXPECT_EQ(label_sets, (LabelSets{{0, {0}}, {1, {1}}, {2, {2}}}));

  // In lexicographic numbering they meet.
  const NumberedKCliques ordered{{0, {1, 2, 3}}, {1, {1, 2, 4}}, {2, {5, 6, 7}}};
  ::testing::internal::CaptureStdout();
  Get_node_com_inds(ordered, 3, label_sets, links, 1.0);
  ::testing::internal::GetCapturedStdout();
  EXPECT_EQ(label_sets, (LabelSets{{0, {0}}, {1, {0}}, {2, {1}}}));
}

TEST(NodeComInds, ConsoleShowsOneBlockPerKClique) {
  const NumberedKCliques k_cliques{{0, {1, 2, 3}}, {1, {1, 2, 4}}};
  IndexLinkMap links;
  for (const auto& [number, k_clique] : k_cliques) Add_clique_links(k_clique, 2.0, links);
  LabelSets label_sets;
  ::testing::internal::CaptureStdout();
  Get_node_com_inds(k_cliques, 3, label_sets, links, 0.25);
  const std::string out = ::testing::internal::GetCapturedStdout();
  const std::string block =
      "__________________________________________________\n"
      " Extracting communities from the k-cliques at k=3,\n"
      " and a link weight intensity threshlod I=0.250000:\n";
  EXPECT_EQ(out, block + " 2 of 2 k-cliques to do (0.00% done)\n" + block +
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

TEST(IntensityCommunities, NoKCliquesGiveNoCommunities) {
  std::map<std::uint32_t, NodeList> nodes{{4, {1}}};
  std::map<std::uint32_t, LinkList> links{{4, {{1, 2}}}};
  ::testing::internal::CaptureStdout();
  Intensity_coms_from_k_cliques({}, nodes, links, 3, {}, 1.0);
  EXPECT_EQ(::testing::internal::GetCapturedStdout(), "");
  EXPECT_TRUE(nodes.empty());
  EXPECT_TRUE(links.empty());
}

// ---- Independent check on random graphs ----

// A random graph on the nodes 1..n with a weight on every link.
struct Random_graph {
  testing::Small_graph graph;
  IndexLinkMap links;
};

Random_graph Make_graph(const std::uint32_t& seed, const std::uint32_t& n, const double& p,
                        const double& w_low, const double& w_high) {
  Random_graph g{testing::Random_small_graph(n, p, seed), {}};
  std::mt19937 gen(seed);
  std::uniform_real_distribution<double> weight(w_low, w_high);
  for (NodeIndex a = 1; a <= n; ++a) {
    for (NodeIndex b = a + 1; b <= n; ++b) {
      if (g.graph.Linked(a, b)) g.links[{a, b}] = w_low == w_high ? w_low : weight(gen);
    }
  }
  return g;
}

bool Brute_intense(const NodeList& nodes, const IndexLinkMap& links, const double& intensity) {
  double sum = 0;
  for (std::size_t a = 0; a < nodes.size(); ++a) {
    for (std::size_t b = a + 1; b < nodes.size(); ++b)
      sum += std::log(links.at({nodes[a], nodes[b]}));
  }
  const double l = nodes.size() * (nodes.size() - 1) / 2.0;
  return sum > std::log(std::pow(intensity, l));
}

// Every k-subset of the maximal cliques, kept when it is intense enough (or always).
KCliqueSet Brute_k_cliques(const CliqueList& cliques, const std::uint32_t& k,
                           const IndexLinkMap& links, const double& intensity,
                           const bool& weighted) {
  KCliqueSet result;
  for (const NodeList& clique : cliques) {
    if (clique.size() < k) continue;
    const std::uint32_t n = static_cast<std::uint32_t>(clique.size());
    for (std::uint32_t mask = 0; mask < (1u << n); ++mask) {
      if (static_cast<std::uint32_t>(__builtin_popcount(mask)) != k) continue;
      NodeList subset;
      for (std::uint32_t i = 0; i < n; ++i) {
        if (mask & (1u << i)) subset.push_back(clique[i]);
      }
      if (!weighted || Brute_intense(subset, links, intensity)) result.insert(subset);
    }
  }
  return result;
}

std::uint32_t Find(std::vector<std::uint32_t>& parent, std::uint32_t x) {
  while (parent[x] != x) x = parent[x] = parent[parent[x]];
  return x;
}

// Communities as (node set, sorted link multiset): union-find over k-cliques sharing k - 1
// nodes whose shared set is intense enough (or always).
std::set<std::pair<NodeList, LinkList>> Brute_communities(const KCliqueSet& k_cliques,
                                                          const std::uint32_t& k,
                                                          const IndexLinkMap& links,
                                                          const double& intensity,
                                                          const bool& weighted) {
  const std::vector<NodeList> all(k_cliques.begin(), k_cliques.end());
  std::vector<std::uint32_t> parent(all.size());
  std::iota(parent.begin(), parent.end(), 0u);
  for (std::uint32_t i = 0; i < all.size(); ++i) {
    for (std::uint32_t j = i + 1; j < all.size(); ++j) {
      NodeList shared;
      std::set_intersection(all[i].begin(), all[i].end(), all[j].begin(), all[j].end(),
                            std::back_inserter(shared));
      if (shared.size() + 1 != k) continue;
      if (weighted && !Brute_intense(shared, links, intensity)) continue;
      parent[Find(parent, i)] = Find(parent, j);
    }
  }
  std::map<std::uint32_t, std::pair<std::set<NodeIndex>, LinkList>> by_root;
  for (std::uint32_t i = 0; i < all.size(); ++i) {
    auto& com = by_root[Find(parent, i)];
    com.first.insert(all[i].begin(), all[i].end());
    for (std::size_t a = 0; a < all[i].size(); ++a) {
      for (std::size_t b = a + 1; b < all[i].size(); ++b)
        com.second.emplace_back(all[i][a], all[i][b]);
    }
  }
  std::set<std::pair<NodeList, LinkList>> result;
  for (auto& [root, com] : by_root) {
    std::sort(com.second.begin(), com.second.end());
    result.insert({NodeList(com.first.begin(), com.first.end()), com.second});
  }
  return result;
}

// Runs generation and percolation as the community stage does and checks the link lists'
// order: blocks of k(k-1)/2 pairs, each the ascending pairs of one k-clique, latest first,
// and communities ascending by their first k-clique.
std::set<std::pair<NodeList, LinkList>> Program_communities(const CliqueList& cliques,
                                                            const std::uint32_t& k,
                                                            const IndexLinkMap& links,
                                                            const double& intensity,
                                                            KCliqueSet& k_cliques) {
  k_cliques.clear();
  ::testing::internal::CaptureStdout();
  Generate_k_cls_from_cls(cliques, links, k_cliques, k, intensity);
  ::testing::internal::GetCapturedStdout();
  NumberedKCliques numbered;
  std::map<NodeList, std::uint32_t> number_of;
  for (const NodeList& k_clique : k_cliques) {
    number_of[k_clique] = static_cast<std::uint32_t>(numbered.size());
    numbered.emplace(static_cast<std::uint32_t>(numbered.size()), k_clique);
  }
  const Communities coms = Percolate_quietly(numbered, k, links, intensity);
  EXPECT_EQ(coms.nodes.size(), coms.links.size());

  const std::size_t block = k * (k - 1) / 2;
  std::set<std::pair<NodeList, LinkList>> result;
  std::int64_t previous_first = -1;
  for (const auto& [label, list] : coms.links) {
    EXPECT_EQ(list.size() % block, 0u);
    std::int64_t previous_in_list = static_cast<std::int64_t>(numbered.size());
    for (std::size_t start = 0; start + block <= list.size(); start += block) {
      std::set<NodeIndex> members;
      for (std::size_t i = start; i < start + block; ++i) {
        members.insert(list[i].first);
        members.insert(list[i].second);
      }
      const NodeList k_clique(members.begin(), members.end());
      LinkList pairs;
      for (std::size_t a = 0; a < k_clique.size(); ++a) {
        for (std::size_t b = a + 1; b < k_clique.size(); ++b)
          pairs.emplace_back(k_clique[a], k_clique[b]);
      }
      EXPECT_EQ(LinkList(list.begin() + start, list.begin() + start + block), pairs);
      const auto found = number_of.find(k_clique);
      EXPECT_NE(found, number_of.end());
      if (found == number_of.end()) continue;
      EXPECT_LT(found->second, previous_in_list);
      previous_in_list = found->second;
    }
    EXPECT_GT(previous_in_list, previous_first);
    previous_first = previous_in_list;
    LinkList sorted = list;
    std::sort(sorted.begin(), sorted.end());
    result.insert({coms.nodes.at(label), sorted});
  }
  return result;
}

TEST(IntensityCommunities, MatchBruteForceOnRandomWeightedGraphs) {
  int compared = 0;
  for (std::uint32_t seed = 1; seed <= 12; ++seed) {
    // Weights below 1: the lower bounds of the enumeration are then exact, so the k-cliques are
    // exactly those with intensity above I.
    const Random_graph g = Make_graph(seed, 10, 0.65, 0.2, 0.99);
    const CliqueList cliques = testing::Brute_maximal_cliques(g.graph, 3);
    for (const std::uint32_t k : {3u, 4u}) {
      for (const double intensity : {0.45, 0.6}) {
        KCliqueSet k_cliques;
        const auto program = Program_communities(cliques, k, g.links, intensity, k_cliques);
        const KCliqueSet expected_k = Brute_k_cliques(cliques, k, g.links, intensity, true);
        EXPECT_EQ(k_cliques, expected_k) << "seed " << seed << " k " << k << " I " << intensity;
        EXPECT_EQ(program, Brute_communities(expected_k, k, g.links, intensity, true))
            << "seed " << seed << " k " << k << " I " << intensity;
        compared += expected_k.size() > 3 ? 1 : 0;
      }
    }
  }
  EXPECT_GT(compared, 20);  // the graphs are dense enough to make the comparison meaningful
}

TEST(IntensityCommunities, EqualWeightsAboveIGivePlainPercolationOfKCliques) {
  for (std::uint32_t seed = 21; seed <= 28; ++seed) {
    const Random_graph g = Make_graph(seed, 11, 0.6, 3.0, 3.0);
    const CliqueList cliques = testing::Brute_maximal_cliques(g.graph, 3);
    for (const std::uint32_t k : {3u, 4u, 5u}) {
      KCliqueSet k_cliques;
      const auto program = Program_communities(cliques, k, g.links, 2.0, k_cliques);
      const KCliqueSet all = Brute_k_cliques(cliques, k, g.links, 2.0, false);
      EXPECT_EQ(k_cliques, all) << "seed " << seed << " k " << k;
      EXPECT_EQ(program, Brute_communities(all, k, g.links, 2.0, false))
          << "seed " << seed << " k " << k;
    }
  }
}

}  // namespace
}  // namespace kcp
