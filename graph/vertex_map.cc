#include "graph/vertex_map.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>

#include "core/xerror_msg.h"

namespace kcp {

namespace {

// Per node, the list of its ends (one end of each link), gathered in key order: node n's list is
// ends[begin[n], begin[n + 1]).
struct LinkEnds {
  std::vector<std::size_t> begin;
  std::vector<NodeIndex> ends;

  std::span<const NodeIndex> Of(const std::size_t& n) const {
    return std::span<const NodeIndex>(ends).subspan(begin[n], begin[n + 1] - begin[n]);
  }
};

std::size_t Index_bound(const IndexLinkMap& links) {
  NodeIndex largest = 0;
  for (const auto& [key, weight] : links) largest = std::max({largest, key.first, key.second});
  return std::size_t{largest} + 1;
}

// For each link (s, t), in key order: s's list gets t when to_first, and t's list gets s when
// to_second.
LinkEnds Gather(const IndexLinkMap& links, const std::size_t& bound, const bool& to_first,
                const bool& to_second) {
  LinkEnds lists;
  lists.begin.assign(bound + 1, 0);
  for (const auto& [key, weight] : links) {
    if (to_first) ++lists.begin[key.first + std::size_t{1}];
    if (to_second) ++lists.begin[key.second + std::size_t{1}];
  }
  for (std::size_t n = 0; n < bound; ++n) lists.begin[n + 1] += lists.begin[n];
  lists.ends.resize(lists.begin[bound]);
  // begin[n] serves as node n's cursor and ends where node n + 1's list begins; shifting the
  // cursors by one place gives the beginnings back.
  for (const auto& [key, weight] : links) {
    if (to_first) lists.ends[lists.begin[key.first]++] = key.second;
    if (to_second) lists.ends[lists.begin[key.second]++] = key.first;
  }
  for (std::size_t n = bound; n > 0; --n) lists.begin[n] = lists.begin[n - 1];
  lists.begin[0] = 0;
  return lists;
}

// The nodes by ascending key(n), ties by ascending index: one counting pass, since the nodes
// are visited in index order.
template <typename Map, typename Key>
void Order_by_count(NodeOrder& order, const Map& vertices, Key&& key) {
  std::vector<std::size_t> start;
  for (const auto& [index, record] : vertices) {
    const std::size_t k = key(record);
    if (k + 1 >= start.size()) start.resize(k + 2, 0);
    ++start[k + 1];
  }
  for (std::size_t k = 1; k < start.size(); ++k) start[k] += start[k - 1];
  order.assign(vertices.size(), 0);
  for (const auto& [index, record] : vertices) order[start[key(record)]++] = index;
}

}  // namespace

void Vtx_map_from_link_map(VtxMap& vertices, const IndexLinkMap& links) {
  vertices.clear();
  if (links.empty()) return;
  const std::size_t bound = Index_bound(links);
  const LinkEnds neighs = Gather(links, bound, true, true);
  vertices.reserve(bound);
  NodeList sorted;
  for (std::size_t n = 0; n < bound; ++n) {
    std::span<const NodeIndex> members = neighs.Of(n);
    if (members.empty()) continue;
    // Keys (smaller, larger) give every list in ascending order; other maps need sorting.
    if (!std::is_sorted(members.begin(), members.end())) {
      sorted.assign(members.begin(), members.end());
      std::sort(sorted.begin(), sorted.end());
      members = sorted;
    }
    // A link held both ways would add a neighbour twice.
    if (std::adjacent_find(members.begin(), members.end()) != members.end()) {
      throw Xerror_msg("ERROR: Vtx::Add_neigh() : attempt to add already exisiting neigh. ");
    }
    const auto index = static_cast<NodeIndex>(n);
    vertices.try_emplace(index, index, NodeSet::From_sorted(members));
  }
}

void Dir_vtx_map_from_link_map(VtxdMap& vertices, const IndexLinkMap& links) {
  vertices.clear();
  if (links.empty()) return;
  const std::size_t bound = Index_bound(links);
  // Keys ascend by source, then target: every list comes out ascending, each link once.
  const LinkEnds outs = Gather(links, bound, true, false);
  const LinkEnds ins = Gather(links, bound, false, true);
  vertices.reserve(bound);
  for (std::size_t n = 0; n < bound; ++n) {
    if (outs.Of(n).empty() && ins.Of(n).empty()) continue;
    const auto index = static_cast<NodeIndex>(n);
    vertices.try_emplace(index, index, NodeSet::From_sorted(outs.Of(n)),
                         NodeSet::From_sorted(ins.Of(n)));
  }
}

void Sort_Vtx_map(NodeOrder& order, const VtxMap& vertices) {
  Order_by_count(order, vertices, [](const Vtx& record) { return record.Neighs_c().size(); });
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
  Order_by_count(order, vertices, [&](const Vtxd& record) { return (record.*chosen)().size(); });
}

}  // namespace kcp
