#include "communities/overlap_rows.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>
#include <string>

#include "cliques/clique_search_stage.h"
#include "cliques/overlap_matrix.h"
#include "communities/percolation.h"
#include "tests/support/brute_cliques.h"
#include "tests/support/brute_communities.h"
#include "tests/support/random_graph.h"

namespace kcp {
namespace {

// `count` random node sets over the nodes 1..span, each of a random density (at least the
// least one), from empty to large, some inside others: the shapes approximate cliques take after
// the exact ones.
CliqueList Random_sets(std::mt19937& random, const std::uint32_t& count, const NodeIndex& span,
                       const std::uint32_t& least_density = 0) {
  CliqueList sets(count);
  for (NodeList& set : sets) {
    const std::uint32_t p = std::max<std::uint32_t>(random() % 100, least_density);
    for (NodeIndex v = 1; v <= span; ++v) {
      if (random() % 100 < p) set.push_back(v);
    }
  }
  return sets;
}

const OverlapMatrix kOnDemand{{}, 1, OverlapStorage::kOnDemand};

struct Communities {
  CommunityList communities;
  CommunityLinkLists links;
  CommunityCliqueLists cliques;
  std::uint32_t n_exact_coms = 0;
  friend bool operator==(const Communities&, const Communities&) = default;
};

Communities Percolate(const CliqueList& cliques, const OverlapMatrix& overlaps,
                      const std::uint32_t& k, const std::uint32_t& n_exact) {
  Communities r;
  Coms_from_appr_ovlp_matr(r.communities, r.links, r.cliques, cliques, overlaps, k, n_exact,
                           r.n_exact_coms);
  return r;
}

// The maximal cliques of random graphs followed by random approximate sets, as the
// approximation leaves them when it drops no exact clique; now and then two large sets, whose
// computed rows list cliques under single nodes while the small ones are listed under pairs.
TEST(OverlapRows, PercolationOnDemandOrByShareEqualsPercolationOverTheStoredMatrix) {
  std::uint32_t communities = 0;
  for (std::uint32_t seed = 1; seed <= 80; ++seed) {
    const std::set<NodeList> maximal = testing::Brute_maximal_cliques(
        testing::Random_undirected_links(8 + seed % 7, 0.35 + 0.1 * (seed % 5), seed));
    CliqueList cliques(maximal.begin(), maximal.end());
    const std::uint32_t n_exact = static_cast<std::uint32_t>(cliques.size());
    std::mt19937 random(seed);
    CliqueList extra = Random_sets(random, seed % 3 != 0 ? seed % 6 : 0, 14);
    if (seed % 4 == 0) {
      for (const NodeList& set : Random_sets(random, 2, 70, 80)) extra.push_back(set);
    }
    cliques.insert(cliques.end(), extra.begin(), extra.end());
    const std::uint32_t largest = seed % 4 == 0 ? 60 : 8;
    for (const std::uint32_t min_shared : {1u, 2u}) {
      const OverlapMatrix stored = testing::Brute_overlap_matrix(cliques, min_shared);
      OverlapMatrix by_share = stored;
      Order_rows_by_share(by_share);
      for (std::uint32_t k = 1; k <= largest; k += k < 8 ? 1 : 7) {
        if (std::max(k - 1, 1u) < min_shared) continue;
        SCOPED_TRACE("seed " + std::to_string(seed) + " k " + std::to_string(k));
        const Communities expected = Percolate(cliques, stored, k, n_exact);
        EXPECT_EQ(Percolate(cliques, kOnDemand, k, n_exact), expected);
        EXPECT_EQ(Percolate(cliques, by_share, k, n_exact), expected);
        communities += static_cast<std::uint32_t>(expected.communities.size());
      }
    }
  }
  EXPECT_GT(communities, 300u);
}

// Sets crowded into a few dense cores of 40 nodes, each with a few of 800 other nodes: more nodes
// than the hot ones, so that shared nodes and links are counted on both kinds. Nested and repeated
// sets are dropped, so that all may pass for exact maximal cliques.
CliqueList Dense_cores(std::mt19937& random, const std::uint32_t& count) {
  std::set<NodeList> sets;
  while (sets.size() < count) {
    const NodeIndex core = 1 + 40 * (random() % 3);
    std::set<NodeIndex> set;
    const std::uint32_t size = 6 + random() % 14;
    while (set.size() < size) set.insert(core + random() % 40);
    for (std::uint32_t far = random() % 4; far > 0; --far) set.insert(121 + random() % 800);
    sets.emplace(set.begin(), set.end());
  }
  CliqueList maximal;
  for (const NodeList& set : sets) {
    const bool nested = std::any_of(sets.begin(), sets.end(), [&](const NodeList& other) {
      return other != set && std::includes(other.begin(), other.end(), set.begin(), set.end());
    });
    if (!nested) maximal.push_back(set);
  }
  std::shuffle(maximal.begin(), maximal.end(), random);
  return maximal;
}

// One run's matrix read at every k in turn, as the driver does, so that the kept profile, lists
// and communities serve k after k, then at k out of that order; with every set exact, and with
// the last third approximate.
TEST(OverlapRows, DenseCoresAtEveryKEqualPercolationOverTheStoredMatrix) {
  std::uint32_t communities = 0;
  for (std::uint32_t seed = 1; seed <= 4; ++seed) {
    std::mt19937 random(seed);
    const CliqueList cliques = Dense_cores(random, 700);
    const OverlapMatrix stored = testing::Brute_overlap_matrix(cliques, 1);
    const auto count = static_cast<std::uint32_t>(cliques.size());
    for (const std::uint32_t n_exact : {count, 2 * count / 3}) {
      const OverlapMatrix run = Run_overlap_matrix(2);
      // Every k downwards, then a few against that order and one twice.
      std::vector<std::uint32_t> ks;
      for (std::uint32_t k = 22; k >= 3; --k) ks.push_back(k);
      ks.insert(ks.end(), {6, 11, 11, 4});
      for (const std::uint32_t& k : ks) {
        SCOPED_TRACE("seed " + std::to_string(seed) + " k " + std::to_string(k));
        const Communities expected = Percolate(cliques, stored, k, n_exact);
        EXPECT_EQ(Percolate(cliques, run, k, n_exact), expected);
        communities += static_cast<std::uint32_t>(expected.communities.size());
      }
    }
  }
  EXPECT_GT(communities, 200u);
}

TEST(OverlapRows, ChainOfAHundredThousandCliquesOnDemand) {
  constexpr std::uint32_t kCount = 100000;
  CliqueList cliques(kCount);
  for (std::uint32_t i = 0; i < kCount; ++i) cliques[i] = {i + 1, i + 2, i + 3};
  const Communities r = Percolate(cliques, kOnDemand, 3, kCount);
  ASSERT_EQ(r.communities.size(), 1u);
  ASSERT_EQ(r.cliques[0].size(), kCount);
  for (std::uint32_t i = 0; i < kCount; ++i) ASSERT_EQ(r.cliques[0][i], i);
  EXPECT_EQ(r.communities[0].size(), kCount + 2);
  // At k = 4 no clique is large enough to seed a community.
  EXPECT_TRUE(Percolate(cliques, kOnDemand, 4, kCount).communities.empty());
}

}  // namespace
}  // namespace kcp
