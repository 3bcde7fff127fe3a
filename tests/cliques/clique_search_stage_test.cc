#include "cliques/clique_search_stage.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>
#include <string>
#include <utility>

#include "cliques/clique_find.h"
#include "graph/vertex_map.h"
#include "tests/cli/cout_capture.h"
#include "tests/support/search_helpers.h"

namespace kcp {
namespace {

// A processor clock that gains one second at every reading, so every check exceeds 0.5 s.
ProcessorClock Racing_clock() {
  auto ticks = std::make_shared<std::clock_t>(0);
  return [ticks]() { return *ticks += 1000000; };
}

using testing::Links;
using testing::Tail;

struct Stage_result {
  CliqueList cliques{{42}};
  OverlapMatrix overlaps{{{{0, 1}}}, 1};
  VtxMap vertices;
  VtxdMap directed_vertices;
  std::uint32_t n_exact = 77;
  std::string printed;
};

Stage_result Run_stage(const IndexLinkMap& links, const bool& time_limited, const bool& directed,
                       const double& max_time, const ProcessorClock& clock = Processor_clock) {
  Stage_result r;
  if (directed) {
    Dir_vtx_map_from_link_map(r.directed_vertices, links);
  } else {
    Vtx_map_from_link_map(r.vertices, links);
  }
  testing::Cout_capture capture;
  Find_cliques(time_limited, directed, r.cliques, r.overlaps, r.directed_vertices, r.vertices,
               r.n_exact, max_time, clock);
  r.printed = capture.text();
  return r;
}

const std::string kApproximationStart = " Approximating cliques in the remaing core...";

TEST(CliqueSearchStage, GraphWithoutTrianglesGivesNothingInEveryMode) {
  const IndexLinkMap path = Links({{1, 2}, {2, 3}, {3, 4}});
  for (const bool time_limited : {false, true}) {
    for (const bool directed : {false, true}) {
      const Stage_result r = Run_stage(path, time_limited, directed, 100.0);
      EXPECT_TRUE(r.cliques.empty());
      EXPECT_TRUE(r.overlaps.rows.empty());
      EXPECT_EQ(r.overlaps.min_shared, 1u);
      EXPECT_EQ(r.n_exact, 0u);
      EXPECT_EQ(r.printed.find(kApproximationStart), std::string::npos);
    }
  }
}

TEST(CliqueSearchStage, ExactAndGenerousTimedSearchesAgree) {
  // Two complete graphs on four nodes sharing node 4, and a triangle hanging off node 7.
  const IndexLinkMap links =
      testing::Parse_links("1-2 1-3 1-4 2-3 2-4 3-4 4-5 4-6 4-7 5-6 5-7 6-7 7-8 7-9 8-9");
  const Stage_result exact = Run_stage(links, false, false, 0.0);
  EXPECT_EQ(exact.n_exact, 3u);
  EXPECT_EQ(exact.printed.find("max. allowed"), std::string::npos);
  // The real processor clock, with a limit no node of this graph can reach.
  const Stage_result timed = Run_stage(links, true, false, 1000.0);
  EXPECT_EQ(timed.cliques, exact.cliques);
  EXPECT_EQ(timed.overlaps.rows, exact.overlaps.rows);
  EXPECT_EQ(timed.n_exact, 3u);
  EXPECT_NE(timed.printed.find(" Locating cliques, max. allowed time/node=1000.000:\n"),
            std::string::npos);
  EXPECT_NE(timed.printed.find("\n Altogether 3 cliques found.\n no approximation was needed\n"),
            std::string::npos);
  EXPECT_EQ(timed.printed.find(kApproximationStart), std::string::npos);

  const Stage_result directed = Run_stage(links, false, true, 0.0);
  const Stage_result directed_timed = Run_stage(links, true, true, 1000.0);
  EXPECT_EQ(directed_timed.cliques, directed.cliques);
  EXPECT_EQ(directed_timed.n_exact, static_cast<std::uint32_t>(directed.cliques.size()));
  EXPECT_NE(directed_timed.printed.find(" found.\nno approximation was needed.\n"),
            std::string::npos);
}

// A complete graph on 1-4 that every attempt finds too slow, and the triangle 4-5-6, found from 5
// without any clock check.
const std::vector<OverlapRow> kCoreRows{
    {{0, 3}, {1, 1}, {2, 1}, {3, 1}},         {{0, 1}, {1, 3}, {2, 2}, {3, 2}, {4, 2}},
    {{0, 1}, {1, 2}, {2, 3}, {3, 2}, {4, 2}}, {{0, 1}, {1, 2}, {2, 2}, {3, 3}, {4, 2}},
    {{1, 2}, {2, 2}, {3, 2}, {4, 3}},
};
const CliqueList kCoreCliques{{4, 5, 6}, {2, 3, 4}, {1, 3, 4}, {1, 2, 4}, {1, 2, 3}};
const std::string kApproximationBlock = std::string(45, '_') + "\n" + kApproximationStart +
                                        "\n Clique approximation finished,\n number of   exact "
                                        "cliques=1,\n number of approx. cliques=4\n";

TEST(CliqueSearchStage, RemainingCoreIsApproximatedBehindTheExactCliques) {
  const Stage_result r =
      Run_stage(Links({{1, 2}, {1, 3}, {1, 4}, {2, 3}, {2, 4}, {3, 4}, {4, 5}, {4, 6}, {5, 6}}),
                true, false, 0.5, Racing_clock());
  EXPECT_EQ(r.cliques, kCoreCliques);
  EXPECT_EQ(r.n_exact, 1u);
  EXPECT_EQ(r.overlaps.rows, kCoreRows);
  const std::string tail =
      std::string(34, '_') + "\n Altogether 1 exact cliques found.\n" + kApproximationBlock;
  EXPECT_EQ(Tail(r.printed, tail.size()), tail);
  // The map keeps every node.
  EXPECT_EQ(r.vertices.size(), 6u);
}

TEST(CliqueSearchStage, DirectedRemainingCoreIsApproximatedToo) {
  IndexLinkMap links = Links({{4, 5}, {5, 6}, {4, 6}});
  testing::Both_ways(links, {1, 2, 3, 4});
  const Stage_result r = Run_stage(links, true, true, 0.5, Racing_clock());
  EXPECT_EQ(r.cliques, kCoreCliques);
  EXPECT_EQ(r.n_exact, 1u);
  EXPECT_EQ(r.overlaps.rows, kCoreRows);
  const std::string tail = std::string(59, '_') +
                           "\n The extraction of directed cliques has been found too slow \n at "
                           "all of the remaining nodes.\n" +
                           std::string(43, '_') +
                           "\n Altogether 1 exact directed cliques found.\n" + kApproximationBlock;
  EXPECT_EQ(Tail(r.printed, tail.size()), tail);
}

TEST(CliqueSearchStage, CoreNeighbourhoodInsideAnExactCliqueIsNoApproximateClique) {
  // Complete graphs on 1-4 and 2-5. Node 1 is stopped; 5 passes its one check (the 4th reading
  // stands still) and finds {2,3,4,5}; 2, 3, 4 and 1 are then stopped in a row. N(1) = {2,3,4}
  // in the core lies inside {2,3,4,5}.
  auto ticks = std::make_shared<std::clock_t>(0);
  auto readings = std::make_shared<int>(0);
  const ProcessorClock clock = [ticks, readings]() {
    if (++*readings != 4) *ticks += 1000000;
    return *ticks;
  };
  const Stage_result r =
      Run_stage(Links({{1, 2}, {1, 3}, {1, 4}, {2, 3}, {2, 4}, {3, 4}, {2, 5}, {3, 5}, {4, 5}}),
                true, false, 0.5, clock);
  EXPECT_EQ(r.n_exact, 1u);
  EXPECT_EQ(r.cliques, (CliqueList{{2, 3, 4, 5}, {1, 3, 4}, {1, 2, 4}, {1, 2, 3}}));
  EXPECT_EQ(r.overlaps.rows, (std::vector<OverlapRow>{{{0, 4}, {1, 2}, {2, 2}, {3, 2}},
                                                      {{0, 2}, {1, 3}, {2, 2}, {3, 2}},
                                                      {{0, 2}, {1, 2}, {2, 3}, {3, 2}},
                                                      {{0, 2}, {1, 2}, {2, 2}, {3, 3}}}));
  EXPECT_NE(r.printed.find(" number of   exact cliques=1,\n number of approx. cliques=3\n"),
            std::string::npos);
}

}  // namespace
}  // namespace kcp
