#include "cliques/overlap_matrix.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <string>

#include "core/xerror_msg.h"

namespace kcp {
namespace {

TEST(OverlapMatrix, RefusesACliqueOutOfTurn) {
  NodeCliqueMap node_cliques;
  OverlapMatrix overlaps;
  EXPECT_THROW(Add_clique_overlaps(overlaps, node_cliques, Clique{1, 2, 3}, 1), Xerror_msg);
  EXPECT_TRUE(overlaps.rows.empty());
}

TEST(OverlapMatrix, StopsBeforeOutgrowingTheMemoryBudgetOfHalfThePhysicalMemory) {
  const auto page = static_cast<std::size_t>(sysconf(_SC_PAGE_SIZE));
  const auto physical = static_cast<std::size_t>(sysconf(_SC_PHYS_PAGES)) * page;
  EXPECT_LE(Overlap_memory_budget(), physical / 2);
  EXPECT_GE(Overlap_memory_budget() + page, physical / 2);
  NodeCliqueMap node_cliques;
  node_cliques.memory_budget = 400;
  OverlapMatrix overlaps;
  std::uint32_t id = 0;
  try {
    for (; id < 100; ++id) Add_clique_overlaps(overlaps, node_cliques, Clique{1, 2, 3 + id}, id);
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

}  // namespace
}  // namespace kcp
