#include "communities/community_statistics.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <random>
#include <set>

#include "core/xerror_msg.h"

namespace kcp {
namespace {

struct Stats {
  Distribution size{{50, 50}};
  Distribution degree{{50, 50}};
  Distribution overlap{{50, 50}};
  Distribution membership{{50, 50}};
  friend bool operator==(const Stats&, const Stats&) = default;
};

Stats Statistics(const CommunityList& communities, std::uint32_t node_count) {
  Stats s;  // stale rows must be cleared
  Community_statistics(s.size, s.degree, s.overlap, s.membership, communities, node_count);
  return s;
}

// Every pair of communities intersected directly; every node counted over all communities.
TEST(CommunityStatistics, MatchPlainCountsOnRandomCommunities) {
  std::mt19937 random(8);
  for (int round = 0; round < 300; ++round) {
    CommunityList communities(random() % 7);
    std::set<NodeIndex> covered;
    for (Community& c : communities) {
      for (NodeIndex n = 1; n <= 12; ++n) {
        if (random() % 3 == 0 || (c.empty() && n == 12)) c.push_back(n);
      }
      covered.insert(c.begin(), c.end());
    }
    const std::uint32_t node_count = static_cast<std::uint32_t>(covered.size() + random() % 3);
    CommunityGraph graph_expected;
    Stats expected;
    expected.size.clear(), expected.degree.clear(), expected.overlap.clear();
    expected.membership = {{0, node_count - static_cast<std::uint32_t>(covered.size())}};
    std::vector<std::uint32_t> degree(communities.size(), 0);
    for (std::uint32_t i = 0; i < communities.size(); ++i) {
      ++expected.size[static_cast<std::uint32_t>(communities[i].size())];
      for (std::uint32_t j = i + 1; j < communities.size(); ++j) {
        Community shared;
        std::set_intersection(communities[i].begin(), communities[i].end(), communities[j].begin(),
                              communities[j].end(), std::back_inserter(shared));
        if (shared.empty()) continue;
        graph_expected[{i, j}] = static_cast<std::uint32_t>(shared.size());
        ++expected.overlap[static_cast<std::uint32_t>(shared.size())];
        ++degree[i], ++degree[j];
      }
    }
    for (const std::uint32_t d : degree) ++expected.degree[d];
    for (const NodeIndex n : covered) {
      std::uint32_t holders = 0;
      for (const Community& c : communities) holders += std::binary_search(c.begin(), c.end(), n);
      ++expected.membership[holders];
    }
    CommunityGraph graph{{{7, 8}, 9}};  // stale content is cleared
    Prepare_community_graph(graph, communities);
    EXPECT_EQ(graph, graph_expected) << "round " << round;
    EXPECT_TRUE(Statistics(communities, node_count) == expected) << "round " << round;
  }
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

}  // namespace
}  // namespace kcp
