// Small random graphs for checking the searches against brute force: nodes 1..n, every possible
// link present with probability p, drawn from a generator seeded with `seed`, so a failing case
// can be rebuilt from its three numbers.
#pragma once

#include <cstdint>

#include "core/types.h"

namespace kcp::testing {

// Undirected: each pair i < j at most once, as the key (i, j).
IndexLinkMap Random_undirected_links(const std::uint32_t& n, const double& p,
                                     const std::uint32_t& seed);
// Directed: each ordered pair (i, j), i != j, drawn on its own; weights are 1.
IndexLinkMap Random_directed_links(const std::uint32_t& n, const double& p,
                                   const std::uint32_t& seed);

// A near-clique inside a sparse graph: pairs among nodes 1..block are linked with probability
// p_block, all other pairs with p_rest; directed graphs draw both directions of a pair apart.
IndexLinkMap Planted_block_links(const std::uint32_t& n, const std::uint32_t& block,
                                 const double& p_block, const double& p_rest,
                                 const std::uint32_t& seed, const bool& directed);

}  // namespace kcp::testing
