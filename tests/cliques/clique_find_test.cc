#include "cliques/clique_find.h"

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

using namespace Clique_find_sub_routines;

using testing::Cout_capture;
using testing::Links;
using testing::Row;

struct Search_result {
  CliqueList cliques;
  OverlapMatrix overlaps;
  VtxMap vertices;
  std::string printed;
};

Search_result Search(const IndexLinkMap& links, const std::uint32_t& min_shared = 1) {
  Search_result result;
  Vtx_map_from_link_map(result.vertices, links);
  result.overlaps.min_shared = min_shared;
  Cout_capture capture;
  Clique_find(result.cliques, result.overlaps, result.vertices);
  result.printed = capture.text();
  return result;
}

std::vector<NodeSet> Sets(std::initializer_list<NodeSet> sets) {
  return sets;
}

TEST(CliqueFind, SmallGraphsGiveTheirCliquesInRegistrationOrder) {
  // Node 9 (degree 6, the smallest) lies in {3,4,9}, {1,2,9}, {2,5,6,9}; pendants on its
  // neighbours make sure 9 is searched first, so its cliques come in depth-first order.
  IndexLinkMap around_nine = Links(
      {{9, 1}, {9, 2}, {9, 3}, {9, 4}, {9, 5}, {9, 6}, {3, 4}, {1, 2}, {2, 5}, {2, 6}, {5, 6}});
  NodeIndex pendant = 20;
  for (NodeIndex n = 1; n <= 6; ++n) {
    for (int k = 0; k < 6; ++k) around_nine[{n, pendant++}] = 1.0;
  }
  IndexLinkMap complete;
  for (NodeIndex i = 1; i <= 5; ++i) {
    for (NodeIndex j = i + 1; j <= 5; ++j) complete[{i, j}] = 1.0;
  }
  const struct {
    const char* name;
    IndexLinkMap links;
    CliqueList expected;
  } cases[] = {
      {"empty", Links({}), {}},
      {"one link", Links({{1, 2}}), {}},
      {"path", Links({{1, 2}, {2, 3}, {3, 4}, {4, 5}}), {}},
      {"star", Links({{1, 2}, {1, 3}, {1, 4}, {1, 5}}), {}},
      {"square", Links({{1, 2}, {2, 3}, {3, 4}, {1, 4}}), {}},
      // Degrees 2, 2, 4, 2, 2: order 1, 2, 4, 5, 3.
      {"two triangles sharing 3",
       Links({{1, 2}, {1, 3}, {2, 3}, {3, 4}, {3, 5}, {4, 5}}),
       {{1, 2, 3}, {3, 4, 5}}},
      {"complete on five", complete, {{1, 2, 3, 4, 5}}},
      // 1-2-3 carry a pendant each (degree 3), 4-5-6 do not: 4-5-6 comes first.
      {"low degree first",
       Links({{1, 2}, {1, 3}, {2, 3}, {1, 7}, {2, 8}, {3, 9}, {4, 5}, {4, 6}, {5, 6}}),
       {{4, 5, 6}, {1, 2, 3}}},
      // 2's neighbours 1 and 3 are not linked; the triangle 3-4-5 is found from 4.
      {"unlinked neighbours", Links({{1, 2}, {2, 3}, {3, 4}, {3, 5}, {4, 5}}), {{3, 4, 5}}},
      {"depth first around 9", around_nine, {{1, 2, 9}, {2, 5, 6, 9}, {3, 4, 9}}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    const Search_result r = Search(c.links);
    EXPECT_EQ(r.cliques, c.expected);
    EXPECT_EQ(r.overlaps.rows.size(), c.expected.size());
  }
}

TEST(CliqueFind, ClearsEarlierOutputsKeepsMinSharedAndTheCallersAdjacency) {
  Search_result r;
  Vtx_map_from_link_map(r.vertices, Links({{1, 2}, {1, 3}, {2, 3}}));
  r.cliques = {{7, 8, 9}, {4, 5, 6}};
  r.overlaps.rows = {Row({{0, 3}}), Row({{1, 3}})};
  r.overlaps.min_shared = 4;
  {
    Cout_capture capture;
    Clique_find(r.cliques, r.overlaps, r.vertices);
  }
  EXPECT_EQ(r.cliques, (CliqueList{{1, 2, 3}}));
  EXPECT_EQ(r.overlaps.rows, (std::vector<OverlapRow>{Row({{0, 3}})}));
  EXPECT_EQ(r.overlaps.min_shared, 4u);
  EXPECT_EQ(testing::Inc_neighs_of(r.cliques, 1), Sets({{2, 3}}));
  EXPECT_EQ(testing::Inc_neighs_of(r.cliques, 2), Sets({{1, 3}}));
  EXPECT_EQ(testing::Inc_neighs_of(r.cliques, 3), Sets({{1, 2}}));
  EXPECT_EQ(r.vertices.at(1).Neighs_c(), (NodeSet{2, 3}));
}

TEST(CliqueFind, NumberingFollowsNodeOrderThenDepthFirstOrder) {
  // Cliques {1,2,3,4}, {4,5,6}, {1,6,7}, {1,4,6}. Degrees: 1:5 2:3 3:3 4:5 5:2 6:4 7:2, so
  // the nodes go 5, 7, 2, 3, 6, 1, 4: node 5 finds {4,5,6}, node 7 {1,6,7}, node 2 {1,2,3,4},
  // node 3 nothing new, node 6 {1,4,6}.
  const IndexLinkMap links =
      testing::Parse_links("1-2 1-3 1-4 2-3 2-4 3-4 4-5 4-6 5-6 6-7 1-7 1-6");
  const Search_result r = Search(links);
  EXPECT_EQ(r.cliques, (CliqueList{{4, 5, 6}, {1, 6, 7}, {1, 2, 3, 4}, {1, 4, 6}}));
  EXPECT_EQ(r.overlaps.rows, (std::vector<OverlapRow>{
                                 Row({{0, 3}, {1, 1}, {2, 1}, {3, 2}}),
                                 Row({{0, 1}, {1, 3}, {2, 1}, {3, 2}}),
                                 Row({{0, 1}, {1, 1}, {2, 4}, {3, 2}}),
                                 Row({{0, 2}, {1, 2}, {2, 2}, {3, 3}}),
                             }));
  // Each member keeps one set per clique holding it, in the order of registration.
  EXPECT_EQ(testing::Inc_neighs_of(r.cliques, 1), Sets({{6, 7}, {2, 3, 4}, {4, 6}}));
  EXPECT_EQ(testing::Inc_neighs_of(r.cliques, 4), Sets({{5, 6}, {1, 2, 3}, {1, 6}}));
  EXPECT_EQ(testing::Inc_neighs_of(r.cliques, 6), Sets({{4, 5}, {1, 7}, {1, 4}}));
  EXPECT_EQ(testing::Inc_neighs_of(r.cliques, 2), Sets({{1, 3, 4}}));
  EXPECT_EQ(testing::Inc_neighs_of(r.cliques, 5), Sets({{4, 6}}));

  // A pair sharing fewer nodes than min_shared is left out; the diagonal stays.
  EXPECT_EQ(Search(links, 2).overlaps.rows, (std::vector<OverlapRow>{
                                                Row({{0, 3}, {3, 2}}),
                                                Row({{1, 3}, {3, 2}}),
                                                Row({{2, 4}, {3, 2}}),
                                                Row({{0, 2}, {1, 2}, {2, 2}, {3, 3}}),
                                            }));
}

TEST(CliqueFind, PrintsSortingLinesABlockBeforeEveryNodeAndTheTotal) {
  const std::string header = " Locating cliques:";
  EXPECT_EQ(Search(Links({{1, 2}, {1, 3}, {2, 3}})).printed,
            " Sorting the nodes...\n done.\n" +
                testing::Block(header, " 3 of 3 nodes to do (0.00% done)") +
                testing::Block(header, " 2 of 3 nodes to do (33.33% done)") +
                testing::Block(header, " 1 of 3 nodes to do (66.67% done)") + std::string(28, '_') +
                "\n Altogether 1 cliques found.\n");
  EXPECT_EQ(Search(Links({})).printed, " Sorting the nodes...\n done.\n" + std::string(28, '_') +
                                           "\n Altogether 0 cliques found.\n");
}

TEST(CliqueFind, AgreesWithBruteForceOnRandomGraphs) {
  const double densities[] = {0.15, 0.3, 0.5, 0.7, 0.9};
  std::uint32_t seed = 1;
  for (const double p : densities) {
    for (int round = 0; round < 60; ++round, ++seed) {
      const std::uint32_t n = 4 + seed % 11;
      const IndexLinkMap links = testing::Random_undirected_links(n, p, seed);
      const Search_result r = Search(links);
      const std::set<NodeList> found(r.cliques.begin(), r.cliques.end());
      ASSERT_EQ(found.size(), r.cliques.size()) << "a clique was listed twice, seed " << seed;
      ASSERT_EQ(found, testing::Brute_maximal_cliques(links))
          << "n " << n << " p " << p << " seed " << seed;
      // The matrix holds the size on the diagonal and every non-empty intersection on both
      // sides, and nothing else.
      ASSERT_EQ(r.overlaps.rows.size(), r.cliques.size());
      for (std::size_t i = 0; i < r.cliques.size(); ++i) {
        OverlapRow expected;
        for (std::size_t j = 0; j < r.cliques.size(); ++j) {
          NodeList shared;
          std::set_intersection(r.cliques[i].begin(), r.cliques[i].end(), r.cliques[j].begin(),
                                r.cliques[j].end(), std::back_inserter(shared));
          if (!shared.empty()) {
            expected.push_back(
                Overlap{static_cast<std::uint32_t>(j), static_cast<std::uint32_t>(shared.size())});
          }
        }
        ASSERT_EQ(r.overlaps.rows[i], expected) << "row " << i << " seed " << seed;
      }
    }
  }
}

TEST(CliqueFind, NumbersTheCliquesInThePlainWalkOrder) {
  // Sparse, dense and near-complete graphs, and near-cliques planted in sparse ones.
  std::uint32_t seed = 500;
  for (const double p : {0.2, 0.5, 0.8, 0.95}) {
    for (int round = 0; round < 25; ++round, ++seed) {
      const IndexLinkMap links = testing::Random_undirected_links(8 + seed % 13, p, seed);
      ASSERT_EQ(Search(links).cliques, testing::Plain_clique_walk(links)) << "seed " << seed;
    }
  }
  for (int round = 0; round < 80; ++round, ++seed) {
    const IndexLinkMap links =
        testing::Planted_block_links(20 + seed % 15, 10 + seed % 8, 0.9, 0.15, seed, false);
    ASSERT_EQ(Search(links).cliques, testing::Plain_clique_walk(links)) << "seed " << seed;
  }
}

// The search assembled from its sub-routines: the node loop and the candidate loop of each node,
// with Recurrent_inc_investigator extending every partial clique. X is worked out here from the
// whole graph: the nodes outside C, x and P linked to every member of C.
CliqueList Search_with_sub_routines(const IndexLinkMap& links) {
  VtxMap vertices;
  Vtx_map_from_link_map(vertices, links);
  VtxMap working = vertices;
  NodeOrder order;
  Sort_Vtx_map(order, working);
  CliqueList cliques;
  OverlapMatrix overlaps;
  NodeCliqueMap node_cliques;
  const auto outside_linked = [&](const NodeList& C, const NodeIndex& x, const NodeList& P) {
    NodeList X;
    for (const auto& [z, record] : vertices) {
      if (z == x || std::binary_search(C.begin(), C.end(), z) ||
          std::binary_search(P.begin(), P.end(), z)) {
        continue;
      }
      const bool linked = std::all_of(
          C.begin(), C.end(), [&](const NodeIndex& c) { return record.Neighs_c().count(c) != 0; });
      if (linked) X.push_back(z);
    }
    return X;
  };
  for (const NodeIndex v : order) {
    KnownCliques known = Known_cliques_of(vertices.at(v));
    const NodeSet N = working.at(v).Neighs();
    NodeSet P = N;
    while (P.size() > 1) {
      const NodeIndex w = *P.begin();
      const NodeSet C{v, w};
      NodeSet T = Tighten(working.at(w).Neighs_c(), P, C);
      P.erase(w);
      NodeSet reach = T;
      reach.insert(C.begin(), C.end());
      if (!Mehet_tovabb(known, NodeList(reach.begin(), reach.end()))) continue;
      while (!T.empty()) {
        const NodeIndex x = *T.begin();
        T.erase(T.begin());
        const NodeList C_list(C.begin(), C.end());
        const NodeList P_list(T.begin(), T.end());
        Recurrent_inc_investigator(x, working, vertices, C_list, P_list,
                                   outside_linked(C_list, x, P_list), cliques, known, v, overlaps,
                                   node_cliques);
      }
    }
    for (const NodeIndex n : N) {
      working.at(v).Remove_neigh(n);
      working.at(n).Remove_neigh(v);
    }
    working.erase(v);
  }
  return cliques;
}

TEST(CliqueFind, SubRoutinesRegisterInThePlainWalkOrder) {
  std::uint32_t seed = 1500;
  for (const double p : {0.3, 0.6, 0.9}) {
    for (int round = 0; round < 20; ++round, ++seed) {
      const IndexLinkMap links = testing::Random_undirected_links(8 + seed % 9, p, seed);
      ASSERT_EQ(Search_with_sub_routines(links), testing::Plain_clique_walk(links))
          << "seed " << seed;
    }
  }
  for (int round = 0; round < 40; ++round, ++seed) {
    const IndexLinkMap links =
        testing::Planted_block_links(18 + seed % 10, 10 + seed % 6, 0.9, 0.15, seed, false);
    ASSERT_EQ(Search_with_sub_routines(links), testing::Plain_clique_walk(links))
        << "seed " << seed;
  }
}

TEST(CliqueFind, LargeCliqueRunsWithoutDeepRecursion) {
  // 2,001 nodes all linked with each other, plus a triangle hanging off node 1 through 9001.
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
    Cout_capture capture;
    Clique_find(cliques, overlaps, vertices);
  }
  ASSERT_EQ(cliques.size(), 2u);
  EXPECT_EQ(cliques[0], (Clique{1, 9001, 9002}));
  ASSERT_EQ(cliques[1].size(), n);
  EXPECT_EQ(cliques[1].front(), 1u);
  EXPECT_EQ(cliques[1].back(), n);
  EXPECT_EQ(overlaps.rows[1], Row({{0, 1}, {1, n}}));
  EXPECT_EQ(testing::Inc_neighs_of(cliques, 1).size(), 2u);
  EXPECT_EQ(testing::Inc_neighs_of(cliques, 1000).size(), 1u);
}

TEST(CliqueFind, TightenKeepsCommonCandidatesOutsideC) {
  EXPECT_EQ(Tighten(NodeSet{1, 2, 3, 5, 8}, NodeSet{2, 3, 4, 5, 9}, NodeSet{3}), (NodeSet{2, 5}));
  EXPECT_EQ(Tighten(NodeSet{1, 2}, NodeSet{}, NodeSet{}), NodeSet{});
  const NodeList B{2, 3, 4, 5, 9};
  const NodeList C{3};
  EXPECT_EQ(Tighten(NodeSet{1, 2, 3, 5, 8}, B, C), (NodeList{2, 5}));
  // A long neighbour set against few candidates.
  NodeSet many;
  for (NodeIndex i = 1; i <= 200; i += 2) many.insert(i);
  const NodeList few{3, 4, 101, 199, 300};
  const NodeList none;
  EXPECT_EQ(Tighten(many, few, none), (NodeList{3, 101, 199}));
}

TEST(CliqueFind, MehetTovabbIsFalseOnlyForSubsetsOfAKnownSet) {
  const std::vector<NodeSet> sets{{1, 2, 3}, {2, 4, 6, 8}};
  EXPECT_FALSE(Mehet_tovabb(sets, NodeSet{1, 2, 3}));
  EXPECT_FALSE(Mehet_tovabb(sets, NodeSet{4, 8}));
  EXPECT_FALSE(Mehet_tovabb(sets, NodeSet{}));
  EXPECT_TRUE(Mehet_tovabb(sets, NodeSet{1, 4}));
  EXPECT_TRUE(Mehet_tovabb(sets, NodeSet{1, 2, 3, 4}));
  EXPECT_TRUE(Mehet_tovabb(std::vector<NodeSet>{}, NodeSet{}));

  KnownCliques lists{{1, 2, 3}, {2, 4, 6, 8}};
  for (NodeIndex i = 100; i < 200; ++i) lists[1].push_back(i);
  EXPECT_FALSE(Mehet_tovabb(lists, NodeList{2, 8, 150}));
  EXPECT_TRUE(Mehet_tovabb(lists, NodeList{2, 8, 250}));
  EXPECT_FALSE(Mehet_tovabb(lists, NodeList{4, 6}, NodeList{2, 199}));
  EXPECT_TRUE(Mehet_tovabb(lists, NodeList{1, 2}, NodeList{4}));
  EXPECT_TRUE(Mehet_tovabb(KnownCliques{}, NodeList{}));
}

TEST(CliqueFind, KnownCliquesPutTheNodeBackIntoEachSet) {
  Vtx record(5, NodeSet{1, 2, 7, 9});
  record.Add_inc_neigh(0, 7);
  record.Add_inc_neigh(0, 9);
  record.Add_inc_neigh(1, 1);
  record.Add_inc_neigh(1, 7);
  record.Add_inc_neigh(2, 1);
  record.Add_inc_neigh(2, 2);
  EXPECT_EQ(Known_cliques_of(record), (KnownCliques{{5, 7, 9}, {1, 5, 7}, {1, 2, 5}}));
}

TEST(CliqueFind, AdjustIncNeighsRefusesAMissingMember) {
  VtxMap vertices;
  vertices.emplace(1, Vtx(1, NodeSet{2}));
  try {
    Adjust_inc_neighs(vertices, NodeList{1, 2});
    FAIL() << "no error for a member without a record";
  } catch (const Xerror_msg& error) {
    EXPECT_EQ(std::string(error.what()),
              "ERROR: Adjust_inc_neighs() : clique member 2 has no vertex record.");
  }
}

}  // namespace
}  // namespace kcp
