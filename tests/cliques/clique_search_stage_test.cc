#include "cliques/clique_search_stage.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>

#include "graph/vertex_map.h"
#include "tests/cli/cout_capture.h"
#include "tests/support/search_helpers.h"

namespace kcp {
namespace {

struct StageResult {
  CliqueList cliques{{42}};
  OverlapMatrix overlaps{{{{0, 1}}}, 1};
  std::uint32_t n_exact = 77;
  std::string printed;
};

// A stored matrix leaves the stage ordered by share; its rows compared by clique.
std::vector<OverlapRow> By_clique(std::vector<OverlapRow> rows) {
  for (OverlapRow& row : rows) {
    std::sort(row.begin(), row.end(),
              [](const Overlap& a, const Overlap& b) { return a.clique < b.clique; });
  }
  return rows;
}

StageResult Run_stage(const IndexLinkMap& links, const bool& time_limited, const bool& directed,
                      const double& max_time, const ProcessorClock& clock = Processor_clock) {
  StageResult r;
  VtxMap vertices;
  VtxdMap directed_vertices;
  if (directed) Dir_vtx_map_from_link_map(directed_vertices, links);
  if (!directed) Vtx_map_from_link_map(vertices, links);
  testing::CoutCapture capture;
  Find_cliques(time_limited, directed, r.cliques, r.overlaps, directed_vertices, vertices,
               r.n_exact, max_time, clock);
  r.printed = capture.text();
  return r;
}

const std::string kApproximationStart = " Approximating cliques in the remaing core...";

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
  const auto readings = std::make_shared<testing::ReadingCount>();
  const StageResult r = Run_stage(testing::Links("1-2 1-3 1-4 2-3 2-4 3-4 4-5 4-6 5-6"), true,
                                  false, 0.5, testing::Racing_clock(readings));
  EXPECT_EQ(r.cliques, kCoreCliques);
  EXPECT_EQ(r.n_exact, 1u);
  EXPECT_EQ(By_clique(r.overlaps.rows), kCoreRows);
  const std::string tail =
      std::string(34, '_') + "\n Altogether 1 exact cliques found.\n" + kApproximationBlock;
  EXPECT_EQ(testing::Tail(r.printed, tail.size()), tail);

  IndexLinkMap links = testing::Links("4-5 5-6 4-6");
  testing::Both_ways(links, {1, 2, 3, 4});
  const StageResult d = Run_stage(links, true, true, 0.5, testing::Racing_clock(readings));
  EXPECT_EQ(d.cliques, kCoreCliques);
  EXPECT_EQ(d.n_exact, 1u);
  EXPECT_EQ(By_clique(d.overlaps.rows), kCoreRows);
  EXPECT_EQ(testing::Tail(d.printed, kApproximationBlock.size()), kApproximationBlock);
}

TEST(CliqueSearchStage, CoreNeighbourhoodInsideAnExactCliqueIsNoApproximateClique) {
  // Complete graphs on 1-4 and 2-5. Node 1 is stopped; 5 passes its one check (the 4th reading
  // stands still) and finds {2,3,4,5}; 2, 3, 4 and 1 are then stopped in a row. N(1) = {2,3,4}
  // in the core lies inside {2,3,4,5}.
  const StageResult r =
      Run_stage(testing::Links("1-2 1-3 1-4 2-3 2-4 3-4 2-5 3-5 4-5"), true, false, 0.5,
                testing::Racing_clock(std::make_shared<testing::ReadingCount>(), {4}));
  EXPECT_EQ(r.n_exact, 1u);
  EXPECT_EQ(r.cliques, (CliqueList{{2, 3, 4, 5}, {1, 3, 4}, {1, 2, 4}, {1, 2, 3}}));
  EXPECT_EQ(By_clique(r.overlaps.rows),
            (std::vector<OverlapRow>{{{0, 4}, {1, 2}, {2, 2}, {3, 2}},
                                     {{0, 2}, {1, 3}, {2, 2}, {3, 2}},
                                     {{0, 2}, {1, 2}, {2, 3}, {3, 2}},
                                     {{0, 2}, {1, 2}, {2, 2}, {3, 3}}}));
}

// A stop request ends each search with Xstopped: the exact ones before their next node, the
// time-limited ones within the attempt under way, whose clock here would never run out.
TEST(CliqueSearchStage, StopRequestEndsEverySearchAtOnce) {
  IndexLinkMap links;
  for (NodeIndex a = 1; a <= 12; ++a) {
    for (NodeIndex b = a + 1; b <= 12; ++b) links[{a, b}] = 1.0;
  }
  IndexLinkMap both_ways;
  testing::Both_ways(both_ways, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12});
  for (const bool time_limited : {false, true}) {
    for (const bool directed : {false, true}) {
      StopRequest stop;
      int readings_after = 0;
      const ProcessorClock clock = [&, readings = 0]() mutable {
        if (++readings == 5) stop.Request();
        if (stop.Requested()) ++readings_after;
        return std::clock_t{0};
      };
      if (!time_limited) stop.Request();
      VtxMap vertices;
      VtxdMap directed_vertices;
      Vtx_map_from_link_map(vertices, links);
      Dir_vtx_map_from_link_map(directed_vertices, both_ways);
      CliqueList cliques;
      OverlapMatrix overlaps;
      std::uint32_t n_exact = 0;
      testing::CoutCapture capture;
      EXPECT_THROW(Find_cliques(time_limited, directed, cliques, overlaps, directed_vertices,
                                vertices, n_exact, 1.0, SearchClock(clock), &stop),
                   Xstopped)
          << time_limited << directed;
      EXPECT_LE(readings_after, 1) << time_limited << directed;
      EXPECT_TRUE(time_limited || cliques.empty()) << directed;
    }
  }
}

}  // namespace
}  // namespace kcp
