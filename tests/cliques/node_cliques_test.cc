// The pivoting search must register exactly what the depth-first search registers, in the same
// order. The time-limited search with a limit never reached runs the depth-first search literally,
// so the two are compared clique by clique, with their overlaps and incremental neighbour sets.
#include "cliques/node_cliques.h"

#include <ctime>
#include <iostream>
#include <sstream>

#include "cliques/clique_find.h"
#include "cliques/clique_find_time.h"
#include "gtest/gtest.h"
#include "tests/support/random_graph.h"
#include "tests/support/search_helpers.h"

namespace kcp {
namespace {

struct Search_result {
  CliqueList cliques;
  OverlapMatrix overlaps;
  VtxMap vertices;
};

// Runs a search with standard output silenced.
template <typename Search>
Search_result Run(const IndexLinkMap& links, Search search) {
  Search_result result;
  result.overlaps.min_shared = 1;
  Vtx_map_from_link_map(result.vertices, links);
  std::ostringstream sink;
  auto* old = std::cout.rdbuf(sink.rdbuf());
  search(result);
  std::cout.rdbuf(old);
  return result;
}

void Expect_same_registration(const IndexLinkMap& links) {
  const Search_result fast =
      Run(links, [](Search_result& r) { Clique_find(r.cliques, r.overlaps, r.vertices); });
  const Search_result literal = Run(links, [](Search_result& r) {
    VtxMap core;
    Clique_find_part_time(r.cliques, r.overlaps, r.vertices, core, 1e30,
                          [] { return std::clock_t{0}; });
  });
  ASSERT_EQ(fast.cliques, literal.cliques);
  ASSERT_EQ(fast.overlaps.rows, literal.overlaps.rows);
}

TEST(NodeCliques, RegistersLikeTheDepthFirstSearchOnRandomGraphs) {
  std::uint32_t seed = 1;
  for (const double p : {0.2, 0.4, 0.6, 0.8, 0.95}) {
    // The literal search is exponential on dense graphs, so those stay small.
    for (std::uint32_t n : {6u, 12u, 18u, p < 0.7 ? 28u : 20u}) {
      for (int repeat = 0; repeat < 6; ++repeat) {
        SCOPED_TRACE(::testing::Message() << "n=" << n << " p=" << p << " seed=" << seed);
        Expect_same_registration(testing::Random_undirected_links(n, p, seed++));
      }
    }
  }
}

TEST(NodeCliques, RegistersLikeTheDepthFirstSearchAroundDenseBlocks) {
  for (std::uint32_t seed = 1; seed <= 20; ++seed) {
    SCOPED_TRACE(::testing::Message() << "seed=" << seed);
    Expect_same_registration(testing::Planted_block_links(40, 14, 0.9, 0.08, seed, false));
  }
}

TEST(NodeCliques, OrdersTheCliquesOfANodeByTheirOtherMembers) {
  // Node 1 searched with every neighbour unprocessed:
  // its cliques {1,2,5}, {1,3,4} and {1,2,3} come as the paths 2-3, 2-5, 3-4.
  const IndexLinkMap links{{{1, 2}, 0}, {{1, 3}, 0}, {{1, 4}, 0}, {{1, 5}, 0}, {{2, 3}, 0},
                           {{2, 5}, 0}, {{3, 4}, 0}, {{2, 6}, 0}, {{3, 6}, 0}, {{4, 6}, 0},
                           {{5, 6}, 0}, {{4, 7}, 0}, {{5, 7}, 0}, {{6, 7}, 0}};
  VtxMap vertices;
  Vtx_map_from_link_map(vertices, links);
  const std::vector<NodeList> expected{{1, 2, 3}, {1, 2, 5}, {1, 3, 4}};
  EXPECT_EQ(Node_cliques_in_order(1, vertices, vertices, CliqueList{}, NodeCliqueMap{}), expected);
}

}  // namespace
}  // namespace kcp
