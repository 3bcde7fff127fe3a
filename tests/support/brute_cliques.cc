#include "tests/support/brute_cliques.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <map>
#include <numeric>
#include <stdexcept>
#include <utility>
#include <vector>

namespace kcp::testing {

namespace {

// The nodes of the links, ascending; each node's out-links and links as bit masks over their
// positions.
struct BitGraph {
  std::vector<NodeIndex> nodes;
  std::vector<std::uint32_t> out;
  std::vector<std::uint32_t> adjacent;
};

BitGraph Make_bit_graph(const IndexLinkMap& links) {
  std::map<NodeIndex, std::size_t> position;
  for (const auto& [link, weight] : links) {
    position.emplace(link.first, 0);
    position.emplace(link.second, 0);
  }
  if (position.size() > 20) throw std::invalid_argument("brute force needs at most 20 nodes");
  BitGraph graph;
  for (auto& [node, at] : position) {
    at = graph.nodes.size();
    graph.nodes.push_back(node);
  }
  graph.out.assign(graph.nodes.size(), 0);
  graph.adjacent.assign(graph.nodes.size(), 0);
  for (const auto& [link, weight] : links) {
    const std::size_t a = position[link.first];
    const std::size_t b = position[link.second];
    graph.out[a] |= 1u << b;
    graph.adjacent[a] |= 1u << b;
    graph.adjacent[b] |= 1u << a;
  }
  return graph;
}

NodeList Members(const BitGraph& graph, std::uint32_t mask) {
  NodeList members;
  for (std::size_t i = 0; i < graph.nodes.size(); ++i) {
    if ((mask >> i) & 1u) members.push_back(graph.nodes[i]);
  }
  return members;
}

bool Is_clique(const BitGraph& graph, std::uint32_t mask) {
  for (std::size_t i = 0; i < graph.nodes.size(); ++i) {
    if (((mask >> i) & 1u) && (mask & ~(graph.adjacent[i] | (1u << i))) != 0) return false;
  }
  return true;
}

bool Intense(const NodeList& nodes, const IndexLinkMap& links, const double& intensity) {
  double sum = 0;
  for (std::size_t a = 0; a < nodes.size(); ++a) {
    for (std::size_t b = a + 1; b < nodes.size(); ++b) {
      const auto link = links.find({nodes[a], nodes[b]});
      sum += std::log(link != links.end() ? link->second : links.at({nodes[b], nodes[a]}));
    }
  }
  return sum > std::log(std::pow(intensity, nodes.size() * (nodes.size() - 1) / 2.0));
}

template <typename IsClique>
std::set<NodeList> Maximal_sets(const BitGraph& graph, const IsClique& is_clique) {
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
  const BitGraph graph = Make_bit_graph(links);
  return Maximal_sets(graph, [&](std::uint32_t mask) { return Is_clique(graph, mask); });
}

std::set<NodeList> Brute_directed_cliques(const IndexLinkMap& links) {
  const BitGraph graph = Make_bit_graph(links);
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

std::set<NodeList> Brute_k_cliques(const IndexLinkMap& links, const std::uint32_t& k,
                                   const double& intensity) {
  const BitGraph graph = Make_bit_graph(links);
  std::set<NodeList> k_cliques;
  for (std::uint32_t mask = 0; mask < (1u << graph.nodes.size()); ++mask) {
    if (static_cast<std::uint32_t>(std::popcount(mask)) != k || !Is_clique(graph, mask)) continue;
    if (Intense(Members(graph, mask), links, intensity)) k_cliques.insert(Members(graph, mask));
  }
  return k_cliques;
}

std::set<NodeList> Brute_k_clique_communities(const IndexLinkMap& links, const std::uint32_t& k,
                                              const double& intensity) {
  const std::set<NodeList> found = Brute_k_cliques(links, k, intensity);
  const std::vector<NodeList> k_cliques(found.begin(), found.end());
  std::vector<std::size_t> root(k_cliques.size());
  std::iota(root.begin(), root.end(), 0);
  const auto find = [&](std::size_t x) {
    while (root[x] != x) x = root[x] = root[root[x]];
    return x;
  };
  for (std::size_t a = 0; a < k_cliques.size(); ++a) {
    for (std::size_t b = a + 1; b < k_cliques.size(); ++b) {
      NodeList shared;
      std::set_intersection(k_cliques[a].begin(), k_cliques[a].end(), k_cliques[b].begin(),
                            k_cliques[b].end(), std::back_inserter(shared));
      if (shared.size() + 1 == k && Intense(shared, links, intensity)) root[find(a)] = find(b);
    }
  }
  std::map<std::size_t, NodeSet> unions;
  for (std::size_t a = 0; a < k_cliques.size(); ++a) {
    unions[find(a)].insert(k_cliques[a].begin(), k_cliques[a].end());
  }
  std::set<NodeList> communities;
  for (const auto& [at, nodes] : unions) communities.emplace(nodes.begin(), nodes.end());
  return communities;
}

}  // namespace kcp::testing
