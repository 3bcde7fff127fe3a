// Small random graphs for checking the searches against brute force: nodes 1..n, every possible
// link present with probability p (p_block among the nodes 1..block, to plant a near-clique),
// drawn from a generator seeded with `seed`, so a failing case can be rebuilt from its numbers.
// Undirected graphs hold each pair i < j at most once, as the key (i, j); directed graphs draw
// every ordered pair on its own. Weights are 1.
#pragma once

#include <cstdint>
#include <random>

#include "core/types.h"

namespace kcp::testing {

inline IndexLinkMap Planted_block_links(const std::uint32_t& n, const std::uint32_t& block,
                                        const double& p_block, const double& p_rest,
                                        const std::uint32_t& seed, const bool& directed) {
  std::mt19937 generator(seed);
  std::uniform_real_distribution<double> draw(0.0, 1.0);
  IndexLinkMap links;
  for (NodeIndex i = 1; i <= n; ++i) {
    for (NodeIndex j = directed ? 1 : i + 1; j <= n; ++j) {
      const double p = i <= block && j <= block ? p_block : p_rest;
      if (i != j && draw(generator) < p) links[{i, j}] = 1.0;
    }
  }
  return links;
}

inline IndexLinkMap Random_undirected_links(const std::uint32_t& n, const double& p,
                                            const std::uint32_t& seed) {
  return Planted_block_links(n, 0, p, p, seed, false);
}

inline IndexLinkMap Random_directed_links(const std::uint32_t& n, const double& p,
                                          const std::uint32_t& seed) {
  return Planted_block_links(n, 0, p, p, seed, true);
}

}  // namespace kcp::testing
