// The single entry of the clique search. Runs the exact or the time-limited search, undirected
// or directed, and when a time-limited search leaves a core of nodes that stayed too slow, adds
// approximate cliques of that core behind the exact ones. On return cliques[0, n_exact) are exact
// maximal cliques in the order found, the rest approximate; overlaps has a row per position.
// Exceptions of the searches pass through unchanged.
#pragma once

#include <cstdint>

#include "cliques/clique_find_time.h"
#include "core/types.h"
#include "graph/vertex_map.h"

namespace kcp {

// max_time is read only when time_limited. search_clock stands in for the real clocks in tests.
void Find_cliques(const bool& time_limited, const bool& directed, CliqueList& cliques,
                  OverlapMatrix& overlaps, VtxdMap& directed_vertices, VtxMap& vertices,
                  std::uint32_t& n_exact, const double& max_time,
                  const SearchClock& search_clock = SearchClock());

}  // namespace kcp
