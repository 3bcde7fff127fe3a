#include "cliques/clique_find_time.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <limits>
#include <memory>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "cliques/clique_find.h"
#include "graph/vertex_map.h"
#include "tests/cli/cout_capture.h"
#include "tests/support/random_graph.h"
#include "tests/support/search_helpers.h"

namespace kcp {
namespace {

using namespace Clique_find_time_sub_routines;

// A processor clock that gains one second (1e6 ticks) at every reading except the listed ones
// (counted from 1), where it stands still. Every check after a node's start time thus finds the
// limit of 0.5 s exceeded unless the check is a listed reading.
struct Clock_script {
  std::set<int> still;
  int readings = 0;
  std::clock_t ticks = 0;
};

ProcessorClock Racing_clock(const std::shared_ptr<Clock_script>& script) {
  return [script]() {
    ++script->readings;
    if (script->still.count(script->readings) == 0) script->ticks += 1000000;
    return script->ticks;
  };
}

// A clock that never moves: no attempt ever takes time.
std::clock_t Stopped_clock() {
  return 12345;
}

using testing::Block;
using testing::Lines_starting;
using testing::Links;

struct Timed_result {
  CliqueList cliques;
  OverlapMatrix overlaps;
  VtxMap vertices;
  VtxMap core;
  std::string printed;
};

Timed_result Timed_search(const IndexLinkMap& links, const double& max_time,
                          const SearchClock& clock) {
  Timed_result r;
  Vtx_map_from_link_map(r.vertices, links);
  r.core[99] = Vtx(99);  // replaced by the search
  testing::Cout_capture capture;
  Clique_find_part_time(r.cliques, r.overlaps, r.vertices, r.core, max_time, clock);
  r.printed = capture.text();
  return r;
}

TEST(CliqueFindTime, ProcessorSecondsAndTheStrictLimit) {
  std::clock_t ticks = 2500000;
  const ProcessorClock clock = [&ticks]() { return ticks; };
  EXPECT_DOUBLE_EQ(Processor_seconds(clock), 2.5);
  ticks = 500000;
  EXPECT_FALSE(Time_exceeded(0.0L, 0.5, clock));
  ticks = 500001;
  EXPECT_TRUE(Time_exceeded(0.0L, 0.5, clock));
  ticks = 3000000;
  EXPECT_FALSE(Time_exceeded(2.5L, 0.5, clock));
  EXPECT_EQ(Time_limited_header(" Locating cliques, max. allowed time/node=", 0.25),
            " Locating cliques, max. allowed time/node=0.250:");
  EXPECT_EQ(Time_limited_header("x", 12.0), "x12.000:");
}

TEST(CliqueFindTime, AttemptTimerLeavesTheProcessorClockUnreadOnlyFarBelowTheLimit) {
  std::string readings;  // "m" per monotonic reading, "p" per processor reading
  std::clock_t ticks = 2000000;
  double real = 100.0;
  const SearchClock clock(
      [&] {
        readings += 'p';
        return ticks;
      },
      [&] {
        readings += 'm';
        return real;
      });
  Attempt_timer timer(clock);
  // The real time is measured from before t0 is read.
  const long double t0 = timer.Start();
  EXPECT_EQ(t0, 2.0L);
  EXPECT_EQ(readings, "mp");

  // A real time far below the limit leaves the processor clock unread, whatever it would show.
  readings.clear();
  ticks = 9000000;
  real = 100.4;
  EXPECT_FALSE(timer.Exceeded(t0, 0.5));
  EXPECT_EQ(readings, "m");

  // At the limit, a few microseconds below it (clock() truncates t0), and with an unreadable
  // monotonic clock, the processor clock decides with the strict comparison.
  for (const double now : {100.5, 100.5 - 2e-6, std::numeric_limits<double>::quiet_NaN()}) {
    readings.clear();
    ticks = 2500000;
    real = now;
    EXPECT_FALSE(timer.Exceeded(t0, 0.5)) << now;
    EXPECT_EQ(readings, "mp") << now;
    readings.clear();
    ticks = 2500001;
    EXPECT_TRUE(timer.Exceeded(t0, 0.5)) << now;
    EXPECT_EQ(readings, "mp") << now;
  }
}

TEST(CliqueFindTime, ProcessorClockGivenAloneIsReadAtEveryCheck) {
  int reads = 0;
  const SearchClock clock([&] {
    ++reads;
    return std::clock_t{0};
  });
  EXPECT_FALSE(clock.monotonic);
  Attempt_timer timer(clock);
  const long double t0 = timer.Start();
  EXPECT_FALSE(timer.Exceeded(t0, 1e9));
  EXPECT_FALSE(timer.Exceeded(t0, 1e9));
  EXPECT_EQ(reads, 3);
}

TEST(CliqueFindTime, RealClocksReadTheSystemClocks) {
  const SearchClock clock;
  const double before = clock.monotonic();
  const double after = clock.monotonic();
  EXPECT_LE(before, after);
  EXPECT_GT(before, 0.0);
  Attempt_timer timer(clock);
  const long double t0 = timer.Start();
  EXPECT_GE(t0, 0.0L);
  EXPECT_FALSE(timer.Exceeded(t0, 3600.0));
}

// Counts the readings of a clock shared by copies of it.
struct Reading_count {
  int processor = 0;
  int monotonic = 0;
};

// A processor clock that gains a whole second at a random half of its readings (seeded), so
// against a limit of 0.5 s some checks find it exceeded and others do not.
ProcessorClock Dice_clock(const std::uint32_t& seed, const std::shared_ptr<Reading_count>& count) {
  auto ticks = std::make_shared<std::clock_t>(0);
  auto random = std::make_shared<std::mt19937>(seed);
  return [ticks, random, count]() {
    ++count->processor;
    if ((*random)() % 2 == 0) *ticks += 1000000;
    return *ticks;
  };
}

// A monotonic clock that jumps by 10^6 s at every reading: it never rules a check out.
MonotonicClock Jumping_clock(const std::shared_ptr<Reading_count>& count) {
  return [count]() { return 1e6 * ++count->monotonic; };
}

// A monotonic clock that stands still: it rules every check out.
MonotonicClock Still_clock(const std::shared_ptr<Reading_count>& count) {
  return [count]() {
    ++count->monotonic;
    return 5.0;
  };
}

void Expect_same_search(const Timed_result& a, const Timed_result& b, const std::uint32_t& seed) {
  ASSERT_EQ(a.printed, b.printed) << "seed " << seed;
  ASSERT_EQ(a.cliques, b.cliques) << "seed " << seed;
  ASSERT_EQ(a.overlaps.rows, b.overlaps.rows) << "seed " << seed;
  ASSERT_EQ(a.core.size(), b.core.size()) << "seed " << seed;
  for (const auto& [node, vtx] : a.core) {
    ASSERT_EQ(vtx.Neighs_c(), b.core.at(node).Neighs_c()) << "seed " << seed;
  }
}

TEST(CliqueFindTime, MonotonicClockThatNeverRulesOutReadsTheProcessorClockAsBefore) {
  int given_up = 0;
  for (std::uint32_t seed = 500; seed < 560; ++seed) {
    const IndexLinkMap links = testing::Random_undirected_links(6 + seed % 9, 0.7, seed);
    auto alone = std::make_shared<Reading_count>();
    const Timed_result every = Timed_search(links, 0.5, Dice_clock(seed, alone));
    auto guarded = std::make_shared<Reading_count>();
    const Timed_result jumping =
        Timed_search(links, 0.5, SearchClock(Dice_clock(seed, guarded), Jumping_clock(guarded)));
    Expect_same_search(jumping, every, seed);
    ASSERT_EQ(guarded->processor, alone->processor) << "seed " << seed;
    // One monotonic reading beside each processor reading.
    ASSERT_EQ(guarded->monotonic, guarded->processor) << "seed " << seed;
    given_up += static_cast<int>(Lines_starting(every.printed, {" Exceeded"}).size());
  }
  EXPECT_GT(given_up, 0);
}

TEST(CliqueFindTime, MonotonicClockBelowTheLimitLeavesOnlyTheStartsRead) {
  int checks_spared = 0;
  for (std::uint32_t seed = 600; seed < 640; ++seed) {
    const IndexLinkMap links = testing::Random_undirected_links(6 + seed % 9, 0.7, seed);
    auto alone = std::make_shared<Reading_count>();
    const Timed_result every = Timed_search(links, 0.5, [alone]() {
      ++alone->processor;
      return std::clock_t{4000000};
    });
    auto guarded = std::make_shared<Reading_count>();
    const Timed_result still = Timed_search(links, 0.5,
                                            SearchClock(
                                                [guarded]() {
                                                  ++guarded->processor;
                                                  return std::clock_t{4000000};
                                                },
                                                Still_clock(guarded)));
    Expect_same_search(still, every, seed);
    // No node is given up, so each is attempted once and t0 is the only processor reading.
    const auto attempts = static_cast<int>(Lines_starting(every.printed, {" Locating"}).size());
    ASSERT_EQ(attempts, static_cast<int>(still.vertices.size())) << "seed " << seed;
    ASSERT_EQ(guarded->processor, attempts) << "seed " << seed;
    checks_spared += alone->processor - guarded->processor;
  }
  EXPECT_GT(checks_spared, 0);
}

TEST(CliqueFindTime, LimitNoNodeReachesGivesTheExactResultAndTheNote) {
  const Timed_result r = Timed_search(Links({{1, 2}, {1, 3}, {2, 3}}), 0.25, Stopped_clock);
  const std::string header = " Locating cliques, max. allowed time/node=0.250:";
  EXPECT_EQ(r.printed, Block(header, " 3 of 3 nodes to do (0.00% done)") +
                           Block(header, " 2 of 3 nodes to do (33.33% done)") +
                           Block(header, " 1 of 3 nodes to do (66.67% done)") +
                           std::string(28, '_') +
                           "\n Altogether 1 cliques found.\n no approximation was needed\n");
  EXPECT_EQ(r.cliques, (CliqueList{{1, 2, 3}}));
  EXPECT_TRUE(r.core.empty());

  // A limit of 0 is not exceeded by a time of exactly 0.
  std::uint32_t seed = 300;
  for (const double p : {0.3, 0.6, 0.9}) {
    for (int round = 0; round < 25; ++round, ++seed) {
      const IndexLinkMap links = testing::Random_undirected_links(5 + seed % 10, p, seed);
      const Timed_result timed = Timed_search(links, 0.0, Stopped_clock);
      Timed_result exact;
      Vtx_map_from_link_map(exact.vertices, links);
      {
        testing::Cout_capture quiet;
        Clique_find(exact.cliques, exact.overlaps, exact.vertices);
      }
      ASSERT_EQ(timed.cliques, exact.cliques) << "seed " << seed;
      ASSERT_EQ(timed.overlaps.rows, exact.overlaps.rows) << "seed " << seed;
      ASSERT_TRUE(timed.core.empty());
      ASSERT_EQ(Lines_starting(timed.printed, {" Exceeded", " no approximation"}),
                std::vector<std::string>{" no approximation was needed"});
    }
  }
}

TEST(CliqueFindTime, EveryNodeGivenUpLeavesTheWholeGraphAsCore) {
  // Each node of a complete graph on four nodes needs one extension beyond its first pair.
  const IndexLinkMap links = Links({{1, 2}, {1, 3}, {1, 4}, {2, 3}, {2, 4}, {3, 4}});
  auto script = std::make_shared<Clock_script>();
  const Timed_result r = Timed_search(links, 0.5, Racing_clock(script));

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
  EXPECT_EQ(script->readings, 8);  // a start and one check per attempt
  EXPECT_TRUE(r.cliques.empty());
  EXPECT_TRUE(r.overlaps.rows.empty());
  ASSERT_EQ(r.core.size(), 4u);
  for (const auto& [node, vtx] : r.vertices) {
    EXPECT_EQ(r.core.at(node).Neighs_c(), vtx.Neighs_c());
  }
}

// Nodes 1, 2, 3 form a triangle, 1, 4, 5, 6 and 7, 8, 9, 10 complete graphs; leaves 11.. give
// 2 to 6 more links than 1, so 1 comes right after the leaves and 7 to 10.
IndexLinkMap Requeue_graph() {
  IndexLinkMap links =
      testing::Parse_links("1-2 1-3 2-3 1-4 1-5 1-6 4-5 4-6 5-6 7-8 7-9 7-10 8-9 8-10 9-10");
  NodeIndex leaf = 11;
  for (const auto& [node, count] : {std::pair{2, 4}, {3, 4}, {4, 3}, {5, 3}, {6, 3}}) {
    for (int i = 0; i < count; ++i, ++leaf) links[{static_cast<NodeIndex>(node), leaf}] = 1.0;
  }
  return links;
}

TEST(CliqueFindTime, GivenUpNodesAreRetriedAndPendingCliquesFoundAgainAreNotRepeated) {
  // Readings 1-17: the leaves. 18-25: 7 to 10 each start and are stopped at their first check.
  // 26-27: node 1 finds {1,2,3} without a check, then is stopped in {1,4,5,6}. 28, 29: 2 finds
  // {1,2,3}, 3 nothing. 30-31: 4 passes its check (31 stands still) and finds {1,4,5,6}.
  auto script = std::make_shared<Clock_script>();
  script->still = {31};
  const Timed_result r = Timed_search(Requeue_graph(), 0.5, Racing_clock(script));

  // Three rounds: ten nodes to do, then the five given up, then the four still too slow.
  const auto skipped = [](int node, int row, int of, const std::string& percent) {
    return std::vector<std::string>{
        " Exceeded allowed time at node no." + std::to_string(node) + ",",
        " skipping, " + std::to_string(row) + " out of " + std::to_string(of) +
            " skipped in a row, (" + percent + "%)"};
  };
  std::vector<std::string> expected;
  for (const auto& lines :
       {skipped(7, 1, 10, "10.00"), skipped(8, 2, 10, "20.00"), skipped(9, 3, 10, "30.00"),
        skipped(10, 4, 10, "40.00"), skipped(1, 5, 10, "50.00"), skipped(7, 1, 5, "20.00"),
        skipped(8, 2, 5, "40.00"), skipped(9, 3, 5, "60.00"), skipped(10, 4, 5, "80.00"),
        skipped(7, 1, 4, "25.00"), skipped(8, 2, 4, "50.00"), skipped(9, 3, 4, "75.00"),
        skipped(10, 4, 4, "100.00")}) {
    expected.insert(expected.end(), lines.begin(), lines.end());
  }
  expected.push_back(" The extraction of cliques has been found too slow ");
  expected.push_back(" at all of the remaining nodes.");
  EXPECT_EQ(Lines_starting(r.printed, {" Exceeded", " skipping", " The extraction", " at all"}),
            expected);
  // The pending {1,2,3} lies in the clique 2 found later and is not registered again.
  EXPECT_EQ(r.cliques, (CliqueList{{1, 2, 3}, {1, 4, 5, 6}}));
  EXPECT_EQ(r.overlaps.rows, (std::vector<OverlapRow>{{{0, 3}, {1, 1}}, {{0, 1}, {1, 4}}}));
  const std::string tail = std::string(34, '_') + "\n Altogether 2 exact cliques found.\n";
  EXPECT_EQ(testing::Tail(r.printed, tail.size()), tail);

  VtxMap expected_core;
  Vtx_map_from_link_map(expected_core, testing::Parse_links("7-8 7-9 7-10 8-9 8-10 9-10"));
  ASSERT_EQ(r.core.size(), 4u);
  for (const auto& [node, vtx] : expected_core) {
    EXPECT_EQ(r.core.at(node).Neighs_c(), vtx.Neighs_c()) << "node " << node;
  }
  // The caller's map keeps every node.
  EXPECT_EQ(r.vertices.size(), 27u);
}

TEST(CliqueFindTime, PendingCliquesHeldByNoCliqueAreRegisteredInTheirOrder) {
  IndexLinkMap complete;
  for (NodeIndex a = 1; a <= 9; ++a) {
    for (NodeIndex b = a + 1; b <= 9; ++b) complete[{a, b}] = 1.0;
  }
  VtxMap vertices;
  Vtx_map_from_link_map(vertices, complete);
  CliqueList cliques;
  OverlapMatrix overlaps;
  NodeCliqueMap node_cliques;
  Clique_find_sub_routines::Iktatjuk_az_uj_math_cliquet(cliques, NodeList{1, 2, 3, 9}, vertices,
                                                        overlaps, node_cliques);
  // {1,3} is held by {1,2,3,9}; {2,3,4} by nothing; {2,4} only by {2,3,4}, registered just before
  // it; {5,6,7} by nothing.
  const PendingCliques pending{{1, 3}, {2, 3, 4}, {2, 4}, {5, 6, 7}};
  Register_pending(pending, cliques, vertices, overlaps, node_cliques);
  EXPECT_EQ(cliques, (CliqueList{{1, 2, 3, 9}, {2, 3, 4}, {5, 6, 7}}));
  EXPECT_EQ(overlaps.rows, (std::vector<OverlapRow>{{{0, 4}, {1, 2}}, {{0, 2}, {1, 3}}, {{2, 3}}}));
}

}  // namespace
}  // namespace kcp
