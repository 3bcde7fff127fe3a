#include "communities/community_statistics.h"

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

#include "cliques/member_index.h"
#include "core/xerror_msg.h"

namespace kcp {

void Prepare_community_graph(CommunityGraph& graph, const CommunityList& communities) {
  graph.clear();
  MemberIndex index;
  index.Add_all(communities);
  for (std::size_t i = 0; i < communities.size(); ++i) {
    const auto row = static_cast<std::uint32_t>(i);
    for (const MemberIndex::Shared& j : index.Shared_with(communities[i])) {
      if (j.position > row)
        graph.emplace_hint(graph.end(), std::make_pair(row, j.position), j.count);
    }
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
  MemberIndex index;
  index.Add_all(communities);
  for (std::size_t i = 0; i < communities.size(); ++i) {
    const auto row = static_cast<std::uint32_t>(i);
    const std::span<const MemberIndex::Shared> met = index.Shared_with(communities[i]);
    for (const MemberIndex::Shared& j : met) {
      if (j.position > row) ++overlap[j.count];
    }
    // The community meets itself. An empty community (which no extraction makes) meets none,
    // and the unsigned degree then wraps, as the count says.
    ++degree[static_cast<std::uint32_t>(met.size()) - 1u];
  }

  std::uint32_t covered = 0;
  for (NodeIndex n = 0; n < index.Node_bound(); ++n) {
    const std::size_t holding = index.Holders(n).size();
    if (holding == 0) continue;
    ++membership[static_cast<std::uint32_t>(holding)];
    ++covered;
  }
  if (node_count < covered) {
    throw Xerror_msg(
        "ERROR: Community_statistics() : More vertex in the communities than in the graph.");
  }
  membership[0] = node_count - covered;
}

}  // namespace kcp
