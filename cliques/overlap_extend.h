// Adds the approximate cliques cliques[n_exact, size) to the overlap matrix: one new row per
// approximate clique, its size on the diagonal, and on both sides the count of nodes it shares
// with every other clique when that count reaches overlaps.min_shared. Rows are addressed by
// position in the merged list; rows already present are kept as they are, so the matrix may hold
// more rows than there are cliques. Rows stay sorted by clique position.
#pragma once

#include <cstdint>

#include "driver/types.h"

namespace kcp {

void Extend_ovlp_matr(OverlapMatrix& overlaps, const CliqueList& cliques,
                      const std::uint32_t& n_exact);

}  // namespace kcp
