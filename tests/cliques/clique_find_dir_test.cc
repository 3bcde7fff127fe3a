#include "cliques/clique_find_dir.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>
#include <iterator>
#include <set>
#include <string>
#include <utility>

#include "core/xerror_msg.h"
#include "graph/vertex_map.h"
#include "tests/cli/cout_capture.h"
#include "tests/support/brute_cliques.h"
#include "tests/support/random_graph.h"
#include "tests/support/search_helpers.h"

namespace kcp {
namespace {

using namespace Clique_find_dir_sub_routines;

using testing::Cout_capture;
using testing::Links;

// 1, 2, 3 linked both ways; 2->4, 4->3, 1->4 make {1,2,3,4} (order 1 2 4 3); 2->5, 5->1 make
// {1,2,5}. Pendants 6..9 lift nodes 3, 4, 5 to the degree of 1, so node 1 is searched first.
// Its search finds {1,2,3} (sequence 3 2 1) first, then {1,2,5} (2 5 1), then {1,2,3,4}
// (2 1 4 3), which drops {1,2,3} and is stored behind {1,2,5}.
IndexLinkMap Late_larger_find() {
  return testing::Parse_links("1-2 2-1 1-3 3-1 2-3 3-2 2-4 4-3 1-4 2-5 5-1 3-6 4-7 5-8 5-9");
}

struct Search_result {
  CliqueList cliques;
  OverlapMatrix overlaps;
  VtxdMap vertices;
  std::string printed;
};

Search_result Search(const IndexLinkMap& links) {
  Search_result result;
  Dir_vtx_map_from_link_map(result.vertices, links);
  Cout_capture capture;
  Clique_find_dir(result.cliques, result.overlaps, result.vertices);
  result.printed = capture.text();
  return result;
}

TEST(CliqueFindDir, TransitiveTriangleIsACliqueACycleIsNot) {
  const Search_result triangle = Search(Links({{1, 2}, {2, 3}, {1, 3}}));
  EXPECT_EQ(triangle.cliques, (CliqueList{{1, 2, 3}}));
  EXPECT_EQ(triangle.overlaps.rows, (std::vector<OverlapRow>{{Overlap{0, 3}}}));

  const Search_result cycle = Search(Links({{1, 2}, {2, 3}, {3, 1}}));
  EXPECT_TRUE(cycle.cliques.empty());
  EXPECT_TRUE(cycle.overlaps.rows.empty());
}

TEST(CliqueFindDir, BothWaysLinksAndTransitiveOrdersInEitherDirectionGiveOneClique) {
  const Search_result both = Search(Links({{1, 2}, {2, 1}, {1, 3}, {3, 1}, {2, 3}, {3, 2}}));
  EXPECT_EQ(both.cliques, (CliqueList{{1, 2, 3}}));
  EXPECT_EQ(Search(Links({{1, 2}, {1, 3}, {1, 4}, {2, 3}, {2, 4}, {3, 4}})).cliques,
            (CliqueList{{1, 2, 3, 4}}));
  EXPECT_EQ(Search(Links({{2, 1}, {3, 1}, {4, 1}, {3, 2}, {4, 2}, {4, 3}})).cliques,
            (CliqueList{{1, 2, 3, 4}}));
}

TEST(CliqueFindDir, NoDirectedTriangleReportsZeroDirectedCliques) {
  const Search_result r = Search(Links({{1, 2}, {2, 3}, {3, 1}, {3, 4}}));
  EXPECT_TRUE(r.cliques.empty());
  const std::string bar(23, '_');
  EXPECT_EQ(r.printed, bar + "\n Locating dir. cliques:\n 4 of 4 nodes to do (0.00% done)\n" + bar +
                           "\n Locating dir. cliques:\n 3 of 4 nodes to do (25.00% done)\n" + bar +
                           "\n Locating dir. cliques:\n 2 of 4 nodes to do (50.00% done)\n" + bar +
                           "\n Locating dir. cliques:\n 1 of 4 nodes to do (75.00% done)\n" +
                           std::string(37, '_') + "\n Altogether 0 directed cliques found.\n");
}

TEST(CliqueFindDir, LaterLargerFindTakesANewKeyBehindTheOthers) {
  const Search_result r = Search(Late_larger_find());
  EXPECT_EQ(r.cliques, (CliqueList{{1, 2, 5}, {1, 2, 3, 4}}));
  EXPECT_EQ(r.overlaps.rows, (std::vector<OverlapRow>{{Overlap{0, 3}, Overlap{1, 2}},
                                                      {Overlap{0, 2}, Overlap{1, 4}}}));
}

TEST(CliqueFindDir, AgreesWithBruteForceOnRandomGraphs) {
  const double densities[] = {0.2, 0.35, 0.5, 0.7, 0.9};
  std::uint32_t seed = 1000;
  for (const double p : densities) {
    for (int round = 0; round < 60; ++round, ++seed) {
      const std::uint32_t n = 4 + seed % 9;
      const IndexLinkMap links = testing::Random_directed_links(n, p, seed);
      const Search_result r = Search(links);
      const std::set<NodeList> found(r.cliques.begin(), r.cliques.end());
      ASSERT_EQ(found.size(), r.cliques.size()) << "a clique was listed twice, seed " << seed;
      ASSERT_EQ(found, testing::Brute_directed_cliques(links))
          << "n " << n << " p " << p << " seed " << seed;
      ASSERT_EQ(r.overlaps.rows.size(), r.cliques.size());
      for (std::size_t i = 0; i < r.cliques.size(); ++i) {
        for (std::size_t j = 0; j < r.cliques.size(); ++j) {
          NodeList shared;
          std::set_intersection(r.cliques[i].begin(), r.cliques[i].end(), r.cliques[j].begin(),
                                r.cliques[j].end(), std::back_inserter(shared));
          ASSERT_EQ(Overlap_of(r.overlaps.rows[i], static_cast<std::uint32_t>(j)), shared.size())
              << "cliques " << i << " and " << j << ", seed " << seed;
        }
      }
    }
  }
}

TEST(CliqueFindDir, NumbersTheCliquesInThePlainWalkOrder) {
  std::uint32_t seed = 3000;
  for (const double p : {0.3, 0.6, 0.85}) {
    for (int round = 0; round < 25; ++round, ++seed) {
      const IndexLinkMap links = testing::Random_directed_links(6 + seed % 5, p, seed);
      ASSERT_EQ(Search(links).cliques, testing::Plain_directed_clique_walk(links))
          << "seed " << seed;
    }
  }
  for (int round = 0; round < 40; ++round, ++seed) {
    const IndexLinkMap links =
        testing::Planted_block_links(14 + seed % 6, 7 + seed % 3, 0.85, 0.1, seed, true);
    ASSERT_EQ(Search(links).cliques, testing::Plain_directed_clique_walk(links)) << "seed " << seed;
  }
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

TEST(CliqueFindDir, CutShortWalksRegisterTheSameCliquesInTheSameOrder) {
  EXPECT_EQ(Search_by_targets(Late_larger_find()), (CliqueList{{1, 2, 5}, {1, 2, 3, 4}}));
  std::uint32_t seed = 7000;
  for (const double p : {0.3, 0.6, 0.85, 1.0}) {
    for (int round = 0; round < 40; ++round, ++seed) {
      const IndexLinkMap links = testing::Random_directed_links(5 + seed % 7, p, seed);
      ASSERT_EQ(Search_by_targets(links), testing::Plain_directed_clique_walk(links))
          << "seed " << seed;
    }
  }
  for (int round = 0; round < 60; ++round, ++seed) {
    const IndexLinkMap links =
        testing::Planted_block_links(14 + seed % 6, 7 + seed % 3, 0.85, 0.1, seed, true);
    ASSERT_EQ(Search_by_targets(links), testing::Plain_directed_clique_walk(links))
        << "seed " << seed;
  }
}

TEST(CliqueFindDir, CliquesANodeMustEndWithAreTheMaximalOnesOfItsUnprocessedPart) {
  std::uint32_t seed = 9000;
  for (int round = 0; round < 80; ++round, ++seed) {
    const IndexLinkMap links = testing::Random_directed_links(5 + seed % 8, 0.6, seed);
    VtxdMap vertices;
    Dir_vtx_map_from_link_map(vertices, links);
    if (vertices.empty()) continue;
    // Take away the smallest half of the nodes as if processed: v's cliques are then the maximal
    // ones of the whole graph holding v and none of them.
    VtxdMap working = vertices;
    const NodeIndex v = std::prev(vertices.end())->first;
    std::set<NodeIndex> gone;
    for (const auto& [node, record] : vertices) {
      if (node != v && node % 2 == 0) gone.insert(node);
    }
    for (const NodeIndex g : gone) working.erase(g);
    CliqueList expected;
    for (const NodeList& clique : testing::Brute_directed_cliques(links)) {
      const bool holds_v = std::find(clique.begin(), clique.end(), v) != clique.end();
      const bool touches_gone = std::any_of(clique.begin(), clique.end(),
                                            [&](const NodeIndex& m) { return gone.count(m) != 0; });
      if (holds_v && !touches_gone) expected.push_back(clique);
    }
    ASSERT_EQ(Maximal_dir_cliques_of(v, working, vertices), expected) << "seed " << seed;
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
    Cout_capture capture;
    Clique_find_dir(cliques, overlaps, vertices);
  }
  ASSERT_EQ(cliques.size(), 1u);
  EXPECT_EQ(cliques[0].size(), n);
}

TEST(CliqueFindDir, TightenDirSplitsTheGapAroundTheNewMember) {
  // Node 5: in-neighbours {1, 2}, out-neighbours {3, 4}; 6 is not linked to it.
  VtxdMap working;
  Dir_vtx_map_from_link_map(working, Links({{1, 5}, {2, 5}, {5, 3}, {5, 4}, {6, 1}}));
  const GapList gaps{Gap{7, {1, 3, 6}}, Gap{8, {1, 2, 3, 4}}, Gap{7, {2, 4}}};
  EXPECT_EQ(Tighten_dir(gaps, gaps.begin() + 1, 5, working),
            (GapList{Gap{7, {1}}, Gap{5, {1, 2}}, Gap{8, {3, 4}}, Gap{7, {4}}}));
  EXPECT_EQ(Tighten_dir(gaps, gaps.begin(), 5, working),
            (GapList{Gap{5, {1}}, Gap{7, {3}}, Gap{8, {3, 4}}, Gap{7, {4}}}));
  EXPECT_THROW(Tighten_dir(gaps, gaps.end(), 5, working), Xerror_msg);
}

TEST(CliqueFindDir, MergeAndNoMoreMemberReadTheWholeList) {
  const GapList gaps{Gap{4, {9, 2}}, Gap{1, {}}, Gap{4, {2, 7}}};
  NodeList S{100};
  Merge_already_full_and_possibs(S, gaps);
  EXPECT_EQ(S, (NodeList{1, 2, 4, 7, 9}));
  EXPECT_FALSE(No_more_possible_member(gaps));
  EXPECT_TRUE(No_more_possible_member(GapList{Gap{4, {}}, Gap{1, {}}, Gap{4, {}}}));
  EXPECT_TRUE(No_more_possible_member(GapList{}));

  Gap gap{3, {2, 5}};
  EXPECT_EQ(Take_first_candidate(gap), 2u);
  EXPECT_EQ(gap.candidates, (NodeList{5}));
}

TEST(CliqueFindDir, RecordingAFindDropsFoundSubsetsAndTakesTheNextKey) {
  FoundCliques found{{1, {1, 2, 3}}, {2, {1, 5, 6}}, {3, {2, 3}}};
  KnownCliques known;
  // Sequence 3 1 2 (the last gap repeats the first member).
  Iktatjuk_az_uj_vert_clt(GapList{Gap{3, {}}, Gap{1, {}}, Gap{2, {}}, Gap{4, {}}, Gap{3, {}}},
                          found, known);
  EXPECT_EQ(found, (FoundCliques{{2, {1, 5, 6}}, {4, {1, 2, 3, 4}}}));
  EXPECT_EQ(known, (KnownCliques{{1, 2, 3, 4}}));

  FoundCliques empty;
  Iktatjuk_az_uj_vert_clt(GapList{Gap{9, {}}, Gap{8, {}}, Gap{7, {}}, Gap{9, {}}}, empty, known);
  EXPECT_EQ(empty, (FoundCliques{{1, {7, 8, 9}}}));

  // The largest key is erased as a subset, and the new entry still comes after it.
  FoundCliques last_dropped{{1, {5, 6, 7}}, {2, {1, 2, 3}}};
  Iktatjuk_az_uj_vert_clt(GapList{Gap{1, {}}, Gap{2, {}}, Gap{3, {}}, Gap{4, {}}, Gap{1, {}}},
                          last_dropped, known);
  EXPECT_EQ(last_dropped, (FoundCliques{{1, {5, 6, 7}}, {3, {1, 2, 3, 4}}}));
}

}  // namespace
}  // namespace kcp
