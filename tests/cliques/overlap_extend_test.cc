#include "cliques/overlap_extend.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <random>

#include "cliques/overlap_matrix.h"

namespace kcp {
namespace {

// The loops as described, each pair intersected directly and every non-empty intersection
// written on both sides.
void Reference_extend(OverlapMatrix& overlaps, const CliqueList& cliques, std::uint32_t n_exact) {
  const std::uint32_t count = static_cast<std::uint32_t>(cliques.size());
  overlaps.rows.resize(overlaps.rows.size() + (count - n_exact));
  auto set = [&](std::uint32_t r, std::uint32_t c, std::uint32_t v) {
    OverlapRow& row = overlaps.rows[r];
    auto at = std::find_if(row.begin(), row.end(), [&](const Overlap& o) { return o.clique >= c; });
    if (at != row.end() && at->clique == c) {
      at->shared = v;
    } else {
      row.insert(at, {c, v});
    }
  };
  auto pair = [&](std::uint32_t i, std::uint32_t j) {
    Clique common;
    std::set_intersection(cliques[i].begin(), cliques[i].end(), cliques[j].begin(),
                          cliques[j].end(), std::back_inserter(common));
    if (!common.empty()) {
      set(j, i, common.size());
      set(i, j, common.size());
    }
  };
  for (std::uint32_t i = n_exact; i < count; ++i) {
    for (std::uint32_t j = 0; j < n_exact; ++j) pair(i, j);
    set(i, i, cliques[i].size());
    for (std::uint32_t j = i + 1; j < count; ++j) pair(i, j);
  }
}

// The entries percolation reads: the diagonal and the pairs sharing at least min_shared nodes.
std::vector<OverlapRow> Read_entries(const OverlapMatrix& overlaps) {
  std::vector<OverlapRow> rows(overlaps.rows.size());
  for (std::size_t r = 0; r < rows.size(); ++r) {
    for (const Overlap& entry : overlaps.rows[r]) {
      if (entry.clique == r || entry.shared >= std::max(overlaps.min_shared, 1u)) {
        rows[r].push_back(entry);
      }
    }
  }
  return rows;
}

// Every entry of `part` stands in `whole` with the same count.
bool Entries_within(const std::vector<OverlapRow>& part, const std::vector<OverlapRow>& whole) {
  if (part.size() != whole.size()) return false;
  for (std::size_t r = 0; r < part.size(); ++r) {
    for (const Overlap& entry : part[r]) {
      if (std::find(whole[r].begin(), whole[r].end(), entry) == whole[r].end()) return false;
    }
  }
  return true;
}

TEST(OverlapExtend, AgreesWithPlainLoopsOnRandomLists) {
  std::mt19937 random(11);
  for (int round = 0; round < 300; ++round) {
    CliqueList cliques(1 + random() % 12);
    for (Clique& c : cliques) {
      for (NodeIndex n = 1; n <= 10; ++n) {
        if (random() % 3 == 0) c.push_back(n);
      }
    }
    const std::uint32_t n_exact = random() % (cliques.size() + 1);
    OverlapMatrix overlaps;
    overlaps.min_shared = random() % 4;
    // Stale rows from a longer exact list, holding entries the loops must overwrite or keep.
    overlaps.rows.resize(n_exact + random() % 3);
    for (std::size_t r = 0; r < overlaps.rows.size(); ++r) {
      for (std::uint32_t c = 0; c < 14; ++c) {
        if (random() % 3 == 0) overlaps.rows[r].push_back({c, 100 + c});
      }
    }
    OverlapMatrix expected = overlaps;
    Reference_extend(expected, cliques, n_exact);
    Extend_ovlp_matr(overlaps, cliques, n_exact);
    // Counts below min_shared may be left out where nothing was stored, and only there.
    EXPECT_EQ(Read_entries(overlaps), Read_entries(expected)) << "round " << round;
    EXPECT_TRUE(Entries_within(overlaps.rows, expected.rows)) << "round " << round;
  }
}

// The list the search left and the list after an approximation that dropped exact clique 1
// (inside the approximate {2,3,4,5,6}).
const CliqueList kSearched{{1, 2, 3}, {3, 4, 5}, {2, 3, 4}, {6, 7, 8}};
const CliqueList kMerged{{1, 2, 3}, {6, 7, 8}, {2, 3, 4, 5, 6}};

OverlapMatrix Stored_as_searched(const CliqueList& searched) {
  OverlapMatrix overlaps;
  overlaps.min_shared = 2;
  NodeCliqueMap node_cliques;
  for (std::uint32_t id = 0; id < searched.size(); ++id) {
    Add_clique_overlaps(overlaps, node_cliques, searched[id], id);
  }
  return overlaps;
}

TEST(OverlapExtend, OnDemandMatrixStaysSoWhenNoExactCliqueWasDropped) {
  OverlapMatrix overlaps;
  overlaps.min_shared = 2;
  overlaps.on_demand = true;
  CliqueList merged = kSearched;
  merged.push_back({7, 8, 9, 10});
  Complete_ovlp_matr(overlaps, kSearched, merged, 4);
  EXPECT_TRUE(overlaps.on_demand);
  EXPECT_TRUE(overlaps.rows.empty());
}

TEST(OverlapExtend, OnDemandMatrixIsStoredWithItsStaleRowsWhenExactCliquesWereDropped) {
  OverlapMatrix overlaps;
  overlaps.min_shared = 2;
  overlaps.on_demand = true;
  Complete_ovlp_matr(overlaps, kSearched, kMerged, 2);
  OverlapMatrix expected = Stored_as_searched(kSearched);
  Extend_ovlp_matr(expected, kMerged, 2);
  EXPECT_FALSE(overlaps.on_demand);
  EXPECT_EQ(overlaps.rows, expected.rows);
  // Four rows of the search plus one appended. Row 1 still describes the dropped {3,4,5} but
  // for its entry at 2: position 2 is now the approximate clique's, which shares one node with
  // {6,7,8} at position 1, and that 1 replaces the stale 2 of {2,3,4} on both sides.
  EXPECT_EQ(overlaps.rows.size(), 5u);
  EXPECT_EQ(overlaps.rows[1], (OverlapRow{{1, 3}, {2, 1}}));
  EXPECT_EQ(overlaps.rows[2], (OverlapRow{{0, 2}, {1, 1}, {2, 5}}));
}

TEST(OverlapExtend, StoredMatrixIsExtendedAsBefore) {
  OverlapMatrix overlaps = Stored_as_searched(kSearched);
  OverlapMatrix expected = overlaps;
  Extend_ovlp_matr(expected, kMerged, 2);
  Complete_ovlp_matr(overlaps, kSearched, kMerged, 2);
  EXPECT_EQ(overlaps.rows, expected.rows);
}

}  // namespace
}  // namespace kcp
