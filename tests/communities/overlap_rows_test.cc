#include "communities/overlap_rows.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

#include "cliques/overlap_matrix.h"
#include "communities/percolation.h"
#include "tests/support/brute_communities.h"

namespace kcp {
namespace {

// Random node sets over a few nodes, of every size from empty to large, some inside others:
// the shapes approximate cliques take after the exact ones.
CliqueList Random_sets(std::mt19937& random, const std::uint32_t& count) {
  CliqueList sets;
  for (std::uint32_t i = 0; i < count; ++i) {
    NodeList set;
    const std::uint32_t p = random() % 100;
    for (NodeIndex v = 1; v <= 14; ++v) {
      if (random() % 100 < p) set.push_back(v);
    }
    sets.push_back(set);
  }
  return sets;
}

OverlapMatrix On_demand() {
  OverlapMatrix overlaps;
  overlaps.on_demand = true;
  return overlaps;
}

TEST(OverlapRows, ComputedRowsEqualStoredRowsWhileLabelsGrow) {
  std::uint32_t compared = 0;
  for (std::uint32_t seed = 1; seed <= 60; ++seed) {
    std::mt19937 random(seed);
    const CliqueList sets = Random_sets(random, 5 + seed % 25);
    const OverlapMatrix stored = testing::Brute_overlap_matrix(sets, 1);
    const OverlapMatrix on_demand = On_demand();
    for (std::uint32_t k = 0; k <= 8; ++k) {
      SCOPED_TRACE("seed " + std::to_string(seed) + " k " + std::to_string(k));
      OverlapRows from_stored(sets, stored, k);
      OverlapRows computed(sets, on_demand, k);
      ASSERT_EQ(computed.Row_count(), sets.size());
      std::vector<std::int32_t> labels(sets.size(), -1);
      std::vector<std::uint32_t> order(sets.size());
      for (std::uint32_t i = 0; i < order.size(); ++i) order[i] = i;
      std::shuffle(order.begin(), order.end(), random);
      for (const std::uint32_t c : order) {
        CliqueIndexList expected;
        CliqueIndexList found{999};
        const bool expected_qualifies = from_stored.Row(c, labels, true, expected);
        const bool found_qualifies = computed.Row(c, labels, true, found);
        EXPECT_EQ(found, expected) << "row " << c;
        EXPECT_EQ(found_qualifies, expected_qualifies) << "row " << c;
        ++compared;
        // Labels only ever go from free to a community.
        for (std::uint32_t j = 0; j < labels.size(); ++j) {
          if (labels[j] < 0 && random() % 4 == 0) labels[j] = 0;
        }
      }
    }
  }
  EXPECT_GT(compared, 5000u);
}

// Sets over 90 nodes, most of them small and dense in a few hubs, some of 50 to 80 nodes: rows
// then mix cliques listed under node pairs with cliques listed under single nodes, at every k
// from 3 to beyond the largest set.
TEST(OverlapRows, ComputedRowsEqualStoredRowsWithLargeSets) {
  std::uint32_t compared = 0;
  for (std::uint32_t seed = 1; seed <= 12; ++seed) {
    std::mt19937 random(seed);
    CliqueList sets;
    for (std::uint32_t i = 0; i < 40; ++i) {
      NodeList set;
      const bool large = i % 9 == 0;
      for (NodeIndex v = 1; v <= 90; ++v) {
        const std::uint32_t p = large ? 75 : (v <= 12 ? 60 : 8);
        if (random() % 100 < p) set.push_back(v);
      }
      sets.push_back(set);
    }
    const OverlapMatrix stored = testing::Brute_overlap_matrix(sets, 1);
    const OverlapMatrix on_demand = On_demand();
    std::uint32_t largest = 0;
    for (const NodeList& set : sets) largest = std::max<std::uint32_t>(largest, set.size());
    for (std::uint32_t k = 3; k <= largest + 1; k += 1 + k / 12) {
      SCOPED_TRACE("seed " + std::to_string(seed) + " k " + std::to_string(k));
      OverlapRows from_stored(sets, stored, k);
      OverlapRows computed(sets, on_demand, k);
      std::vector<std::int32_t> labels(sets.size(), -1);
      std::vector<std::uint32_t> order(sets.size());
      for (std::uint32_t i = 0; i < order.size(); ++i) order[i] = i;
      std::shuffle(order.begin(), order.end(), random);
      for (const std::uint32_t c : order) {
        CliqueIndexList expected;
        CliqueIndexList found;
        EXPECT_EQ(computed.Row(c, labels, true, found), from_stored.Row(c, labels, true, expected));
        EXPECT_EQ(found, expected) << "row " << c;
        ++compared;
        if (random() % 3 == 0) labels[c] = 0;
      }
    }
  }
  EXPECT_GT(compared, 4000u);
}

TEST(OverlapRows, RowsOfAHandMadeListNeedKMinusOneSharedNodes) {
  const CliqueList cliques{{1, 2, 3, 4}, {2, 3, 4, 5}, {3, 4, 5, 6}, {1, 9}, {}};
  const OverlapMatrix overlaps = On_demand();
  std::vector<std::int32_t> labels(cliques.size(), -1);
  CliqueIndexList row;

  OverlapRows at4(cliques, overlaps, 4);
  EXPECT_TRUE(at4.Row(1, labels, true, row));
  EXPECT_EQ(row, (CliqueIndexList{0, 1, 2}));
  // Two nodes short of the diagonal: no entry sharing 4 nodes, only its own.
  EXPECT_FALSE(at4.Row(3, labels, true, row));
  EXPECT_TRUE(row.empty());

  OverlapRows at2(cliques, overlaps, 2);
  labels[2] = 0;
  // Its own two nodes reach k = 2; clique 2, sharing nothing, is labelled anyway.
  EXPECT_TRUE(at2.Row(3, labels, true, row));
  EXPECT_EQ(row, (CliqueIndexList{0, 3}));
  // The empty set shares nothing; its diagonal of 0 reaches no k above 0.
  EXPECT_FALSE(at2.Row(4, labels, true, row));
  EXPECT_TRUE(row.empty());
  EXPECT_FALSE(at2.Row(7, labels, true, row));
  EXPECT_TRUE(row.empty());
}

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
// approximation leaves them when it drops no exact clique.
TEST(OverlapRows, PercolationOnDemandEqualsPercolationOverTheStoredMatrix) {
  std::uint32_t communities = 0;
  for (std::uint32_t seed = 1; seed <= 80; ++seed) {
    const testing::Small_graph graph =
        testing::Random_small_graph(8 + seed % 7, 0.35 + 0.1 * (seed % 5), seed);
    CliqueList cliques = testing::Brute_maximal_cliques(graph, 3);
    const std::uint32_t n_exact = static_cast<std::uint32_t>(cliques.size());
    std::mt19937 random(seed);
    if (seed % 3 != 0) {
      for (const NodeList& set : Random_sets(random, seed % 6)) cliques.push_back(set);
    }
    // Now and then two large sets over the graph's nodes and beyond, listed under single nodes
    // at most k while the small ones are listed under pairs.
    std::uint32_t largest = 8;
    if (seed % 4 == 0) {
      for (int large = 0; large < 2; ++large) {
        NodeList set;
        for (NodeIndex v = 1; v <= 70; ++v) {
          if (random() % 100 < 80) set.push_back(v);
        }
        largest = std::max<std::uint32_t>(largest, set.size() + 1);
        cliques.push_back(set);
      }
    }
    for (const std::uint32_t min_shared : {1u, 2u}) {
      OverlapMatrix stored = testing::Brute_overlap_matrix(cliques, min_shared);
      stored.min_shared = min_shared;
      OverlapMatrix by_share = stored;
      Order_rows_by_share(by_share);
      for (std::uint32_t k = 1; k <= largest; k += k < 8 ? 1 : 7) {
        if (std::max(k - 1, 1u) < min_shared) continue;
        SCOPED_TRACE("seed " + std::to_string(seed) + " k " + std::to_string(k));
        const Communities expected = Percolate(cliques, stored, k, n_exact);
        const Communities found = Percolate(cliques, On_demand(), k, n_exact);
        EXPECT_EQ(found, expected);
        EXPECT_EQ(Percolate(cliques, by_share, k, n_exact), expected);
        communities += static_cast<std::uint32_t>(found.communities.size());
      }
    }
  }
  EXPECT_GT(communities, 300u);
}

TEST(OverlapRows, ChainOfAHundredThousandCliquesOnDemand) {
  constexpr std::uint32_t kCount = 100000;
  CliqueList cliques(kCount);
  for (std::uint32_t i = 0; i < kCount; ++i) cliques[i] = {i + 1, i + 2, i + 3};
  const Communities r = Percolate(cliques, On_demand(), 3, kCount);
  ASSERT_EQ(r.communities.size(), 1u);
  ASSERT_EQ(r.cliques[0].size(), kCount);
  for (std::uint32_t i = 0; i < kCount; ++i) ASSERT_EQ(r.cliques[0][i], i);
  EXPECT_EQ(r.communities[0].size(), kCount + 2);
  // At k = 4 no two cliques share three nodes: every clique is a community of its own.
  EXPECT_TRUE(Percolate(cliques, On_demand(), 4, kCount).communities.empty());
}

}  // namespace
}  // namespace kcp
