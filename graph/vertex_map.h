// The graph the clique searches work on, built from the IndexLinkMap: Vtx records for an
// undirected run, Vtxd records for a directed one (names stay "0", incremental sets empty), and
// the node order of the searches: ascending neighbour count, ties by ascending index. The maps
// hold one slot per index (NodeMap); building one and ordering its nodes cost what the links and
// nodes are, with no search of a tree.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/types.h"
#include "core/xerror_msg.h"
#include "graph/node_map.h"
#include "graph/vtx.h"

namespace kcp {

using VtxMap = NodeMap<Vtx>;
using VtxdMap = NodeMap<Vtxd>;
using NodeOrder = std::vector<NodeIndex>;

// The undirected map; the IndexLinkMap must hold each link once (a directed one is refused by
// Add_neigh's repeated-neighbour error).
void Vtx_map_from_link_map(VtxMap& vertices, const IndexLinkMap& links);
void Dir_vtx_map_from_link_map(VtxdMap& vertices, const IndexLinkMap& links);
void Sort_Vtx_map(NodeOrder& order, const VtxMap& vertices);
// flag names the set whose size is the key: "Neighs", "Ineighs" or "Oneighs"; any other word
// throws Xerror_msg and leaves the order untouched.
void Sort_dir_vtx_map(NodeOrder& order, const VtxdMap& vertices, const std::string& flag);

// The record of node n in a vertex map. A search that meets a node its map lacks works on a
// corrupt map: Xerror_msg "ERROR: <search>() : node <n> is missing from the <graph>.", with the
// search and the graph ("working graph", "vertex map") named by the caller.
template <typename Map>
const typename Map::mapped_type& Record_of(const Map& map, const NodeIndex& n,
                                           std::string_view search, std::string_view graph) {
  const auto record = map.find(n);
  if (record == map.end()) {
    throw Xerror_msg("ERROR: " + std::string(search) + "() : node " + std::to_string(n) +
                     " is missing from the " + std::string(graph) + ".");
  }
  return record->second;
}

// Takes node v out of every link of the map, both ways; its record stays, without neighbours.
template <typename Map>
void Unlink_node(Map& map, const NodeIndex& v) {
  auto& own = map.find(v)->second;
  const NodeList neighs(own.Neighs_c().begin(), own.Neighs_c().end());
  // Largest first: each removal then takes the last member of v's sets, with nothing to move.
  for (auto n = neighs.rbegin(); n != neighs.rend(); ++n) {
    own.Remove_neigh(*n);
    map.find(*n)->second.Remove_neigh(v);
  }
}

}  // namespace kcp
