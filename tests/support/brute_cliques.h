// Reference results for the clique searches and the communities. The brute-force lists try every
// node subset, for graphs of at most 20 nodes (more throws std::invalid_argument), and are sets of
// ascending node lists, so they compare with a program's output regardless of its order. A key
// (i, j) links i and j whatever its direction, except for the directed cliques, where it is a
// link from i to j.
#pragma once

#include <cstdint>
#include <set>

#include "core/types.h"

namespace kcp::testing {

// Maximal cliques of three or more nodes.
std::set<NodeList> Brute_maximal_cliques(const IndexLinkMap& links);

// Maximal directed cliques of three or more nodes: node sets whose members can be ordered so
// that every earlier member links to every later one, and that no further node can join.
std::set<NodeList> Brute_directed_cliques(const IndexLinkMap& links);

// Sets of k pairwise linked nodes whose links are intense enough: the sum of the logs of their
// weights above log(pow(intensity, number of links)); every set passes at intensity 0.
std::set<NodeList> Brute_k_cliques(const IndexLinkMap& links, const std::uint32_t& k,
                                   const double& intensity = 0);

// Unions of the k-cliques of one component of the graph whose nodes are the k-cliques and whose
// links join k-cliques sharing k - 1 nodes (that are themselves intense enough).
std::set<NodeList> Brute_k_clique_communities(const IndexLinkMap& links, const std::uint32_t& k,
                                              const double& intensity = 0);

}  // namespace kcp::testing
