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
// node to node so that a node's search allocates nothing once the scratch has grown. The
// unprocessed nodes are linked among themselves as in the whole graph, as the working graph of
// the exact search is.
struct NodeSearch {
  explicit NodeSearch(const Adjacency& graph) : graph(graph), processed(graph.Node_bound(), 0) {}
  const Adjacency& graph;
  std::vector<char> processed;

  // One level of the pivoting search: candidates P, excluded X (rows of `words` words), the
  // branches still to take.
  struct Frame {
    std::vector<std::uint64_t> P;
    std::vector<std::uint64_t> X;
    std::vector<std::uint32_t> branches;
    std::size_t next = 0;
  };
  NodeList unprocessed;
  NodeList gone;
  std::vector<std::uint32_t> local;  // position in the node's neighbour list -> local number
  std::vector<std::uint64_t> rows;   // local number -> its links to the candidates, as bits
  std::vector<Frame> frames;
  std::vector<std::uint32_t> R;
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
