// The undirected clique search with a processor-time limit per node attempt. Nodes are taken in
// the order of the exact search; a node whose attempt runs over max_time seconds is sent to the
// back of the queue with its links kept, and its partial cliques wait in a pending set. The search
// ends when the queue empties or every node left was given up in a row; those nodes, with the
// links among them, are returned as the core. Cliques and overlaps are as in Clique_find, with
// the pending cliques that no found clique holds registered last when a core remains. Its
// depth-first walk is the literal search that fixes the order of the cliques; Clique_find's
// pivoting search (node_cliques.h) is the fast path that must reproduce it.
#pragma once

#include <cstdint>
#include <deque>
#include <set>
#include <span>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "cliques/clique_find.h"
#include "cliques/search_clock.h"
#include "core/stop_request.h"
#include "core/types.h"
#include "graph/vertex_map.h"

namespace kcp {

// core is replaced by what is left of the working copy of vertices. Throws as Clique_find does.
void Clique_find_part_time(CliqueList& cliques, OverlapMatrix& overlaps, VtxMap& vertices,
                           VtxMap& core, const double& max_time,
                           const SearchClock& search_clock = SearchClock(),
                           const StopRequest* stop = nullptr);

namespace Clique_find_time_sub_routines {

using Clique_find_sub_routines::KnownCliques;
// The cliques found in one node attempt, in the order found, not yet registered.
using NodeResult = std::vector<NodeList>;
// The cliques of attempts that ran over the limit, deduplicated, in lexicographic order.
using PendingCliques = std::set<NodeList>;

// Known of the node being attempted, with each node's list of the known cliques holding it, so
// that the subset test of Mehet_tovabb looks only at the cliques holding the rarest member
// instead of at all of them (a hub can hold hundreds of thousands). Cliques appended to `cliques`
// by anyone are indexed at the next query.
class IndexedKnown {
 public:
  // The cliques already registered for the node, as ascending lists holding it.
  explicit IndexedKnown(KnownCliques known);
  void Add(NodeList clique);
  // False when a known clique holds A ∪ B (ascending and disjoint), else true.
  bool Mehet_tovabb(std::span<const NodeIndex> A, std::span<const NodeIndex> B = {});
  std::size_t size() const { return cliques.size(); }

  KnownCliques cliques;

 private:
  void Index_new_cliques();

  std::unordered_map<NodeIndex, std::vector<std::uint32_t>> holders_;
  std::size_t indexed_ = 0;
};

// start + max_time with 3 decimals + ":".
std::string Time_limited_header(const std::string& start, const double& max_time);

// One attempt at node v, which `known` lists the registered cliques of: the cliques it finds go
// to node_result and are not registered; v is unlinked in the working map only when the attempt
// finished in time.
void Clique_find_main_time_part(const NodeIndex& v, VtxMap& working, const VtxMap& vertices,
                                const long double& t0, const double& max_time, bool& exceeded,
                                NodeResult& node_result, AttemptTimer& timer, KnownCliques known);

// Extends C (ascending) by x with the candidates P, depth first on an explicit stack, reading the
// clock before every further extension and stopping at once, exceeded set, past the limit.
void Recurrent_tp_investigator(const NodeIndex& x, const VtxMap& working, const VtxMap& vertices,
                               NodeList C, std::span<const NodeIndex> P, IndexedKnown& known,
                               const NodeIndex& v, const long double& t0, NodeResult& node_result,
                               const double& max_time, bool& exceeded, AttemptTimer& timer);

// After an attempt at v ran over the limit: reports it with `remaining` nodes left in the working
// map, sends v to the back of the queue, and returns false (after the too-slow report for `word`)
// when every node in the queue has been given up since the last success.
bool Requeue_hard_node(const NodeIndex& v, std::uint32_t& skipped, const std::size_t& remaining,
                       std::deque<NodeIndex>& queue, const std::string& word);

// Registers, in their order, the pending cliques that no clique registered by then holds.
void Register_pending(const PendingCliques& pending, CliqueList& cliques, VtxMap& vertices,
                      OverlapMatrix& overlaps, NodeCliqueMap& node_cliques);
void Register_pending(const PendingCliques& pending, CliqueList& cliques, VtxdMap& vertices,
                      OverlapMatrix& overlaps, NodeCliqueMap& node_cliques);

}  // namespace Clique_find_time_sub_routines

}  // namespace kcp
