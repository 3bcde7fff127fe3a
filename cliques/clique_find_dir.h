// Lists the maximal directed cliques of three or more nodes: node sets whose members can be put
// in a sequence where every earlier member links to every later one. Nodes are processed by
// ascending number of distinct neighbours, ties by index; the cliques of one node are registered
// after its walk, in the order the walk first records each of them, so positions are stable.
// Registration, overlaps and incremental neighbour sets are those of Clique_find. Throws
// Xerror_msg only on a corrupt vertex map or when the overlap matrix outgrows its budget.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <vector>

#include "cliques/clique_find.h"
#include "cliques/overlap_matrix.h"
#include "core/types.h"
#include "graph/vertex_map.h"

namespace kcp {

// Clears cliques and overlaps.rows (min_shared is kept), then searches and prints its progress.
// Throws Xstopped before a node once stop is requested.
void Clique_find_dir(CliqueList& cliques, OverlapMatrix& overlaps, VtxdMap& vertices,
                     const StopRequest* stop = nullptr);

namespace Clique_find_dir_sub_routines {

// One gap of a member sequence under construction: the member behind the gap and the nodes that
// may still go into the gap (ascending). The last gap of a list repeats the first member's label
// and stands for the gap after the last member, so a list of n + 1 gaps holds n members.
struct Gap {
  NodeIndex label = 0;
  NodeList candidates;
  friend bool operator==(const Gap&, const Gap&) = default;
};
using GapList = std::vector<Gap>;
// The cliques found for the node being processed and not yet registered, by running key from 1.
using FoundCliques = std::map<std::uint32_t, NodeList>;
using Clique_find_sub_routines::KnownCliques;
using kcp::NodeCliqueMap;

// The steps (extensions) the walk of one node may take. A node whose walk needs more gets its
// cliques from Maximal_dir_cliques_of instead, each placed where the walk would first record it;
// both ways register the same cliques in the same order. The direct search of a node costs
// about what a few thousand steps of its walk do; the walk stays cheaper where it goes straight
// to its cliques, as on a large transitive clique.
inline constexpr std::size_t kPlainDirSteps = 2500;

// Finds the directed cliques that hold v among the nodes left in `working`, registers them in
// key order, then unlinks v there (the caller erases it).
void Main_inc_dir_investigator(const NodeIndex& v, VtxdMap& working, VtxdMap& vertices,
                               CliqueList& cliques, OverlapMatrix& overlaps,
                               NodeCliqueMap& node_cliques,
                               const std::size_t& plain_steps = kPlainDirSteps);

// The directed cliques the search registers at v: every maximal directed clique of `vertices`
// holding v, of three or more nodes, whose other members are all still in `working`. Ascending
// lists in ascending order.
CliqueList Maximal_dir_cliques_of(const NodeIndex& v, const VtxdMap& working,
                                  const VtxdMap& vertices);

// The list with x inserted into the gap at `position`: earlier gaps keep the in-neighbours of x,
// the new gap in front of x keeps those of position's gap, and the gaps from position on keep
// the out-neighbours of x (position's gap is read twice on purpose).
GapList Tighten_dir(const GapList& gaps, GapList::const_iterator position, const NodeIndex& x,
                    const VtxdMap& working);

// S = every label and every candidate of the list, ascending.
void Merge_already_full_and_possibs(NodeList& S, const GapList& gaps);

// True when no gap has a candidate left (also for an empty list).
bool No_more_possible_member(const GapList& gaps);

// Removes the smallest candidate of the gap and returns it; the gap must have one.
NodeIndex Take_first_candidate(Gap& gap);

// Extends the sequence of `gaps` depth first, collecting finished sequences in `found`. A list
// none of whose completions could be maximal (a node outside it could join each of them at the
// front or the back) is not extended. The walk runs on an explicit stack, so its depth is bounded
// by memory alone.
void Recurrent_inc_inv_dir(GapList& gaps, const VtxdMap& working, const VtxdMap& vertices,
                           KnownCliques& known, FoundCliques& found);

// Records a finished sequence: its members join `known`, found cliques inside it are dropped,
// and it is stored under the last key + 1.
void Iktatjuk_az_uj_vert_clt(GapList gaps, FoundCliques& found, KnownCliques& known);

// The list of the top frame of a walk's stack (the caller's own list at the root frame), with
// frame.gap moved on to the first gap that still has candidates; frames with none left are popped
// on the way. nullptr once the stack is empty.
template <typename Frame>
GapList* Open_frame(std::vector<Frame>& stack, GapList& root_list) {
  while (!stack.empty()) {
    Frame& frame = stack.back();
    GapList& list = frame.root ? root_list : frame.owned;
    while (frame.gap < list.size() && list[frame.gap].candidates.empty()) ++frame.gap;
    if (frame.gap < list.size()) return &list;
    stack.pop_back();
  }
  return nullptr;
}

}  // namespace Clique_find_dir_sub_routines

}  // namespace kcp
