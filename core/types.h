// The data every stage of a run passes along, named once. Node indices run from 1 to N (0 is
// never a node). Cliques and communities are ascending node lists; the position of a clique in
// the CliqueList is its number in every file, approximate cliques coming after the exact ones.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "core/flat_map.h"
#include "core/link_map.h"
#include "core/name_map.h"
#include "core/node_set.h"

namespace kcp {

using NodeIndex = std::uint32_t;

// The link and name maps are sorted arrays with the interface of ordered maps, iterated in key
// order: LinkMap (core/link_map.h), (source name, target name) -> weight, byte-wise ordered, a
// pair and its reverse two keys; NameMap (core/name_map.h), node index -> name; and the
// IndexLinkMap: (first index, second index) -> weight, where undirected runs hold each link once
// as (smaller, larger). NodeSet (core/node_set.h) is the ordered node set of the vertex records
// and the searches.
using IndexLinkMap = FlatMap<std::pair<NodeIndex, NodeIndex>, double>;

// A stored clique or community: strictly ascending node indices.
using NodeList = std::vector<NodeIndex>;
using Clique = NodeList;
using CliqueList = std::vector<Clique>;

// One row of the clique overlap matrix: (other clique, shared node count), ascending by clique.
// The entry of a clique with itself holds its size.
struct Overlap {
  std::uint32_t clique;
  std::uint32_t shared;
  friend bool operator==(const Overlap&, const Overlap&) = default;
};
using OverlapRow = std::vector<Overlap>;

// Symmetric and sparse: rows[i] holds (j, shared) on both sides for every stored pair. Pairs that
// share fewer than min_shared nodes are left out, since percolation at k reads only pairs sharing
// at least k - 1 nodes: a run whose every k is at least 3 needs 2, a run at one k needs k - 1.
// Kept on demand (OverlapStorage::kOnDemand) the searches store no rows at all and percolation
// computes each row from the clique list when it reads it; memory then grows with the clique
// list, not with the pairs. Which one a run uses is decided in one place, Run_overlap_matrix and
// Find_cliques (cliques/clique_search_stage.h). With by_share set the rows are ordered by shared
// count, largest first (ties by clique), which lets percolation at k read only the entries sharing
// at least k - 1 nodes; look-ups by clique (Overlap_of, Set_overlap) need the plain ascending
// order.
// On demand, `index` (made by Run_overlap_matrix, cliques/on_demand_index.h) keeps what
// percolation builds from the clique list for one k and can use again at the next.
enum class OverlapStorage { kStored, kOnDemand };
class OnDemandIndex;
struct OverlapMatrix {
  std::vector<OverlapRow> rows;
  std::uint32_t min_shared = 1;
  OverlapStorage storage = OverlapStorage::kStored;
  bool by_share = false;
  std::shared_ptr<OnDemandIndex> index = nullptr;

  bool On_demand() const { return storage == OverlapStorage::kOnDemand; }
};

using Community = NodeList;
using CommunityList = std::vector<Community>;
// Links inside a community as (smaller index, larger index) pairs.
using Link = std::pair<NodeIndex, NodeIndex>;
using LinkList = std::vector<Link>;
using CliqueIndexList = std::vector<std::uint32_t>;
// One clique list and one link list per community, parallel to the CommunityList.
using CommunityCliqueLists = std::vector<CliqueIndexList>;
using CommunityLinkLists = std::vector<LinkList>;
// The k-cliques of an intensity run, ordered lexicographically; the community stage numbers them
// in this order.
using KCliqueSet = std::set<NodeList>;
using NumberedKCliques = std::map<std::uint32_t, NodeList>;
// (community i, community j), i < j -> number of shared nodes.
using CommunityGraph = std::map<std::pair<std::uint32_t, std::uint32_t>, std::uint32_t>;
// value -> how often it occurs.
using Distribution = std::map<std::uint32_t, std::uint32_t>;

}  // namespace kcp
