// Approximate cliques of the core left by a time-limited search. Each core node's neighbourhood
// inside the core (without the node) is a candidate; candidates contained in an earlier one or in
// an exact clique are dropped, then those contained in another candidate; the rest come out in
// ascending order of their centre node; Xstopped ends the work at a candidate once stop is
// requested. Extend_clique_vec merges them behind the exact cliques,
// dropping approximate cliques inside exact ones and exact ones inside kept approximate ones.
#pragma once

#include <cstdint>

#include "core/stop_request.h"
#include "core/types.h"
#include "graph/vertex_map.h"

namespace kcp {

void Appr_core_cliques(const VtxMap& core, const CliqueList& exact_cliques, CliqueList& approximate,
                       const StopRequest* stop = nullptr);
void Appr_core_cliques(const VtxdMap& core, const CliqueList& exact_cliques,
                       CliqueList& approximate, const StopRequest* stop = nullptr);

// On entry cliques holds the exact cliques; on return the kept exact cliques (n_exact of them, in
// their order) followed by the kept approximate ones, which also remain in approximate.
void Extend_clique_vec(CliqueList& cliques, std::uint32_t& n_exact, CliqueList& approximate);

}  // namespace kcp
