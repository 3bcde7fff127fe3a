#include "cliques/clique_find.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "core/xerror_msg.h"
#include "graph/vertex_map.h"
#include "tests/cli/cout_capture.h"
#include "tests/support/brute_cliques.h"
#include "tests/support/brute_communities.h"
#include "tests/support/random_graph.h"

namespace kcp {
namespace {

TEST(CliqueFind, AgreesWithBruteForceOnRandomGraphs) {
  std::uint32_t seed = 1;
  for (const double p : {0.15, 0.3, 0.5, 0.7, 0.9}) {
    for (int round = 0; round < 60; ++round, ++seed) {
      SCOPED_TRACE("seed " + std::to_string(seed) + " p " + std::to_string(p));
      const IndexLinkMap links = testing::Random_undirected_links(4 + seed % 11, p, seed);
      // Stale outputs, which the search must clear (min_shared is kept).
      CliqueList cliques{{7, 8, 9}};
      OverlapMatrix overlaps{{{Overlap{0, 3}}, {Overlap{1, 3}}}, 1 + seed % 3};
      VtxMap vertices;
      Vtx_map_from_link_map(vertices, links);
      {
        testing::CoutCapture quiet;
        Clique_find(cliques, overlaps, vertices);
      }
      const std::set<NodeList> found(cliques.begin(), cliques.end());
      ASSERT_EQ(found.size(), cliques.size()) << "a clique was listed twice";
      ASSERT_EQ(found, testing::Brute_maximal_cliques(links));
      // The diagonal and every intersection of min_shared nodes or more, on both sides.
      ASSERT_EQ(overlaps.rows, testing::Brute_overlap_matrix(cliques, 1 + seed % 3).rows);
    }
  }
}

TEST(CliqueFind, LargeCliqueRunsWithoutDeepRecursion) {
  // 2,001 nodes all linked with each other, and a triangle hanging off node 1 through 9001.
  const NodeIndex n = 2001;
  VtxMap vertices;
  for (NodeIndex i = 1; i <= n; ++i) {
    NodeSet neighs;
    for (NodeIndex j = 1; j <= n; ++j) {
      if (j != i) neighs.insert(neighs.end(), j);
    }
    vertices.emplace(i, Vtx(i, neighs));
  }
  vertices.at(1).Add_neigh(9001);
  vertices.at(1).Add_neigh(9002);
  vertices.emplace(9001, Vtx(9001, NodeSet{1, 9002}));
  vertices.emplace(9002, Vtx(9002, NodeSet{1, 9001}));
  CliqueList cliques;
  OverlapMatrix overlaps;
  {
    testing::CoutCapture quiet;
    Clique_find(cliques, overlaps, vertices);
  }
  ASSERT_EQ(cliques.size(), 2u);
  EXPECT_EQ(cliques[0], (Clique{1, 9001, 9002}));
  EXPECT_EQ(cliques[1].size(), n);
  EXPECT_EQ(overlaps.rows[1], (OverlapRow{{0, 1}, {1, n}}));
}

TEST(CliqueFind, AdjustIncNeighsRefusesAMissingMember) {
  VtxMap vertices;
  vertices.emplace(1, Vtx(1, NodeSet{2}));
  try {
    Clique_find_sub_routines::Adjust_inc_neighs(vertices, NodeList{1, 2});
    FAIL() << "no error for a member without a record";
  } catch (const Xerror_msg& error) {
    EXPECT_STREQ(error.what(),
                 "ERROR: Adjust_inc_neighs() : clique member 2 has no vertex record.");
  }
}

}  // namespace
}  // namespace kcp
