#include "communities/community_statistics.h"

#include <gtest/gtest.h>

#include "core/xerror_msg.h"

namespace kcp {
namespace {

struct Stats {
  Distribution size{{50, 50}};
  Distribution degree{{50, 50}};
  Distribution overlap{{50, 50}};
  Distribution membership{{50, 50}};
};

Stats Statistics(const CommunityList& communities, std::uint32_t node_count) {
  Stats s;  // stale rows must be cleared
  Community_statistics(s.size, s.degree, s.overlap, s.membership, communities, node_count);
  return s;
}

TEST(CommunityStatistics, EmptyListGivesOnlyTheMembershipRowForZero) {
  CommunityGraph graph{{{0, 1}, 7}};
  Prepare_community_graph(graph, {});
  EXPECT_TRUE(graph.empty());
  const Stats s = Statistics({}, 9);
  EXPECT_TRUE(s.size.empty());
  EXPECT_TRUE(s.degree.empty());
  EXPECT_TRUE(s.overlap.empty());
  EXPECT_EQ(s.membership, (Distribution{{0, 9}}));
}

TEST(CommunityStatistics, TwoCommunitiesSharingThreeNodes) {
  const CommunityList communities{{1, 2, 3, 4, 5}, {3, 4, 5, 6}};
  CommunityGraph graph;
  Prepare_community_graph(graph, communities);
  EXPECT_EQ(graph, (CommunityGraph{{{0, 1}, 3}}));
  const Stats s = Statistics(communities, 10);
  EXPECT_EQ(s.size, (Distribution{{4, 1}, {5, 1}}));
  EXPECT_EQ(s.degree, (Distribution{{1, 2}}));
  EXPECT_EQ(s.overlap, (Distribution{{3, 1}}));
  EXPECT_EQ(s.membership, (Distribution{{0, 4}, {1, 3}, {2, 3}}));
}

TEST(CommunityStatistics, GraphDegreesOverlapsAndMembershipsOfSeveralCommunities) {
  // A = {1,2,3}, B = {3,4,5}, C = {1,3,5,7}, D = {9} (D overlaps nothing).
  const CommunityList communities{{1, 2, 3}, {3, 4, 5}, {1, 3, 5, 7}, {9}};
  CommunityGraph graph;
  Prepare_community_graph(graph, communities);
  EXPECT_EQ(graph, (CommunityGraph{{{0, 1}, 1}, {{0, 2}, 2}, {{1, 2}, 2}}));
  const Stats s = Statistics(communities, 7);
  EXPECT_EQ(s.size, (Distribution{{1, 1}, {3, 2}, {4, 1}}));
  EXPECT_EQ(s.degree, (Distribution{{0, 1}, {2, 3}}));
  EXPECT_EQ(s.overlap, (Distribution{{1, 1}, {2, 2}}));
  // Every node is covered: the row for 0 is still there, with 0.
  EXPECT_EQ(s.membership, (Distribution{{0, 0}, {1, 4}, {2, 2}, {3, 1}}));
}

TEST(CommunityStatistics, SplitListsCountNodesOfTheOtherKindAsInNoCommunity) {
  const CommunityList exact{{1, 2, 3}};
  const CommunityList approximate{{3, 4, 5}};
  const Stats e = Statistics(exact, 6);
  const Stats a = Statistics(approximate, 6);
  const Stats all = Statistics({{1, 2, 3}, {3, 4, 5}}, 6);
  EXPECT_EQ(e.membership, (Distribution{{0, 3}, {1, 3}}));
  EXPECT_EQ(a.membership, (Distribution{{0, 3}, {1, 3}}));
  EXPECT_EQ(all.membership, (Distribution{{0, 1}, {1, 4}, {2, 1}}));
  EXPECT_EQ(e.degree, (Distribution{{0, 1}}));
  EXPECT_TRUE(e.overlap.empty());
  EXPECT_EQ(all.degree, (Distribution{{1, 2}}));
  EXPECT_EQ(all.overlap, (Distribution{{1, 1}}));
}

TEST(CommunityStatistics, MoreNodesInCommunitiesThanInTheGraphThrows) {
  Stats s;
  try {
    Community_statistics(s.size, s.degree, s.overlap, s.membership, {{1, 2, 3}, {3, 4}}, 3);
    FAIL() << "no exception";
  } catch (const Xerror_msg& e) {
    EXPECT_STREQ(e.what(),
                 "ERROR: Community_statistics() : More vertex in the communities than in the "
                 "graph.");
  }
  // What was filled before the check stays; membership lacks only its row for 0.
  EXPECT_EQ(s.size, (Distribution{{2, 1}, {3, 1}}));
  EXPECT_EQ(s.degree, (Distribution{{1, 2}}));
  EXPECT_EQ(s.membership, (Distribution{{1, 3}, {2, 1}}));
}

TEST(CommunityStatistics, EmptyCommunityWrapsItsDegree) {
  // No extraction makes one, but the unsigned count of "tally entries - 1" is kept as it is.
  const Stats s = Statistics({{}, {1}}, 1);
  EXPECT_EQ(s.size, (Distribution{{0, 1}, {1, 1}}));
  EXPECT_EQ(s.degree, (Distribution{{0, 1}, {4294967295u, 1}}));
  EXPECT_EQ(s.membership, (Distribution{{0, 0}, {1, 1}}));
}

}  // namespace
}  // namespace kcp
