// The clique overlap matrix as the exact searches fill it. Add_clique_overlaps gives a newly
// registered clique its row (its size on the diagonal) and, on both sides, the count of nodes it
// shares with every earlier clique when that count reaches overlaps.min_shared; rows stay sorted
// by clique position. The memory the matrix takes is counted, and a matrix that would outgrow half
// of the machine's physical memory throws Xerror_msg before it is extended.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "cliques/member_index.h"
#include "core/types.h"

namespace kcp {

// Half of the physical memory, in bytes.
std::size_t Overlap_memory_budget();

// For every node the positions of the registered cliques that hold it, in registration order,
// and the memory the stored rows have taken besides.
struct NodeCliqueMap {
  MemberIndex index;
  std::size_t row_bytes = 0;
  std::size_t memory_budget = Overlap_memory_budget();
};

// Registers the overlaps of clique K (ascending members) at position overlaps.rows.size(), which
// must be `id`; throws Xerror_msg otherwise, and when the memory budget would be exceeded.
// A matrix kept on demand is left as it is; only the node memberships are recorded.
void Add_clique_overlaps(OverlapMatrix& overlaps, NodeCliqueMap& node_cliques, const Clique& K,
                         const std::uint32_t& id);

// The shared count stored for `clique` in the row, 0 when absent.
std::uint32_t Overlap_of(const OverlapRow& row, const std::uint32_t& clique);
// Stores (clique, shared) in the row, replacing an entry for the same clique; keeps the order.
void Set_overlap(OverlapRow& row, const std::uint32_t& clique, const std::uint32_t& shared);

// Orders every stored row by shared count, largest first, ties by clique, and sets by_share.
void Order_rows_by_share(OverlapMatrix& overlaps);

// The largest clique size in the list, 0 for an empty list.
std::uint32_t Max_clique_size_in_cl_vec(const CliqueList& cliques);

}  // namespace kcp
