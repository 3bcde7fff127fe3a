// The single entry of the clique search. Runs the exact or the time-limited search, undirected
// or directed, and when a time-limited search leaves a core of nodes that stayed too slow, adds
// approximate cliques of that core behind the exact ones. On return cliques[0, n_exact) are exact
// maximal cliques in the order found, the rest approximate; overlaps has a row per position, or
// is kept on demand. Exceptions of the searches pass through unchanged.
#pragma once

#include <cstdint>

#include "cliques/clique_find_time.h"
#include "core/stop_request.h"
#include "core/types.h"
#include "graph/vertex_map.h"

namespace kcp {

// The overlap matrix a run starts from: kept on demand, its rows computed at each k from the
// clique list, since storing every overlapping pair outgrows the memory of a machine on networks
// with many overlapping cliques. Find_cliques stores it after all only when the approximation
// drops exact cliques, whose rows percolation must then read as the search would have stored
// them; a stored matrix leaves Find_cliques with its rows ordered by share.
OverlapMatrix Run_overlap_matrix(const std::uint32_t& min_shared);

// max_time is read only when time_limited. search_clock stands in for the real clocks in tests.
// A caller that may want the search ended early passes stop (see core/stop_request.h). The exact
// undirected search runs on up to `threads` threads, the others on one: a time limit is processor
// time per node, which every thread of the process would count, and a directed node's search
// reads the cliques registered before it.
void Find_cliques(const bool& time_limited, const bool& directed, CliqueList& cliques,
                  OverlapMatrix& overlaps, VtxdMap& directed_vertices, VtxMap& vertices,
                  std::uint32_t& n_exact, const double& max_time,
                  const SearchClock& search_clock = SearchClock(),
                  const StopRequest* stop = nullptr, const unsigned& threads = 1);

}  // namespace kcp
