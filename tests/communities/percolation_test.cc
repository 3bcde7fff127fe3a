#include "communities/percolation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <random>
#include <set>

#include "tests/support/brute_communities.h"

namespace kcp {
namespace {

using testing::Brute_overlap_matrix;

struct Result {
  CommunityList communities;
  CommunityLinkLists links;
  CommunityCliqueLists cliques;
  std::uint32_t n_exact_coms = 12345;
};

Result Percolate(const CliqueList& cliques, const OverlapMatrix& overlaps, std::uint32_t k,
                 std::uint32_t n_exact) {
  Result r;
  // Stale content must be cleared.
  r.communities = {{99}};
  r.links = {{{98, 99}}};
  r.cliques = {{77}};
  Coms_from_appr_ovlp_matr(r.communities, r.links, r.cliques, cliques, overlaps, k, n_exact,
                           r.n_exact_coms);
  return r;
}

LinkList All_pairs(const NodeList& nodes) {
  LinkList pairs;
  for (std::size_t a = 0; a < nodes.size(); ++a) {
    for (std::size_t b = a + 1; b < nodes.size(); ++b) pairs.emplace_back(nodes[a], nodes[b]);
  }
  return pairs;
}

// Eight cliques, all of three nodes, most of them sharing two with another.
CliqueList Hand_cliques() {
  return {{1, 2, 3}, {1, 2, 4},  {2, 3, 5},  {1, 4, 6},
          {3, 5, 7}, {8, 9, 10}, {4, 6, 11}, {1, 4, 12}};
}

TEST(Percolation, NothingWithoutRowsOrBeyondTheLargestClique) {
  const CliqueList cliques = Hand_cliques();
  // No rows: no community, whatever the list holds.
  Result r = Percolate(cliques, OverlapMatrix{}, 3, 8);
  EXPECT_TRUE(r.communities.empty());
  EXPECT_TRUE(r.links.empty());
  EXPECT_TRUE(r.cliques.empty());
  EXPECT_EQ(r.n_exact_coms, 0u);
  // No clique has 4 nodes.
  r = Percolate(cliques, Brute_overlap_matrix(cliques, 3), 4, 8);
  EXPECT_TRUE(r.communities.empty());
  EXPECT_EQ(r.n_exact_coms, 0u);
  // k = 0: k - 1 wraps, no entry is a candidate, so no community gets a node.
  r = Percolate(cliques, Brute_overlap_matrix(cliques, 1), 0, 8);
  EXPECT_TRUE(r.communities.empty());
}

TEST(Percolation, SeedRowWithoutAnEntryOfAtLeastKOpensNothing) {
  // The diagonal of row 0 says 2 although the clique has 3 nodes: the row does not qualify.
  const CliqueList cliques{{1, 2, 3}, {1, 2, 4}, {1, 2, 5}};
  OverlapMatrix overlaps;
  overlaps.rows = {{{0, 2}, {2, 2}}, {{1, 3}, {2, 2}}, {{0, 2}, {1, 2}, {2, 3}}};
  const Result r = Percolate(cliques, overlaps, 3, 3);
  // Row 1 seeds instead; clique 0 is reached through clique 2.
  ASSERT_EQ(r.communities.size(), 1u);
  EXPECT_EQ(r.cliques[0], (CliqueIndexList{1, 2, 0}));
  EXPECT_EQ(r.communities[0], (Community{1, 2, 3, 4, 5}));
}

TEST(Percolation, SeedNeedsACliqueOfAtLeastKNodesWhateverItsRowSays) {
  // Row 0 claims 3 nodes for a clique of 2: it qualifies, but the clique is too small to seed.
  const CliqueList cliques{{1, 2}, {1, 2, 4}, {1, 2, 5}};
  OverlapMatrix overlaps;
  overlaps.rows = {{{0, 3}, {2, 2}}, {{1, 3}, {2, 2}}, {{0, 2}, {1, 2}, {2, 3}}};
  const Result r = Percolate(cliques, overlaps, 3, 3);
  ASSERT_EQ(r.communities.size(), 1u);
  EXPECT_EQ(r.cliques[0], (CliqueIndexList{1, 2, 0}));
}

TEST(Percolation, RowsBeyondTheCliqueListAddNoNodes) {
  // After approximation the matrix may hold more rows than there are cliques. Row 2 has no
  // clique: it never seeds, and when taken it is listed but adds nothing.
  const CliqueList cliques{{1, 2, 3}, {7, 8, 9}};
  OverlapMatrix overlaps;
  overlaps.min_shared = 2;
  overlaps.rows = {{{0, 3}, {2, 2}}, {{1, 3}}, {{0, 2}, {2, 4}}};
  const Result r = Percolate(cliques, overlaps, 3, 2);
  ASSERT_EQ(r.communities.size(), 2u);
  EXPECT_EQ(r.n_exact_coms, 1u);
  EXPECT_EQ(r.cliques[0], (CliqueIndexList{1}));
  EXPECT_EQ(r.cliques[1], (CliqueIndexList{0, 2}));
  EXPECT_EQ(r.communities[1], (Community{1, 2, 3}));
  EXPECT_EQ(r.links[1], All_pairs({1, 2, 3}));
}

// Random graphs: the communities of the maximal cliques equal those of the k-cliques.
TEST(Percolation, MatchesBruteForceKCliqueCommunitiesOnRandomGraphs) {
  std::uint32_t checked = 0;
  for (std::uint32_t seed = 1; seed <= 120; ++seed) {
    const std::uint32_t n = 6 + seed % 8;
    const double p = 0.3 + 0.1 * (seed % 5);
    const testing::Small_graph graph = testing::Random_small_graph(n, p, seed);
    CliqueList cliques = testing::Brute_maximal_cliques(graph, 3);
    std::mt19937 random(seed);
    std::shuffle(cliques.begin(), cliques.end(), random);
    const std::uint32_t n_exact = static_cast<std::uint32_t>(random() % (cliques.size() + 1));
    for (std::uint32_t k = 3; k <= 7; ++k) {
      const std::uint32_t min_shared = seed % 2 == 0 ? 1 : k - 1;
      const OverlapMatrix overlaps = Brute_overlap_matrix(cliques, min_shared);
      const Result r = Percolate(cliques, overlaps, k, n_exact);
      SCOPED_TRACE("seed " + std::to_string(seed) + " k " + std::to_string(k));

      const std::set<NodeList> expected = testing::Brute_k_clique_communities(graph, k);
      const std::set<NodeList> found(r.communities.begin(), r.communities.end());
      EXPECT_EQ(found, expected);
      ASSERT_EQ(found.size(), r.communities.size());
      ASSERT_EQ(r.links.size(), r.communities.size());
      ASSERT_EQ(r.cliques.size(), r.communities.size());

      std::set<std::uint32_t> seen;
      std::int64_t last_seed = -1;
      for (std::size_t c = 0; c < r.communities.size(); ++c) {
        const bool approximate = c >= r.n_exact_coms;
        if (c == r.n_exact_coms) last_seed = -1;
        // Clique list: the maximal cliques of at least k nodes inside the community, each once.
        std::set<NodeIndex> union_of_members;
        std::set<Link> links_of_members;
        bool holds_approximate = false;
        for (std::uint32_t m : r.cliques[c]) {
          EXPECT_TRUE(seen.insert(m).second);
          EXPECT_GE(cliques[m].size(), k);
          holds_approximate |= m >= n_exact;
          union_of_members.insert(cliques[m].begin(), cliques[m].end());
          for (const Link& l : All_pairs(cliques[m])) links_of_members.insert(l);
        }
        EXPECT_EQ(holds_approximate, approximate);
        EXPECT_EQ(NodeList(union_of_members.begin(), union_of_members.end()), r.communities[c]);
        EXPECT_EQ(LinkList(links_of_members.begin(), links_of_members.end()), r.links[c]);
        // Numbered by seed: the lowest clique index of each community, ascending per kind.
        const std::uint32_t low = *std::min_element(r.cliques[c].begin(), r.cliques[c].end());
        EXPECT_EQ(low, r.cliques[c].front());
        EXPECT_GT(static_cast<std::int64_t>(low), last_seed);
        last_seed = low;
      }
      for (std::uint32_t i = 0; i < cliques.size(); ++i) {
        if (cliques[i].size() >= k) {
          EXPECT_TRUE(seen.count(i)) << "clique " << i;
        }
      }

      // The explicit stack keeps the visiting order of the recursion exactly.
      Result ref;
      testing::Reference_percolation(ref.communities, ref.links, ref.cliques, cliques, overlaps, k,
                                     n_exact, ref.n_exact_coms);
      EXPECT_EQ(r.cliques, ref.cliques);
      EXPECT_EQ(r.communities, ref.communities);
      EXPECT_EQ(r.links, ref.links);
      EXPECT_EQ(r.n_exact_coms, ref.n_exact_coms);
      checked += static_cast<std::uint32_t>(r.communities.size());
    }
  }
  EXPECT_GT(checked, 200u);
}

TEST(Percolation, ChainOfAHundredThousandCliquesGrowsWithoutDeepRecursion) {
  // Clique i = {i+1, i+2, i+3} shares two nodes with clique i+1: the growth is one chain, each
  // clique found from the one before it.
  constexpr std::uint32_t kCount = 100000;
  CliqueList cliques(kCount);
  OverlapMatrix overlaps;
  overlaps.min_shared = 2;
  overlaps.rows.resize(kCount);
  for (std::uint32_t i = 0; i < kCount; ++i) {
    cliques[i] = {i + 1, i + 2, i + 3};
    if (i > 0) overlaps.rows[i].push_back(Overlap{i - 1, 2});
    overlaps.rows[i].push_back(Overlap{i, 3});
    if (i + 1 < kCount) overlaps.rows[i].push_back(Overlap{i + 1, 2});
  }
  const auto start = std::chrono::steady_clock::now();
  const Result r = Percolate(cliques, overlaps, 3, kCount);
  const double seconds =
      std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  ASSERT_EQ(r.communities.size(), 1u);
  ASSERT_EQ(r.cliques[0].size(), kCount);
  for (std::uint32_t i = 0; i < kCount; ++i) ASSERT_EQ(r.cliques[0][i], i);
  ASSERT_EQ(r.communities[0].size(), kCount + 2);
  EXPECT_EQ(r.communities[0].back(), kCount + 2);
  EXPECT_EQ(r.links[0].size(), 2 * (kCount + 2) - 3);
  RecordProperty("chain_seconds", std::to_string(seconds));
}

}  // namespace
}  // namespace kcp
