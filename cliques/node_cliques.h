// The cliques the exact undirected search registers for one node, found the fast way. The
// depth-first search registers, for node v, exactly the maximal cliques of three or more nodes
// among v and its unprocessed neighbours that no processed neighbour of v could join (any such
// clique lies inside one registered earlier), in the lexicographic order of their other members.
// Node_cliques_in_order finds that same list with a pivoting search over bitsets and sorts it, so
// registration numbers stay those of the depth-first search while dense neighbourhoods no
// longer cost time exponential in their size.
#pragma once

#include <vector>

#include "cliques/overlap_matrix.h"
#include "driver/types.h"
#include "graph/vertex_map.h"

namespace kcp {

// `working` holds the unprocessed nodes with their links among themselves, `vertices` the whole
// graph; v must be in both. `cliques` and `node_cliques` are the cliques registered so far and
// their members. Each clique is returned ascending, v included.
std::vector<NodeList> Node_cliques_in_order(const NodeIndex& v, const VtxMap& working,
                                            const VtxMap& vertices, const CliqueList& cliques,
                                            const NodeCliqueMap& node_cliques);

}  // namespace kcp
