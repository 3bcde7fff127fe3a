#include "communities/percolation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>
#include <string>

#include "tests/support/brute_cliques.h"
#include "tests/support/brute_communities.h"
#include "tests/support/random_graph.h"

namespace kcp {
namespace {

struct Result {
  // Stale content, which the percolation must clear.
  CommunityList communities{{99}};
  CommunityLinkLists links{{{98, 99}}};
  CommunityCliqueLists cliques{{77}};
  std::uint32_t n_exact_coms = 12345;
  friend bool operator==(const Result&, const Result&) = default;
};

Result Percolate(const CliqueList& cliques, const OverlapMatrix& overlaps, std::uint32_t k,
                 std::uint32_t n_exact) {
  Result r;
  Coms_from_appr_ovlp_matr(r.communities, r.links, r.cliques, cliques, overlaps, k, n_exact,
                           r.n_exact_coms);
  return r;
}

// Matrices no search makes: a diagonal below the clique's size, a clique below k whose row claims
// k, rows beyond the clique list (left by an approximation that dropped exact cliques).
TEST(Percolation, SeedsNeedAQualifyingRowAndACliqueOfKNodesAndRowsWithoutACliqueAddNoNodes) {
  const CliqueList cliques{{1, 2, 3}, {1, 2, 4}, {1, 2, 5}};
  const std::vector<OverlapRow> rows{{{0, 2}, {2, 2}}, {{1, 3}, {2, 2}}, {{0, 2}, {1, 2}, {2, 3}}};
  // Row 1 seeds instead of row 0; clique 0 is reached through clique 2.
  Result r = Percolate(cliques, OverlapMatrix{rows}, 3, 3);
  EXPECT_EQ(r.cliques, (CommunityCliqueLists{{1, 2, 0}}));
  EXPECT_EQ(r.communities, (CommunityList{{1, 2, 3, 4, 5}}));
  r = Percolate({{1, 2}, {1, 2, 4}, {1, 2, 5}}, OverlapMatrix{{{{0, 3}, {2, 2}}, rows[1], rows[2]}},
                3, 3);
  EXPECT_EQ(r.cliques, (CommunityCliqueLists{{1, 2, 0}}));
  r = Percolate({{1, 2, 3}, {7, 8, 9}},
                OverlapMatrix{{{{0, 3}, {2, 2}}, {{1, 3}}, {{0, 2}, {2, 4}}}}, 3, 2);
  ASSERT_EQ(r.cliques, (CommunityCliqueLists{{1}, {0, 2}}));
  EXPECT_EQ(r.n_exact_coms, 1u);
  EXPECT_EQ(r.communities[1], (Community{1, 2, 3}));
  EXPECT_EQ(r.links[1], (LinkList{{1, 2}, {1, 3}, {2, 3}}));
  EXPECT_EQ(Percolate(cliques, OverlapMatrix{}, 3, 3), (Result{{}, {}, {}, 0}));
}

// The communities of the maximal cliques, in any order and with any of them approximate, equal
// those of the k-cliques; the order and the clique lists are those of the recursion.
TEST(Percolation, MatchesBruteForceKCliqueCommunitiesOnRandomGraphs) {
  std::uint32_t checked = 0;
  for (std::uint32_t seed = 1; seed <= 120; ++seed) {
    const IndexLinkMap links =
        testing::Random_undirected_links(6 + seed % 8, 0.3 + 0.1 * (seed % 5), seed);
    const std::set<NodeList> maximal = testing::Brute_maximal_cliques(links);
    CliqueList cliques(maximal.begin(), maximal.end());
    std::mt19937 random(seed);
    std::shuffle(cliques.begin(), cliques.end(), random);
    const std::uint32_t n_exact = static_cast<std::uint32_t>(random() % (cliques.size() + 1));
    for (std::uint32_t k = 3; k <= 7; ++k) {
      SCOPED_TRACE("seed " + std::to_string(seed) + " k " + std::to_string(k));
      const OverlapMatrix overlaps = testing::Brute_overlap_matrix(cliques, seed % 2 ? k - 1 : 1);
      const Result r = Percolate(cliques, overlaps, k, n_exact);
      EXPECT_EQ(std::set<NodeList>(r.communities.begin(), r.communities.end()),
                testing::Brute_k_clique_communities(links, k));
      Result expected;
      testing::Reference_percolation(expected.communities, expected.links, expected.cliques,
                                     cliques, overlaps, k, n_exact, expected.n_exact_coms);
      EXPECT_EQ(r, expected);
      // The approximate communities are those holding an approximate clique.
      for (std::size_t c = 0; c < r.cliques.size(); ++c) {
        const bool approximate = std::any_of(r.cliques[c].begin(), r.cliques[c].end(),
                                             [&](std::uint32_t m) { return m >= n_exact; });
        EXPECT_EQ(approximate, c >= r.n_exact_coms) << "community " << c;
      }
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
  OverlapMatrix overlaps{std::vector<OverlapRow>(kCount), 2};
  for (std::uint32_t i = 0; i < kCount; ++i) {
    cliques[i] = {i + 1, i + 2, i + 3};
    if (i > 0) overlaps.rows[i].push_back(Overlap{i - 1, 2});
    overlaps.rows[i].push_back(Overlap{i, 3});
    if (i + 1 < kCount) overlaps.rows[i].push_back(Overlap{i + 1, 2});
  }
  const Result r = Percolate(cliques, overlaps, 3, kCount);
  ASSERT_EQ(r.communities.size(), 1u);
  ASSERT_EQ(r.cliques[0].size(), kCount);
  for (std::uint32_t i = 0; i < kCount; ++i) ASSERT_EQ(r.cliques[0][i], i);
  EXPECT_EQ(r.communities[0].size(), kCount + 2);
  EXPECT_EQ(r.links[0].size(), 2 * (kCount + 2) - 3);
}

}  // namespace
}  // namespace kcp
