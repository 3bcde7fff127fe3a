// The community graph and the four distributions of one community list. Communities are known
// by their position in the list. Both functions clear their outputs first. Community_statistics
// throws Xerror_msg when the communities hold more distinct nodes than the graph has; the other
// three distributions are complete by then, the membership one lacks only its row for 0.
#pragma once

#include <cstdint>

#include "core/types.h"

namespace kcp {

// (i, j) with i < j -> number of nodes communities i and j share, for every overlapping pair.
void Prepare_community_graph(CommunityGraph& graph, const CommunityList& communities);

// size: community size -> count. degree: number of other communities a community overlaps ->
// count. overlap: shared node count of an overlapping pair -> count, each pair once.
// membership: number of communities holding a node -> count of nodes; the row for 0 (nodes of
// the graph in no community) is always present.
void Community_statistics(Distribution& size, Distribution& degree, Distribution& overlap,
                          Distribution& membership, const CommunityList& communities,
                          const std::uint32_t& node_count);

}  // namespace kcp
