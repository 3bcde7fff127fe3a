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
  EXPECT_EQ(r.vertices.at(1).Neighs_c(), (NodeSet{2, 3}));
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
      const std::uint32_t min_shared = 1 + seed % 3;
      const Search_result r = Search(links, min_shared);
      const std::set<NodeList> found(r.cliques.begin(), r.cliques.end());
      ASSERT_EQ(found.size(), r.cliques.size()) << "a clique was listed twice, seed " << seed;
      ASSERT_EQ(found, testing::Brute_maximal_cliques(links))
          << "n " << n << " p " << p << " seed " << seed;
      // The matrix holds the size on the diagonal and every intersection of min_shared nodes or
      // more on both sides, and nothing else.
      ASSERT_EQ(r.overlaps.rows.size(), r.cliques.size());
      for (std::size_t i = 0; i < r.cliques.size(); ++i) {
        OverlapRow expected;
        for (std::size_t j = 0; j < r.cliques.size(); ++j) {
          NodeList shared;
          std::set_intersection(r.cliques[i].begin(), r.cliques[i].end(), r.cliques[j].begin(),
                                r.cliques[j].end(), std::back_inserter(shared));
          if (i == j || shared.size() >= min_shared) {
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
