// The time-limited searches, undirected and directed, under scripted clocks that pin which node
// attempts run over the limit.
#include "cliques/clique_find_time.h"

#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <string>
#include <tuple>
#include <type_traits>
#include <vector>

#include "cliques/clique_find.h"
#include "cliques/clique_find_dir.h"
#include "cliques/clique_find_dir_time.h"
#include "graph/vertex_map.h"
#include "tests/cli/cout_capture.h"
#include "tests/support/random_graph.h"
#include "tests/support/search_helpers.h"

namespace kcp {
namespace {

using namespace Clique_find_time_sub_routines;
using testing::Block;
using testing::Lines_starting;
using testing::ReadingCount;

constexpr bool kDirected = true;

template <bool directed>
using Map = std::conditional_t<directed, VtxdMap, VtxMap>;

// A vertex map as (node, 0) for every node and (node, m) for every (out-)neighbour m.
template <typename M>
std::set<Link> Arcs(const M& map) {
  std::set<Link> arcs;
  for (const auto& [node, record] : map) {
    arcs.emplace(node, 0);
    if constexpr (std::is_same_v<M, VtxdMap>) {
      for (const NodeIndex m : record.Oneighs_c()) arcs.emplace(node, m);
    } else {
      for (const NodeIndex m : record.Neighs_c()) arcs.emplace(node, m);
    }
  }
  return arcs;
}

template <bool directed>
std::set<Link> Arcs(const IndexLinkMap& links) {
  Map<directed> map;
  if constexpr (directed) Dir_vtx_map_from_link_map(map, links);
  if constexpr (!directed) Vtx_map_from_link_map(map, links);
  return Arcs(map);
}

struct TimedResult {
  CliqueList cliques;
  std::vector<OverlapRow> rows;
  std::set<Link> core;
  std::string printed;
  friend bool operator==(const TimedResult&, const TimedResult&) = default;
};

// max_time < 0: the exact search.
template <bool directed>
TimedResult Search(const IndexLinkMap& links, const double& max_time, const SearchClock& clock) {
  Map<directed> vertices;
  Map<directed> core;
  if constexpr (directed) Dir_vtx_map_from_link_map(vertices, links);
  if constexpr (!directed) Vtx_map_from_link_map(vertices, links);
  core[99];  // replaced by the search
  TimedResult r;
  OverlapMatrix overlaps;
  testing::CoutCapture capture;
  if constexpr (directed) {
    if (max_time < 0) Clique_find_dir(r.cliques, overlaps, vertices);
    if (max_time >= 0) Clique_find_dir_time(r.cliques, overlaps, vertices, core, max_time, clock);
  } else {
    if (max_time < 0) Clique_find(r.cliques, overlaps, vertices);
    if (max_time >= 0) Clique_find_part_time(r.cliques, overlaps, vertices, core, max_time, clock);
  }
  r.rows = overlaps.rows;
  r.core = max_time < 0 ? std::set<Link>{} : Arcs(core);
  r.printed = capture.text();
  EXPECT_EQ(Arcs(vertices), Arcs<directed>(links)) << "the caller's map keeps every link";
  return r;
}

template <bool directed>
void Expect_monotonic_clock_only_spares_processor_readings() {
  int given_up = 0;
  int checks_spared = 0;
  for (std::uint32_t seed = 500; seed < 560; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    const IndexLinkMap links = directed ? testing::Random_directed_links(5 + seed % 8, 0.6, seed)
                                        : testing::Random_undirected_links(6 + seed % 9, 0.7, seed);
    auto alone = std::make_shared<ReadingCount>();
    const TimedResult every = Search<directed>(links, 0.5, testing::Dice_clock(seed, alone));
    // A monotonic clock that never rules a check out: the processor clock is read as before.
    auto guarded = std::make_shared<ReadingCount>();
    ASSERT_EQ(Search<directed>(links, 0.5,
                               SearchClock(testing::Dice_clock(seed, guarded),
                                           testing::Monotonic_clock(guarded, true))),
              every);
    ASSERT_EQ(guarded->processor, alone->processor);
    ASSERT_EQ(guarded->monotonic, guarded->processor);
    given_up += static_cast<int>(Lines_starting(every.printed, {" Exceeded"}).size());
    // One that rules every check out: only the starts of the attempts read the processor clock.
    auto still_alone = std::make_shared<ReadingCount>();
    const TimedResult exact = Search<directed>(links, 0.5, testing::Stopped_clock(still_alone));
    auto still = std::make_shared<ReadingCount>();
    ASSERT_EQ(Search<directed>(links, 0.5,
                               SearchClock(testing::Stopped_clock(still),
                                           testing::Monotonic_clock(still, false))),
              exact);
    ASSERT_EQ(still->processor,
              static_cast<int>(Lines_starting(exact.printed, {" Locating"}).size()));
    checks_spared += still_alone->processor - still->processor;
  }
  EXPECT_GT(given_up, 0);
  EXPECT_GT(checks_spared, 0);
}

TEST(CliqueFindTime, MonotonicClockOnlySparesReadingsOfTheProcessorClock) {
  Expect_monotonic_clock_only_spares_processor_readings<!kDirected>();
  Expect_monotonic_clock_only_spares_processor_readings<kDirected>();
}

template <bool directed>
void Expect_exact_result_when_no_node_reaches_the_limit() {
  // A limit of 0 is not exceeded by a time of exactly 0.
  std::uint32_t seed = 300;
  for (const double p : {0.3, 0.6, 0.9}) {
    for (int round = 0; round < 25; ++round, ++seed) {
      const IndexLinkMap links = directed
                                     ? testing::Random_directed_links(4 + seed % 8, p, seed)
                                     : testing::Random_undirected_links(5 + seed % 10, p, seed);
      const TimedResult timed =
          Search<directed>(links, 0.0, testing::Stopped_clock(std::make_shared<ReadingCount>()));
      const TimedResult exact = Search<directed>(links, -1, SearchClock());
      ASSERT_EQ(timed.cliques, exact.cliques) << "seed " << seed;
      ASSERT_EQ(timed.rows, exact.rows) << "seed " << seed;
      ASSERT_TRUE(timed.core.empty()) << "seed " << seed;
      ASSERT_EQ(Lines_starting(timed.printed, {" Exceeded", " no approximation", "no approx"}),
                std::vector<std::string>{directed ? "no approximation was needed."
                                                  : " no approximation was needed"});
    }
  }
}

TEST(CliqueFindTime, LimitNoNodeReachesGivesTheExactResultAndTheNote) {
  const TimedResult r =
      Search<!kDirected>(testing::Links("1-2 1-3 2-3"), 0.25,
                         testing::Stopped_clock(std::make_shared<ReadingCount>()));
  const std::string header = " Locating cliques, max. allowed time/node=0.250:";
  EXPECT_EQ(r.printed, Block(header, " 3 of 3 nodes to do (0.00% done)") +
                           Block(header, " 2 of 3 nodes to do (33.33% done)") +
                           Block(header, " 1 of 3 nodes to do (66.67% done)") +
                           std::string(28, '_') +
                           "\n Altogether 1 cliques found.\n no approximation was needed\n");
  Expect_exact_result_when_no_node_reaches_the_limit<!kDirected>();
  Expect_exact_result_when_no_node_reaches_the_limit<kDirected>();
}

TEST(CliqueFindTime, EveryNodeGivenUpLeavesTheWholeGraphAsCore) {
  // Each node of a complete graph on four nodes needs one extension beyond its first pair.
  const IndexLinkMap links = testing::Links("1-2 1-3 1-4 2-3 2-4 3-4");
  auto readings = std::make_shared<ReadingCount>();
  const TimedResult r = Search<!kDirected>(links, 0.5, testing::Racing_clock(readings));
  const std::string header = " Locating cliques, max. allowed time/node=0.500:";
  std::string expected;
  const char* percentages[] = {"25.00", "50.00", "75.00", "100.00"};
  for (NodeIndex v = 1; v <= 4; ++v) {
    expected += Block(header, " 4 of 4 nodes to do (0.00% done)") +
                " Exceeded allowed time at node no." + std::to_string(v) + ",\n skipping, " +
                std::to_string(v) + " out of 4 skipped in a row, (" + percentages[v - 1] + "%)\n";
  }
  expected += std::string(50, '_') +
              "\n The extraction of cliques has been found too slow \n at all of the remaining "
              "nodes.\n" +
              std::string(34, '_') + "\n Altogether 0 exact cliques found.\n";
  EXPECT_EQ(r.printed, expected);
  EXPECT_EQ(readings->processor, 8);  // a start and one check per attempt
  EXPECT_TRUE(r.cliques.empty());
  EXPECT_TRUE(r.rows.empty());
  EXPECT_EQ(r.core, Arcs<!kDirected>(links));

  IndexLinkMap both_ways;
  testing::Both_ways(both_ways, {1, 2, 3, 4});
  auto directed_readings = std::make_shared<ReadingCount>();
  const TimedResult d = Search<kDirected>(both_ways, 0.5, testing::Racing_clock(directed_readings));
  EXPECT_EQ(directed_readings->processor, 8);
  EXPECT_TRUE(d.cliques.empty());
  EXPECT_EQ(d.core, Arcs<kDirected>(both_ways));
}

TEST(CliqueFindTime, GivenUpNodesAreRetriedAndPendingCliquesFoundAgainAreNotRepeated) {
  // Nodes 1, 2, 3 form a triangle, 1, 4, 5, 6 and 7, 8, 9, 10 complete graphs; leaves 11.. give
  // 2 to 6 more links than 1, so 1 comes right after the leaves and 7 to 10.
  IndexLinkMap links =
      testing::Links("1-2 1-3 2-3 1-4 1-5 1-6 4-5 4-6 5-6 7-8 7-9 7-10 8-9 8-10 9-10");
  NodeIndex leaf = 11;
  for (const auto& [node, count] : {std::pair{2, 4}, {3, 4}, {4, 3}, {5, 3}, {6, 3}}) {
    for (int i = 0; i < count; ++i, ++leaf) links[{static_cast<NodeIndex>(node), leaf}] = 1.0;
  }
  // Readings 1-17: the leaves. 18-25: 7 to 10 each start and are stopped at their first check.
  // 26-27: node 1 finds {1,2,3} without a check, then is stopped in {1,4,5,6}. 28, 29: 2 finds
  // {1,2,3}, 3 nothing. 30-31: 4 passes its check (31 stands still) and finds {1,4,5,6}.
  const TimedResult r =
      Search<!kDirected>(links, 0.5, testing::Racing_clock(std::make_shared<ReadingCount>(), {31}));
  // Three rounds: ten nodes to do, then the five given up, then the four still too slow.
  std::vector<std::string> expected;
  for (const auto& [node, row, of, percent] :
       std::vector<std::tuple<int, int, int, std::string>>{{7, 1, 10, "10.00"},
                                                           {8, 2, 10, "20.00"},
                                                           {9, 3, 10, "30.00"},
                                                           {10, 4, 10, "40.00"},
                                                           {1, 5, 10, "50.00"},
                                                           {7, 1, 5, "20.00"},
                                                           {8, 2, 5, "40.00"},
                                                           {9, 3, 5, "60.00"},
                                                           {10, 4, 5, "80.00"},
                                                           {7, 1, 4, "25.00"},
                                                           {8, 2, 4, "50.00"},
                                                           {9, 3, 4, "75.00"},
                                                           {10, 4, 4, "100.00"}}) {
    expected.push_back(" Exceeded allowed time at node no." + std::to_string(node) + ",");
    expected.push_back(" skipping, " + std::to_string(row) + " out of " + std::to_string(of) +
                       " skipped in a row, (" + percent + "%)");
  }
  EXPECT_EQ(Lines_starting(r.printed, {" Exceeded", " skipping"}), expected);
  // The pending {1,2,3} lies in the clique 2 found later and is not registered again.
  EXPECT_EQ(r.cliques, (CliqueList{{1, 2, 3}, {1, 4, 5, 6}}));
  EXPECT_EQ(r.rows, (std::vector<OverlapRow>{{{0, 3}, {1, 1}}, {{0, 1}, {1, 4}}}));
  const std::string tail = std::string(34, '_') + "\n Altogether 2 exact cliques found.\n";
  EXPECT_EQ(testing::Tail(r.printed, tail.size()), tail);
  EXPECT_EQ(r.core, Arcs<!kDirected>(testing::Links("7-8 7-9 7-10 8-9 8-10 9-10")));
}

TEST(CliqueFindTime, DirectedCliquesOfGivenUpNodesAreRegisteredOnceWhenNothingHoldsThem) {
  // 1 -> 2 -> 3 and 1 -> 3 form a directed triangle; 1, 4, 5, 6 a transitive clique; 2, 3, 7, 8
  // are linked both ways. Leaves 9.. push 2 to 8 behind 1 in the order. Every node but the leaves
  // is stopped at its first check; 1, 2 and 3 each find {1,2,3} before that.
  IndexLinkMap core_links = testing::Links("1-2 2-3 1-3 1-4 1-5 1-6 4-5 4-6 5-6");
  testing::Both_ways(core_links, {2, 3, 7, 8});
  IndexLinkMap links = core_links;
  NodeIndex leaf = 9;
  for (const auto& [node, count] :
       {std::pair{2, 2}, {3, 2}, {7, 3}, {8, 3}, {4, 3}, {5, 3}, {6, 3}}) {
    for (int i = 0; i < count; ++i, ++leaf) links[{static_cast<NodeIndex>(node), leaf}] = 1.0;
  }
  const TimedResult r =
      Search<kDirected>(links, 0.5, testing::Racing_clock(std::make_shared<ReadingCount>()));
  EXPECT_EQ(Lines_starting(r.printed, {" Exceeded"}).size(), 8u);
  EXPECT_EQ(r.cliques, (CliqueList{{1, 2, 3}}));
  EXPECT_EQ(r.rows, (std::vector<OverlapRow>{{{0, 3}}}));
  const std::string tail = std::string(43, '_') + "\n Altogether 1 exact directed cliques found.\n";
  EXPECT_EQ(testing::Tail(r.printed, tail.size()), tail);
  EXPECT_EQ(r.core, Arcs<kDirected>(core_links));
}

}  // namespace
}  // namespace kcp
