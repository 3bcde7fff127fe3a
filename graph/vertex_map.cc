#include "graph/vertex_map.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "core/xerror_msg.h"

namespace kcp {

namespace {

using KeyedNode = std::pair<std::size_t, NodeIndex>;

// Ascending (count, index): no two pairs are equal, so any comparison sort gives one order.
void Emit_sorted(NodeOrder& order, std::vector<KeyedNode>& keyed) {
  std::sort(keyed.begin(), keyed.end());
  order.clear();
  order.reserve(keyed.size());
  for (const KeyedNode& k : keyed) order.push_back(k.second);
}

}  // namespace

void Vtx_map_from_link_map(VtxMap& vertices, const IndexLinkMap& links) {
  vertices.clear();
  for (const auto& [key, weight] : links) {
    const auto& [s, t] = key;
    vertices.try_emplace(s, s).first->second.Add_neigh(t);
    vertices.try_emplace(t, t).first->second.Add_neigh(s);
  }
}

void Dir_vtx_map_from_link_map(VtxdMap& vertices, const IndexLinkMap& links) {
  vertices.clear();
  for (const auto& [key, weight] : links) {
    const auto& [s, t] = key;
    Vtxd& source = vertices.try_emplace(s, s).first->second;
    Vtxd& target = vertices.try_emplace(t, t).first->second;
    source.Add_oneigh(t);
    target.Add_ineigh(s);
  }
}

void Sort_Vtx_map(NodeOrder& order, const VtxMap& vertices) {
  std::vector<KeyedNode> keyed;
  keyed.reserve(vertices.size());
  for (const auto& [index, vtx] : vertices) keyed.emplace_back(vtx.Neighs_c().size(), vtx.Index());
  Emit_sorted(order, keyed);
}

void Sort_dir_vtx_map(NodeOrder& order, const VtxdMap& vertices, const std::string& flag) {
  const NodeSet& (Vtxd::*chosen)() const = nullptr;
  if (flag == "Neighs") {
    chosen = &Vtxd::Neighs_c;
  } else if (flag == "Ineighs") {
    chosen = &Vtxd::Ineighs_c;
  } else if (flag == "Oneighs") {
    chosen = &Vtxd::Oneighs_c;
  } else {
    // The message names the routine by its older name; kept as it is.
    throw Xerror_msg(" Invalid flag '" + flag + "' given in Sort_vtxd_gmap...\n");
  }
  std::vector<KeyedNode> keyed;
  keyed.reserve(vertices.size());
  for (const auto& [index, vtx] : vertices) keyed.emplace_back((vtx.*chosen)().size(), vtx.Index());
  Emit_sorted(order, keyed);
}

}  // namespace kcp
