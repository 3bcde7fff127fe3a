// Adds the approximate cliques cliques[n_exact, size) to the overlap matrix: one new row per
// approximate clique, its size on the diagonal, and on both sides the count of nodes it shares
// with every other clique when that count reaches overlaps.min_shared or an entry is already
// stored there, which the count then replaces whatever its size. Rows are addressed by position
// in the merged list; rows already present are kept otherwise, so the matrix may hold more rows
// than there are cliques. Rows stay sorted by clique position.
#pragma once

#include <cstdint>

#include "core/types.h"

namespace kcp {

void Extend_ovlp_matr(OverlapMatrix& overlaps, const CliqueList& cliques,
                      const std::uint32_t& n_exact);

// The matrix after the approximation merged the list: `searched` is the list the search left,
// `cliques` and n_exact the merged list. A stored matrix is extended as above. A matrix kept on
// demand stays so while no exact clique was dropped (its computed rows are then those the
// stored matrix would hold); otherwise the stale rows of the dropped cliques are needed, so it is
// stored after all, as the search would have stored it, and extended. Throws what
// Add_clique_overlaps throws.
void Complete_ovlp_matr(OverlapMatrix& overlaps, const CliqueList& searched,
                        const CliqueList& cliques, const std::uint32_t& n_exact);

}  // namespace kcp
