#include "cliques/clique_find_dir.h"

#include <gtest/gtest.h>

#include <array>
#include <set>
#include <string>

#include "graph/vertex_map.h"
#include "tests/cli/cout_capture.h"
#include "tests/support/brute_cliques.h"
#include "tests/support/brute_communities.h"
#include "tests/support/random_graph.h"
#include "tests/support/search_helpers.h"

namespace kcp {
namespace {

using namespace Clique_find_dir_sub_routines;

CliqueList Search(const IndexLinkMap& links, OverlapMatrix& overlaps) {
  CliqueList cliques{{7, 8, 9}};
  overlaps.rows = {{Overlap{0, 3}}, {Overlap{1, 3}}};
  VtxdMap vertices;
  Dir_vtx_map_from_link_map(vertices, links);
  testing::CoutCapture quiet;
  Clique_find_dir(cliques, overlaps, vertices);
  return cliques;
}

// The per-node loop of the search, with the walk of every node cut short at once, so that every
// node takes its cliques from Maximal_dir_cliques_of, ordered by their first paths.
CliqueList Search_by_targets(const IndexLinkMap& links) {
  VtxdMap vertices;
  Dir_vtx_map_from_link_map(vertices, links);
  VtxdMap working = vertices;
  NodeOrder order;
  Sort_dir_vtx_map(order, vertices, "Neighs");
  CliqueList cliques;
  OverlapMatrix overlaps;
  NodeCliqueMap node_cliques;
  for (const NodeIndex v : order) {
    Main_inc_dir_investigator(v, working, vertices, cliques, overlaps, node_cliques, 0);
    working.erase(v);
  }
  return cliques;
}

TEST(CliqueFindDir, AgreesWithBruteForceOnRandomGraphs) {
  std::uint32_t seed = 1000;
  for (const double p : {0.2, 0.35, 0.5, 0.7, 0.9}) {
    for (int round = 0; round < 60; ++round, ++seed) {
      const IndexLinkMap links = testing::Random_directed_links(4 + seed % 9, p, seed);
      OverlapMatrix overlaps;
      const CliqueList cliques = Search(links, overlaps);
      const std::set<NodeList> found(cliques.begin(), cliques.end());
      ASSERT_EQ(found.size(), cliques.size()) << "a clique was listed twice, seed " << seed;
      ASSERT_EQ(found, testing::Brute_directed_cliques(links)) << "seed " << seed;
      ASSERT_EQ(overlaps.rows, testing::Brute_overlap_matrix(cliques, 1).rows) << "seed " << seed;
    }
  }
}

TEST(CliqueFindDir, CutShortWalksRegisterTheSameCliquesInTheSameOrder) {
  // 1, 2, 3 linked both ways; 2->4, 4->3, 1->4 make {1,2,3,4} (order 1 2 4 3); 2->5, 5->1 make
  // {1,2,5}; pendants 6..9 make node 1 the first searched. It finds {1,2,3}, then {1,2,5}, then
  // {1,2,3,4}, which drops {1,2,3} and takes the next key, behind {1,2,5}.
  const IndexLinkMap late_larger_find =
      testing::Links("1-2 2-1 1-3 3-1 2-3 3-2 2-4 4-3 1-4 2-5 5-1 3-6 4-7 5-8 5-9");
  OverlapMatrix overlaps;
  EXPECT_EQ(Search(late_larger_find, overlaps), (CliqueList{{1, 2, 5}, {1, 2, 3, 4}}));
  EXPECT_EQ(Search_by_targets(late_larger_find), (CliqueList{{1, 2, 5}, {1, 2, 3, 4}}));
  std::uint32_t seed = 3000;
  for (int round = 0; round < 220; ++round, ++seed) {
    const double p = round < 120 ? std::array{0.3, 0.6, 0.85, 1.0}[round / 30] : 0.0;
    const IndexLinkMap links =
        p > 0 ? testing::Random_directed_links(5 + seed % 7, p, seed)
              : testing::Planted_block_links(14 + seed % 6, 7 + seed % 3, 0.85, 0.1, seed, true);
    ASSERT_EQ(Search_by_targets(links), Search(links, overlaps)) << "seed " << seed;
  }
}

TEST(CliqueFindDir, LargeTransitiveCliqueRunsWithoutDeepRecursion) {
  const NodeIndex n = 2001;
  VtxdMap vertices;
  for (NodeIndex i = 1; i <= n; ++i) {
    NodeSet outs;
    NodeSet ins;
    for (NodeIndex j = 1; j < i; ++j) ins.insert(ins.end(), j);
    for (NodeIndex j = i + 1; j <= n; ++j) outs.insert(outs.end(), j);
    vertices.emplace(i, Vtxd(i, outs, ins));
  }
  CliqueList cliques;
  OverlapMatrix overlaps;
  {
    testing::CoutCapture quiet;
    Clique_find_dir(cliques, overlaps, vertices);
  }
  ASSERT_EQ(cliques.size(), 1u);
  EXPECT_EQ(cliques[0].size(), n);
}

}  // namespace
}  // namespace kcp
