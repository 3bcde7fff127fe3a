// The cliques the exact undirected search registers for one node, found the fast way. The order
// is fixed by the depth-first walk of the time-limited search (Recurrent_tp_investigator, which
// with a limit never reached is the literal search); it registers, for node v, exactly the maximal
// cliques of three or more nodes among v and its unprocessed neighbours that no processed neighbour
// of v could join (any such clique lies inside one registered earlier), in the lexicographic order
// of their other members. Node_cliques_in_order finds that same list with a pivoting search over
// bitsets and sorts it, so registration numbers stay those of the depth-first search while dense
// neighbourhoods no longer cost time exponential in their size.
#pragma once

#include <cstdint>
#include <vector>

#include "cliques/overlap_matrix.h"
#include "core/types.h"
#include "graph/adjacency.h"
#include "graph/vertex_map.h"

namespace kcp {

// The whole graph, which of its nodes are processed, and the scratch of the search, kept from
// node to node. The unprocessed nodes are linked among themselves as in the whole graph, as the
// working graph of the exact search is.
struct NodeSearch {
  explicit NodeSearch(const Adjacency& graph)
      : graph(graph), processed(graph.Node_bound(), 0), local(graph.Node_bound(), -1) {}
  const Adjacency& graph;
  std::vector<char> processed;
  std::vector<std::int32_t> local;  // node -> its local number in the current search, else -1
};

std::vector<NodeList> Node_cliques_in_order(const NodeIndex& v, NodeSearch& search,
                                            const CliqueList& cliques,
                                            const NodeCliqueMap& node_cliques);

// `working` holds the unprocessed nodes with their links among themselves, `vertices` the whole
// graph; v must be in both. `cliques` and `node_cliques` are the cliques registered so far and
// their members. Each clique is returned ascending, v included.
std::vector<NodeList> Node_cliques_in_order(const NodeIndex& v, const VtxMap& working,
                                            const VtxMap& vertices, const CliqueList& cliques,
                                            const NodeCliqueMap& node_cliques);

}  // namespace kcp
