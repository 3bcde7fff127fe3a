// Lists every maximal clique of three or more nodes of an undirected graph, each once. Nodes are
// processed by ascending degree, ties by index; the cliques of one node come in the depth-first
// order of the search, so the position of a clique in the list is stable and is the number every
// result file uses. Each registered clique gets its overlap row and one incremental neighbour set
// in every member's record of the caller's map. Throws Xerror_msg only on a corrupt vertex map or
// when the overlap matrix would outgrow the memory budget (overlap_matrix.h).
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "cliques/overlap_matrix.h"
#include "core/stop_request.h"
#include "core/types.h"
#include "core/xerror_msg.h"
#include "graph/vertex_map.h"

namespace kcp {

// Clears cliques and overlaps.rows (min_shared is kept), then searches and prints its progress.
// Throws Xstopped before a node once stop is requested. With several threads the node order is
// searched in ranges side by side (ranged_search.h); the cliques, their order and the progress
// lines are those of one thread.
void Clique_find(CliqueList& cliques, OverlapMatrix& overlaps, VtxMap& vertices,
                 const StopRequest* stop = nullptr, const unsigned& threads = 1);

namespace Clique_find_sub_routines {

// The cliques already known to hold the node being processed, as ascending node lists.
using KnownCliques = std::vector<NodeList>;
using kcp::NodeCliqueMap;

// Known for node v: the registered cliques that hold it, in registration order.
KnownCliques Known_cliques_of(const NodeIndex& v, const CliqueList& cliques,
                              const NodeCliqueMap& node_cliques);

// (A ∩ B) \ C.
NodeList Tighten(const NodeSet& A, std::span<const NodeIndex> B, std::span<const NodeIndex> C);

// Appends to every member of K (ascending) one incremental neighbour set holding the others.
template <typename VertexMap, typename Members>
void Adjust_inc_neighs(VertexMap& vertices, const Members& K) {
  for (const NodeIndex m : K) {
    const auto record = vertices.find(m);
    if (record == vertices.end()) {
      throw Xerror_msg("ERROR: Adjust_inc_neighs() : clique member " + std::to_string(m) +
                       " has no vertex record.");
    }
    const std::size_t j = record->second.Inc_neighs_c().size();
    for (const NodeIndex n : K) {
      if (n != m) record->second.Add_inc_neigh(j, n);
    }
  }
}

// Registers K (ascending) as the next clique: its overlap row, its node memberships and its
// place at the end of `cliques`. The exact searches read the cliques known to hold a node from
// the memberships; the time-limited searches, which hand a node's record from attempt to
// attempt, also want its incremental neighbour sets (record_incremental).
template <typename VertexMap, typename Members>
void Iktatjuk_az_uj_math_cliquet(CliqueList& cliques, const Members& K, VertexMap& vertices,
                                 OverlapMatrix& overlaps, NodeCliqueMap& node_cliques,
                                 const bool& record_incremental = true) {
  Clique clique(K.begin(), K.end());
  Add_clique_overlaps(overlaps, node_cliques, clique, static_cast<std::uint32_t>(cliques.size()));
  if (record_incremental) Adjust_inc_neighs(vertices, clique);
  cliques.push_back(std::move(clique));
}

}  // namespace Clique_find_sub_routines

}  // namespace kcp
