// k-clique percolation over the clique overlap matrix, without listing k-cliques. Cliques of at
// least k nodes that share at least k - 1 nodes fall into one community; a community holding a
// clique at or above n_exact is approximate. Outputs are cleared first; the exact communities
// come first in the order of their lowest seed row, then the approximate ones in the same order.
// Node sets and link lists ascend; clique lists keep the order in which the growth took cliques.
// A matrix kept on demand gives the same communities as the stored one (see overlap_rows.h).
#pragma once

#include <cstdint>
#include <vector>

#include "communities/overlap_rows.h"
#include "core/stop_request.h"
#include "core/types.h"

namespace kcp {

// stop, when requested, ends the work before the next seed with Xstopped.
void Coms_from_appr_ovlp_matr(CommunityList& communities, CommunityLinkLists& community_links,
                              CommunityCliqueLists& community_cliques, const CliqueList& cliques,
                              const OverlapMatrix& overlaps, const std::uint32_t& k,
                              const std::uint32_t& n_exact, std::uint32_t& n_exact_coms,
                              const StopRequest* stop = nullptr);

namespace Coms_from_appr_cl_ovlp_sub {

// Clique labels, one per overlap-matrix row: -1 while free, else the community number.
using CliqueLabels = std::vector<std::int32_t>;

// Opens community counter + 1 at `seed` when its row holds an entry >= k: every entry of the row
// sharing >= k - 1 nodes (the seed included) is labelled and listed, then grown in order.
// A row without an entry >= k changes nothing.
void Look_for_new_com(const OverlapMatrix& overlaps, const std::uint32_t& seed,
                      const std::uint32_t& k, std::int32_t& counter, CliqueLabels& labels,
                      const CliqueList& cliques, CliqueIndexList& members, bool& approximate,
                      const std::uint32_t& n_exact);

// Takes into community `counter`, depth first, every free clique reachable from `clique` through
// entries sharing >= k - 1 nodes. Uses an explicit stack, so its depth is not bounded by the
// call stack; the labelling order is that of the plain recursion.
void Extend_com(const std::uint32_t& clique, const OverlapMatrix& overlaps,
                const std::int32_t& counter, CliqueLabels& labels, const std::uint32_t& k,
                const CliqueList& cliques, CliqueIndexList& members, bool& approximate,
                const std::uint32_t& n_exact);

// The same two steps over rows already set up for k, as the main loop uses them.
void Look_for_new_com(OverlapRows& rows, const std::uint32_t& seed, std::int32_t& counter,
                      CliqueLabels& labels, CliqueIndexList& members, bool& approximate,
                      const std::uint32_t& n_exact);
void Extend_com(const std::uint32_t& clique, OverlapRows& rows, const std::int32_t& counter,
                CliqueLabels& labels, CliqueIndexList& members, bool& approximate,
                const std::uint32_t& n_exact);

}  // namespace Coms_from_appr_cl_ovlp_sub

}  // namespace kcp
