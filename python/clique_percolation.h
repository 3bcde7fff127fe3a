// k-clique percolation over a clique list from outside the search (cliques a caller found, or
// the search's list completed by the cliques of two nodes): Coms_from_appr_ovlp_matr over the
// cliques of at least k nodes, with the overlap rows computed on demand and every clique exact.
// Cliques may come in any order, hold their nodes in any order and repeat nodes or whole cliques;
// node indices must be at least 1. Communities are ascending node lists, in the order of their
// lowest clique. Throws Xerror_msg for k below 2 or a node index of 0.
#pragma once

#include <cstdint>

#include "core/stop_request.h"
#include "core/types.h"

namespace kcp {

CommunityList Percolate_cliques(const CliqueList& cliques, std::uint32_t k,
                                const StopRequest* stop = nullptr);

}  // namespace kcp
