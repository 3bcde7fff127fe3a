#include "tests/support/brute_cliques.h"

#include <bit>
#include <cstdint>
#include <map>
#include <stdexcept>
#include <vector>

namespace kcp::testing {

namespace {

// The nodes of the links, ascending, and each node's out-links as a bit mask over their
// positions.
struct Bit_graph {
  std::vector<NodeIndex> nodes;
  std::vector<std::uint32_t> out;
};

Bit_graph Make_bit_graph(const IndexLinkMap& links) {
  std::map<NodeIndex, std::size_t> position;
  for (const auto& [link, weight] : links) {
    position.emplace(link.first, 0);
    position.emplace(link.second, 0);
  }
  if (position.size() > 20) throw std::invalid_argument("brute force needs at most 20 nodes");
  Bit_graph graph;
  for (auto& [node, at] : position) {
    at = graph.nodes.size();
    graph.nodes.push_back(node);
  }
  graph.out.assign(graph.nodes.size(), 0);
  for (const auto& [link, weight] : links) {
    graph.out[position[link.first]] |= 1u << position[link.second];
  }
  return graph;
}

NodeList Members(const Bit_graph& graph, std::uint32_t mask) {
  NodeList members;
  for (std::size_t i = 0; i < graph.nodes.size(); ++i) {
    if ((mask >> i) & 1u) members.push_back(graph.nodes[i]);
  }
  return members;
}

template <typename IsClique>
std::set<NodeList> Maximal_sets(const Bit_graph& graph, const IsClique& is_clique) {
  std::set<NodeList> result;
  const std::size_t n = graph.nodes.size();
  for (std::uint32_t mask = 0; mask < (1u << n); ++mask) {
    if (std::popcount(mask) < 3 || !is_clique(mask)) continue;
    bool maximal = true;
    for (std::size_t i = 0; i < n && maximal; ++i) {
      if (!((mask >> i) & 1u) && is_clique(mask | (1u << i))) maximal = false;
    }
    if (maximal) result.insert(Members(graph, mask));
  }
  return result;
}

}  // namespace

std::set<NodeList> Brute_maximal_cliques(const IndexLinkMap& links) {
  Bit_graph graph = Make_bit_graph(links);
  std::vector<std::uint32_t> adjacent(graph.nodes.size(), 0);
  for (std::size_t i = 0; i < graph.nodes.size(); ++i) {
    for (std::size_t j = 0; j < graph.nodes.size(); ++j) {
      if ((graph.out[i] >> j) & 1u) {
        adjacent[i] |= 1u << j;
        adjacent[j] |= 1u << i;
      }
    }
  }
  return Maximal_sets(graph, [&](std::uint32_t mask) {
    for (std::size_t i = 0; i < graph.nodes.size(); ++i) {
      if (((mask >> i) & 1u) && (mask & ~(adjacent[i] | (1u << i))) != 0) return false;
    }
    return true;
  });
}

std::set<NodeList> Brute_directed_cliques(const IndexLinkMap& links) {
  Bit_graph graph = Make_bit_graph(links);
  // A set can be ordered exactly when it keeps having a member that links to all the others:
  // that member goes first, and what is left must be orderable again.
  return Maximal_sets(graph, [&](std::uint32_t mask) {
    std::uint32_t left = mask;
    while (left != 0) {
      bool found = false;
      for (std::size_t i = 0; i < graph.nodes.size() && !found; ++i) {
        const std::uint32_t bit = 1u << i;
        if ((left & bit) && (left & ~bit & ~graph.out[i]) == 0) {
          left &= ~bit;
          found = true;
        }
      }
      if (!found) return false;
    }
    return true;
  });
}

}  // namespace kcp::testing
