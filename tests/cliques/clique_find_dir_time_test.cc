#include "cliques/clique_find_dir_time.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "cliques/clique_find_dir.h"
#include "graph/vertex_map.h"
#include "tests/cli/cout_capture.h"
#include "tests/support/random_graph.h"
#include "tests/support/search_helpers.h"

namespace kcp {
namespace {

// A processor clock that gains one second (1e6 ticks) at every reading: every check after a
// node's start time finds a limit below one second exceeded.
ProcessorClock Racing_clock(const std::shared_ptr<int>& readings) {
  return [readings]() { return static_cast<std::clock_t>(++*readings) * 1000000; };
}

std::clock_t Stopped_clock() {
  return 777;
}

using testing::Block;
using testing::Both_ways;
using testing::Lines_starting;

struct Timed_result {
  CliqueList cliques;
  OverlapMatrix overlaps;
  VtxdMap vertices;
  VtxdMap core;
  std::string printed;
};

Timed_result Timed_search(const IndexLinkMap& links, const double& max_time,
                          const SearchClock& clock) {
  Timed_result r;
  Dir_vtx_map_from_link_map(r.vertices, links);
  r.core[99] = Vtxd(99);  // replaced by the search
  testing::Cout_capture capture;
  Clique_find_dir_time(r.cliques, r.overlaps, r.vertices, r.core, max_time, clock);
  r.printed = capture.text();
  return r;
}

void Expect_same_arcs(const VtxdMap& core, const IndexLinkMap& links) {
  VtxdMap expected;
  Dir_vtx_map_from_link_map(expected, links);
  ASSERT_EQ(core.size(), expected.size());
  for (const auto& [node, vtx] : expected) {
    EXPECT_EQ(core.at(node).Oneighs_c(), vtx.Oneighs_c()) << "node " << node;
    EXPECT_EQ(core.at(node).Ineighs_c(), vtx.Ineighs_c()) << "node " << node;
    EXPECT_EQ(core.at(node).Neighs_c(), vtx.Neighs_c()) << "node " << node;
  }
}

TEST(CliqueFindDirTime, LimitNoNodeReachesGivesTheExactResultAndTheNote) {
  const Timed_result r = Timed_search(testing::Parse_links("1-2 2-3 1-3"), 1.5, Stopped_clock);
  const std::string header = " Locating dir. cliques, max. allowed time/node=1.500:";
  EXPECT_EQ(r.printed,
            Block(header, " 3 of 3 nodes to do (0.00% done)") +
                Block(header, " 2 of 3 nodes to do (33.33% done)") +
                Block(header, " 1 of 3 nodes to do (66.67% done)") + std::string(37, '_') +
                "\n Altogether 1 directed cliques found.\nno approximation was needed.\n");
  EXPECT_EQ(r.cliques, (CliqueList{{1, 2, 3}}));
  EXPECT_TRUE(r.core.empty());

  std::uint32_t seed = 900;
  for (const double p : {0.25, 0.5, 0.8}) {
    for (int round = 0; round < 20; ++round, ++seed) {
      const IndexLinkMap links = testing::Random_directed_links(4 + seed % 8, p, seed);
      const Timed_result timed = Timed_search(links, 0.0, Stopped_clock);
      Timed_result exact;
      Dir_vtx_map_from_link_map(exact.vertices, links);
      {
        testing::Cout_capture quiet;
        Clique_find_dir(exact.cliques, exact.overlaps, exact.vertices);
      }
      ASSERT_EQ(timed.cliques, exact.cliques) << "seed " << seed;
      ASSERT_EQ(timed.overlaps.rows, exact.overlaps.rows) << "seed " << seed;
      ASSERT_TRUE(timed.core.empty());
      ASSERT_TRUE(Lines_starting(timed.printed, {" Exceeded"}).empty());
    }
  }
}

struct Reading_count {
  int processor = 0;
  int monotonic = 0;
};

// A processor clock that gains a whole second at a random half of its readings (seeded).
ProcessorClock Dice_clock(const std::uint32_t& seed, const std::shared_ptr<Reading_count>& count) {
  auto ticks = std::make_shared<std::clock_t>(0);
  auto random = std::make_shared<std::mt19937>(seed);
  return [ticks, random, count]() {
    ++count->processor;
    if ((*random)() % 2 == 0) *ticks += 1000000;
    return *ticks;
  };
}

void Expect_same_search(const Timed_result& a, const Timed_result& b, const std::uint32_t& seed) {
  ASSERT_EQ(a.printed, b.printed) << "seed " << seed;
  ASSERT_EQ(a.cliques, b.cliques) << "seed " << seed;
  ASSERT_EQ(a.overlaps.rows, b.overlaps.rows) << "seed " << seed;
  ASSERT_EQ(a.core.size(), b.core.size()) << "seed " << seed;
  for (const auto& [node, vtx] : a.core) {
    ASSERT_EQ(vtx.Oneighs_c(), b.core.at(node).Oneighs_c()) << "seed " << seed;
    ASSERT_EQ(vtx.Ineighs_c(), b.core.at(node).Ineighs_c()) << "seed " << seed;
  }
}

TEST(CliqueFindDirTime, MonotonicClockThatNeverRulesOutReadsTheProcessorClockAsBefore) {
  int given_up = 0;
  for (std::uint32_t seed = 1500; seed < 1560; ++seed) {
    const IndexLinkMap links = testing::Random_directed_links(5 + seed % 8, 0.6, seed);
    auto alone = std::make_shared<Reading_count>();
    const Timed_result every = Timed_search(links, 0.5, Dice_clock(seed, alone));
    // The monotonic clock jumps by 10^6 s at every reading.
    auto guarded = std::make_shared<Reading_count>();
    const MonotonicClock jumping = [guarded]() { return 1e6 * ++guarded->monotonic; };
    const Timed_result guarded_run =
        Timed_search(links, 0.5, SearchClock(Dice_clock(seed, guarded), jumping));
    Expect_same_search(guarded_run, every, seed);
    ASSERT_EQ(guarded->processor, alone->processor) << "seed " << seed;
    ASSERT_EQ(guarded->monotonic, guarded->processor) << "seed " << seed;
    given_up += static_cast<int>(Lines_starting(every.printed, {" Exceeded"}).size());
  }
  EXPECT_GT(given_up, 0);
}

TEST(CliqueFindDirTime, MonotonicClockBelowTheLimitLeavesOnlyTheStartsRead) {
  int checks_spared = 0;
  for (std::uint32_t seed = 1600; seed < 1640; ++seed) {
    const IndexLinkMap links = testing::Random_directed_links(5 + seed % 8, 0.6, seed);
    auto alone = std::make_shared<int>(0);
    const Timed_result every = Timed_search(links, 0.5, [alone]() {
      ++*alone;
      return std::clock_t{4000000};
    });
    auto guarded = std::make_shared<int>(0);
    const SearchClock clock(
        [guarded]() {
          ++*guarded;
          return std::clock_t{4000000};
        },
        []() { return 5.0; });
    const Timed_result still = Timed_search(links, 0.5, clock);
    Expect_same_search(still, every, seed);
    const auto attempts = static_cast<int>(Lines_starting(every.printed, {" Locating"}).size());
    ASSERT_EQ(attempts, static_cast<int>(still.vertices.size())) << "seed " << seed;
    ASSERT_EQ(*guarded, attempts) << "seed " << seed;
    checks_spared += *alone - *guarded;
  }
  EXPECT_GT(checks_spared, 0);
}

TEST(CliqueFindDirTime, EveryNodeGivenUpLeavesTheWholeGraphAsCore) {
  IndexLinkMap links;
  Both_ways(links, {1, 2, 3, 4});
  auto readings = std::make_shared<int>(0);
  const Timed_result r = Timed_search(links, 0.5, Racing_clock(readings));

  const std::string header = " Locating dir. cliques, max. allowed time/node=0.500:";
  std::string expected;
  const char* percentages[] = {"25.00", "50.00", "75.00", "100.00"};
  for (NodeIndex v = 1; v <= 4; ++v) {
    expected += Block(header, " 4 of 4 nodes to do (0.00% done)") +
                " Exceeded allowed time at node no." + std::to_string(v) + ",\n skipping, " +
                std::to_string(v) + " out of 4 skipped in a row, (" + percentages[v - 1] + "%)\n";
  }
  expected += std::string(59, '_') +
              "\n The extraction of directed cliques has been found too slow \n at all of the "
              "remaining nodes.\n" +
              std::string(43, '_') + "\n Altogether 0 exact directed cliques found.\n";
  EXPECT_EQ(r.printed, expected);
  EXPECT_EQ(*readings, 8);  // a start and one check per attempt
  EXPECT_TRUE(r.cliques.empty());
  EXPECT_TRUE(r.overlaps.rows.empty());
  Expect_same_arcs(r.core, links);
}

TEST(CliqueFindDirTime, CliquesOfGivenUpNodesAreRegisteredOnceWhenNothingHoldsThem) {
  // 1 -> 2 -> 3 and 1 -> 3 form a directed triangle; 1, 4, 5, 6 a transitive clique; 2, 3, 7, 8
  // are linked both ways. Leaves 9.. push 2 to 8 behind 1 in the order. Every node but the leaves
  // is stopped at its first check; 1, 2 and 3 each find {1,2,3} before that.
  IndexLinkMap core_links = testing::Parse_links("1-2 2-3 1-3 1-4 1-5 1-6 4-5 4-6 5-6");
  Both_ways(core_links, {2, 3, 7, 8});
  IndexLinkMap links = core_links;
  NodeIndex leaf = 9;
  for (const auto& [node, count] :
       {std::pair{2, 2}, {3, 2}, {7, 3}, {8, 3}, {4, 3}, {5, 3}, {6, 3}}) {
    for (int i = 0; i < count; ++i, ++leaf) links[{static_cast<NodeIndex>(node), leaf}] = 1.0;
  }
  auto readings = std::make_shared<int>(0);
  const Timed_result r = Timed_search(links, 0.5, Racing_clock(readings));

  std::vector<std::string> expected;
  const char* percentages[] = {"12.50", "25.00", "37.50", "50.00",
                               "62.50", "75.00", "87.50", "100.00"};
  for (int i = 0; i < 8; ++i) {
    expected.push_back(" Exceeded allowed time at node no." + std::to_string(i + 1) + ",");
    expected.push_back(" skipping, " + std::to_string(i + 1) + " out of 8 skipped in a row, (" +
                       percentages[i] + "%)");
  }
  EXPECT_EQ(Lines_starting(r.printed, {" Exceeded", " skipping"}), expected);

  EXPECT_EQ(r.cliques, (CliqueList{{1, 2, 3}}));
  EXPECT_EQ(r.overlaps.rows, (std::vector<OverlapRow>{{{0, 3}}}));
  const std::string tail = std::string(43, '_') + "\n Altogether 1 exact directed cliques found.\n";
  EXPECT_EQ(testing::Tail(r.printed, tail.size()), tail);
  Expect_same_arcs(r.core, core_links);
}

}  // namespace
}  // namespace kcp
