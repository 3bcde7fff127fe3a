#include "communities/community_statistics.h"

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

#include "core/xerror_msg.h"

namespace kcp {

namespace {

// For every node in at least one community, the positions of the communities holding it, in
// ascending order: nodes[n] owns positions[starts[n]] .. positions[starts[n + 1] - 1].
struct NodeCommunityIndex {
  std::vector<NodeIndex> nodes;
  std::vector<std::size_t> starts;
  std::vector<std::uint32_t> positions;

  explicit NodeCommunityIndex(const CommunityList& communities) {
    std::vector<std::pair<NodeIndex, std::uint32_t>> holds;
    std::size_t total = 0;
    for (const Community& community : communities) total += community.size();
    holds.reserve(total);
    for (std::size_t i = 0; i < communities.size(); ++i) {
      for (const NodeIndex& node : communities[i]) {
        holds.emplace_back(node, static_cast<std::uint32_t>(i));
      }
    }
    std::sort(holds.begin(), holds.end());
    positions.reserve(holds.size());
    for (std::size_t h = 0; h < holds.size(); ++h) {
      if (h == 0 || holds[h].first != holds[h - 1].first) {
        nodes.push_back(holds[h].first);
        starts.push_back(h);
      }
      positions.push_back(holds[h].second);
    }
    starts.push_back(holds.size());
  }

  // Counts, for community i, the nodes it shares with every community j it overlaps (j == i
  // included, counting its own nodes), and calls visit(j, count) for each j in ascending order.
  template <typename Visit>
  void For_each_overlap(const Community& community, std::vector<std::uint32_t>& tally,
                        std::vector<std::uint32_t>& touched, Visit visit) const {
    touched.clear();
    // The community ascends and so do `nodes`: each look-up starts where the last one ended.
    auto from = nodes.begin();
    for (const NodeIndex& node : community) {
      from = std::lower_bound(from, nodes.end(), node);
      const std::size_t n = static_cast<std::size_t>(from - nodes.begin());
      for (std::size_t p = starts[n]; p < starts[n + 1]; ++p) {
        const std::uint32_t j = positions[p];
        if (tally[j]++ == 0) touched.push_back(j);
      }
    }
    std::sort(touched.begin(), touched.end());
    for (const std::uint32_t& j : touched) {
      visit(j, tally[j]);
      tally[j] = 0;
    }
  }
};

}  // namespace

void Prepare_community_graph(CommunityGraph& graph, const CommunityList& communities) {
  graph.clear();
  const NodeCommunityIndex index(communities);
  std::vector<std::uint32_t> tally(communities.size(), 0);
  std::vector<std::uint32_t> touched;
  for (std::size_t i = 0; i < communities.size(); ++i) {
    const auto row = static_cast<std::uint32_t>(i);
    index.For_each_overlap(communities[i], tally, touched,
                           [&](const std::uint32_t& j, const std::uint32_t& count) {
                             if (j > row)
                               graph.emplace_hint(graph.end(), std::make_pair(row, j), count);
                           });
  }
}

void Community_statistics(Distribution& size, Distribution& degree, Distribution& overlap,
                          Distribution& membership, const CommunityList& communities,
                          const std::uint32_t& node_count) {
  size.clear();
  degree.clear();
  overlap.clear();
  membership.clear();
  for (const Community& community : communities) {
    ++size[static_cast<std::uint32_t>(community.size())];
  }
  const NodeCommunityIndex index(communities);

  std::vector<std::uint32_t> tally(communities.size(), 0);
  std::vector<std::uint32_t> touched;
  for (std::size_t i = 0; i < communities.size(); ++i) {
    const auto row = static_cast<std::uint32_t>(i);
    index.For_each_overlap(communities[i], tally, touched,
                           [&](const std::uint32_t& j, const std::uint32_t& count) {
                             if (j > row) ++overlap[count];
                           });
    // The tally holds the community itself. An empty community (which no extraction makes)
    // has an empty tally, and the unsigned degree then wraps, as the count says.
    ++degree[static_cast<std::uint32_t>(touched.size()) - 1u];
  }

  std::uint32_t covered = 0;
  for (std::size_t n = 0; n < index.nodes.size(); ++n) {
    ++membership[static_cast<std::uint32_t>(index.starts[n + 1] - index.starts[n])];
    ++covered;
  }
  if (node_count < covered) {
    throw Xerror_msg(
        "ERROR: Community_statistics() : More vertex in the communities than in the graph.");
  }
  membership[0] = node_count - covered;
}

}  // namespace kcp
