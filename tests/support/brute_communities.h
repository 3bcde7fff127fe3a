// References for the community tests: the overlap matrix by pairwise intersection, and the
// percolation written as its recursion reads, to check the visiting order of the production code.
#pragma once

#include <cstdint>

#include "communities/percolation.h"
#include "core/types.h"

namespace kcp::testing {

// Rows per clique: (j, |clique i and clique j|) for every j sharing at least min_shared nodes,
// and the diagonal (i, size) always.
OverlapMatrix Brute_overlap_matrix(const CliqueList& cliques, const std::uint32_t& min_shared);

// The percolation with recursive growth and ordered-map tallies, outputs as the program's.
void Reference_percolation(CommunityList& communities, CommunityLinkLists& community_links,
                           CommunityCliqueLists& community_cliques, const CliqueList& cliques,
                           const OverlapMatrix& overlaps, std::uint32_t k, std::uint32_t n_exact,
                           std::uint32_t& n_exact_coms);

}  // namespace kcp::testing
