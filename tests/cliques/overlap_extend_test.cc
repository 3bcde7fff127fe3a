#include "cliques/overlap_extend.h"

#include <gtest/gtest.h>

#include "cliques/overlap_matrix.h"

namespace kcp {
namespace {

TEST(OverlapExtend, OnDemandMatrixIsStoredOnlyWhenExactCliquesWereDropped) {
  // The list the search left, and the list after an approximation that dropped exact clique 1
  // (inside the approximate {2,3,4,5,6}) or dropped nothing.
  const CliqueList searched{{1, 2, 3}, {3, 4, 5}, {2, 3, 4}, {6, 7, 8}};
  const CliqueList merged{{1, 2, 3}, {6, 7, 8}, {2, 3, 4, 5, 6}};
  CliqueList appended = searched;
  appended.push_back({7, 8, 9, 10});
  OverlapMatrix stored;
  stored.min_shared = 2;
  NodeCliqueMap node_cliques;
  for (std::uint32_t id = 0; id < searched.size(); ++id) {
    Add_clique_overlaps(stored, node_cliques, searched[id], id);
  }
  OverlapMatrix expected = stored;
  Extend_ovlp_matr(expected, merged, 2);
  OverlapMatrix on_demand{{}, 2, OverlapStorage::kOnDemand};
  Complete_ovlp_matr(on_demand, searched, appended, 4);
  EXPECT_TRUE(on_demand.On_demand());
  EXPECT_TRUE(on_demand.rows.empty());
  // Stored with the stale rows of the search, extended as a stored matrix is.
  Complete_ovlp_matr(on_demand, searched, merged, 2);
  EXPECT_FALSE(on_demand.On_demand());
  EXPECT_EQ(on_demand.rows, expected.rows);
  Complete_ovlp_matr(stored, searched, merged, 2);
  EXPECT_EQ(stored.rows, expected.rows);
  // Row 1 still describes the dropped {3,4,5} but for its entry at 2: position 2 is now the
  // approximate clique's, which shares one node with {6,7,8} at position 1, and that 1 replaces
  // the stale 2 of {2,3,4} on both sides.
  ASSERT_EQ(expected.rows.size(), 5u);
  EXPECT_EQ(expected.rows[1], (OverlapRow{{1, 3}, {2, 1}}));
  EXPECT_EQ(expected.rows[2], (OverlapRow{{0, 2}, {1, 1}, {2, 5}}));
}

}  // namespace
}  // namespace kcp
