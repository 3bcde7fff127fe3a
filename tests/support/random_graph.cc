#include "tests/support/random_graph.h"

#include <random>

namespace kcp::testing {

namespace {

IndexLinkMap Random_links(const std::uint32_t& n, const std::uint32_t& block, const double& p_block,
                          const double& p_rest, const std::uint32_t& seed, const bool& directed) {
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

}  // namespace

IndexLinkMap Random_undirected_links(const std::uint32_t& n, const double& p,
                                     const std::uint32_t& seed) {
  return Random_links(n, 0, p, p, seed, false);
}

IndexLinkMap Random_directed_links(const std::uint32_t& n, const double& p,
                                   const std::uint32_t& seed) {
  return Random_links(n, 0, p, p, seed, true);
}

IndexLinkMap Planted_block_links(const std::uint32_t& n, const std::uint32_t& block,
                                 const double& p_block, const double& p_rest,
                                 const std::uint32_t& seed, const bool& directed) {
  return Random_links(n, block, p_block, p_rest, seed, directed);
}

}  // namespace kcp::testing
