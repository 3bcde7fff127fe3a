#include "cliques/overlap_matrix.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <initializer_list>
#include <string>
#include <utility>

#include "core/xerror_msg.h"

namespace kcp {
namespace {

OverlapRow Row(std::initializer_list<std::pair<std::uint32_t, std::uint32_t>> entries) {
  OverlapRow row;
  for (const auto& [clique, shared] : entries) row.push_back(Overlap{clique, shared});
  return row;
}

OverlapMatrix Register(const CliqueList& cliques, const std::uint32_t& min_shared,
                       NodeCliqueMap& node_cliques) {
  OverlapMatrix overlaps;
  overlaps.min_shared = min_shared;
  for (std::uint32_t id = 0; id < cliques.size(); ++id) {
    Add_clique_overlaps(overlaps, node_cliques, cliques[id], id);
  }
  return overlaps;
}

const CliqueList kFour{{1, 2, 3}, {2, 3, 4}, {5, 6, 7}, {1, 3, 5}};

TEST(OverlapMatrix, RowsHoldSizesAndSharedCountsOnBothSides) {
  NodeCliqueMap node_cliques;
  const OverlapMatrix overlaps = Register(kFour, 1, node_cliques);
  EXPECT_EQ(overlaps.rows, (std::vector<OverlapRow>{
                               Row({{0, 3}, {1, 2}, {3, 2}}),
                               Row({{0, 2}, {1, 3}, {3, 1}}),
                               Row({{2, 3}, {3, 1}}),
                               Row({{0, 2}, {1, 1}, {2, 1}, {3, 3}}),
                           }));
  EXPECT_EQ(node_cliques.cliques_of_node[3], (std::vector<std::uint32_t>{0, 1, 3}));
  EXPECT_EQ(node_cliques.cliques_of_node[7], (std::vector<std::uint32_t>{2}));
}

TEST(OverlapMatrix, PairsBelowMinSharedAreLeftOutButTheDiagonalStays) {
  NodeCliqueMap node_cliques;
  const OverlapMatrix two = Register(kFour, 2, node_cliques);
  EXPECT_EQ(two.rows, (std::vector<OverlapRow>{
                          Row({{0, 3}, {1, 2}, {3, 2}}),
                          Row({{0, 2}, {1, 3}}),
                          Row({{2, 3}}),
                          Row({{0, 2}, {3, 3}}),
                      }));
  NodeCliqueMap again;
  const OverlapMatrix five = Register(kFour, 5, again);
  EXPECT_EQ(five.rows,
            (std::vector<OverlapRow>{Row({{0, 3}}), Row({{1, 3}}), Row({{2, 3}}), Row({{3, 3}})}));
}

TEST(OverlapMatrix, RefusesACliqueOutOfTurn) {
  NodeCliqueMap node_cliques;
  OverlapMatrix overlaps;
  EXPECT_THROW(Add_clique_overlaps(overlaps, node_cliques, Clique{1, 2, 3}, 1), Xerror_msg);
  EXPECT_TRUE(overlaps.rows.empty());
}

TEST(OverlapMatrix, StopsBeforeOutgrowingTheMemoryBudget) {
  NodeCliqueMap node_cliques;
  node_cliques.memory_budget = 400;
  OverlapMatrix overlaps;
  std::uint32_t id = 0;
  try {
    for (; id < 100; ++id) {
      Add_clique_overlaps(overlaps, node_cliques, Clique{1, 2, 3 + id}, id);
    }
    FAIL() << "the budget was never reached";
  } catch (const Xerror_msg& error) {
    EXPECT_EQ(std::string(error.what()),
              "ERROR: the clique overlap matrix needs more memory than this machine has (" +
                  std::to_string(id) +
                  " cliques so far); run at one k with -k, or with a time limit -t.");
  }
  ASSERT_GT(id, 0u);
  EXPECT_EQ(overlaps.rows.size(), id);
  // Nothing of the refused clique stays behind: with room again it is counted correctly.
  node_cliques.memory_budget = Overlap_memory_budget();
  Add_clique_overlaps(overlaps, node_cliques, Clique{1, 2, 3 + id}, id);
  EXPECT_EQ(overlaps.rows.back().front(), (Overlap{0, 2}));
  EXPECT_EQ(overlaps.rows.back().back(), (Overlap{id, 3}));
  EXPECT_EQ(overlaps.rows.back().size(), id + std::size_t{1});
}

TEST(OverlapMatrix, BudgetIsHalfThePhysicalMemory) {
  const auto physical = static_cast<std::size_t>(sysconf(_SC_PHYS_PAGES)) *
                        static_cast<std::size_t>(sysconf(_SC_PAGE_SIZE));
  EXPECT_LE(Overlap_memory_budget(), physical / 2);
  EXPECT_GE(Overlap_memory_budget() + static_cast<std::size_t>(sysconf(_SC_PAGE_SIZE)),
            physical / 2);
}

TEST(OverlapMatrix, EntriesAreLookedUpAndSetInOrder) {
  OverlapRow row = Row({{1, 4}, {5, 2}});
  EXPECT_EQ(Overlap_of(row, 5), 2u);
  EXPECT_EQ(Overlap_of(row, 3), 0u);
  EXPECT_EQ(Overlap_of(OverlapRow{}, 0), 0u);
  Set_overlap(row, 3, 7);
  Set_overlap(row, 0, 1);
  Set_overlap(row, 9, 9);
  Set_overlap(row, 5, 6);
  EXPECT_EQ(row, Row({{0, 1}, {1, 4}, {3, 7}, {5, 6}, {9, 9}}));
}

TEST(OverlapMatrix, MaxCliqueSizeOfTheList) {
  EXPECT_EQ(Max_clique_size_in_cl_vec(CliqueList{}), 0u);
  EXPECT_EQ(Max_clique_size_in_cl_vec(CliqueList{{1, 2, 3}, {1, 2, 3, 4, 5}, {2, 3, 4, 5}}), 5u);
  EXPECT_EQ(Max_clique_size_in_cl_vec(CliqueList{{}, {4}}), 1u);
}

}  // namespace
}  // namespace kcp
