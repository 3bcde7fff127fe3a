// The directed clique search with a processor-time limit per node attempt: Clique_find_dir with
// the queue, pending set and core of Clique_find_part_time. The found cliques of a node are
// registered in key order when it finished in time and wait in the pending set otherwise; the
// core is what is left of the working copy of the directed vertex map.
#pragma once

#include "cliques/clique_find_dir.h"
#include "cliques/clique_find_time.h"
#include "cliques/search_clock.h"
#include "core/types.h"
#include "graph/vertex_map.h"

namespace kcp {

void Clique_find_dir_time(CliqueList& cliques, OverlapMatrix& overlaps, VtxdMap& vertices,
                          VtxdMap& core, const double& max_time,
                          const SearchClock& search_clock = SearchClock(),
                          const StopRequest* stop = nullptr);

namespace Clique_find_dir_sub_routines {

// One attempt at node v, which `known` lists the registered cliques of: fills `found` without
// registering it; v is unlinked in the working map only when the attempt finished in time.
void Main_inc_dir_inv_time(const NodeIndex& v, VtxdMap& working, const VtxdMap& vertices,
                           const long double& t0, FoundCliques& found, const double& max_time,
                           bool& exceeded, Clique_find_time_sub_routines::AttemptTimer& timer,
                           KnownCliques known);

// Recurrent_inc_inv_dir reading the clock before every further extension and stopping at once,
// exceeded set, past the limit.
void Recurrent_inc_inv_dir_time(GapList& gaps, const VtxdMap& working, const VtxdMap& vertices,
                                Clique_find_time_sub_routines::IndexedKnown& known,
                                const long double& t0, FoundCliques& found, const double& max_time,
                                bool& exceeded, Clique_find_time_sub_routines::AttemptTimer& timer);

}  // namespace Clique_find_dir_sub_routines

}  // namespace kcp
