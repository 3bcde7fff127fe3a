// The pivoting search must register exactly what the depth-first search registers, in the same
// order. The time-limited search with a limit never reached runs the depth-first search literally,
// so the two are compared clique by clique, with their overlaps.
#include "cliques/node_cliques.h"

#include <gtest/gtest.h>

#include <ctime>

#include "cliques/clique_find.h"
#include "cliques/clique_find_time.h"
#include "tests/cli/cout_capture.h"
#include "tests/support/random_graph.h"
#include "tests/support/search_helpers.h"

namespace kcp {
namespace {

void Expect_same_registration(const IndexLinkMap& links) {
  CliqueList fast;
  CliqueList literal;
  OverlapMatrix fast_overlaps;
  OverlapMatrix literal_overlaps;
  VtxMap vertices;
  VtxMap core;
  testing::CoutCapture quiet;
  Vtx_map_from_link_map(vertices, links);
  Clique_find(fast, fast_overlaps, vertices);
  Vtx_map_from_link_map(vertices, links);
  Clique_find_part_time(literal, literal_overlaps, vertices, core, 1e30,
                        [] { return std::clock_t{0}; });
  ASSERT_EQ(fast, literal);
  ASSERT_EQ(fast_overlaps.rows, literal_overlaps.rows);
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
  // Node 1 searched with every neighbour unprocessed: its cliques {1,2,5}, {1,3,4} and {1,2,3}
  // come as the paths 2-3, 2-5, 3-4.
  VtxMap vertices;
  Vtx_map_from_link_map(vertices,
                        testing::Links("1-2 1-3 1-4 1-5 2-3 2-5 3-4 2-6 3-6 4-6 5-6 4-7 5-7 6-7"));
  EXPECT_EQ(Node_cliques_in_order(1, vertices, vertices, CliqueList{}, NodeCliqueMap{}),
            (std::vector<NodeList>{{1, 2, 3}, {1, 2, 5}, {1, 3, 4}}));
}

}  // namespace
}  // namespace kcp
