// The maximal cliques of two nodes of an undirected graph: its links whose ends have no common
// neighbour. The clique search lists only cliques of three or more nodes; these complete its list
// to every maximal clique of at least two nodes, which percolation at k = 2 and clique listings
// of networkx's kind need. The result ascends (smaller end, then larger end).
#pragma once

#include "core/types.h"
#include "graph/vertex_map.h"

namespace kcp {

CliqueList Pair_cliques(const VtxMap& vertices, const IndexLinkMap& links);

}  // namespace kcp
