// Brute-force references for the community tests, for graphs of at most 20 nodes: maximal
// cliques and k-cliques by enumerating node subsets, k-clique communities by union-find of the
// k-cliques sharing k - 1 nodes, the overlap matrix by pairwise intersection, and a literal
// recursive form of the percolation to check the visiting order of the production code.
#pragma once

#include <cstdint>
#include <set>
#include <vector>

#include "communities/percolation.h"
#include "core/types.h"

namespace kcp::testing {

// An undirected graph on the nodes 1..n.
struct Small_graph {
  std::uint32_t n = 0;
  std::vector<std::uint32_t> adjacency;  // bit v - 1 of adjacency[u - 1]: link u-v
  bool Linked(NodeIndex u, NodeIndex v) const { return (adjacency[u - 1] >> (v - 1)) & 1u; }
  void Link(NodeIndex u, NodeIndex v);
};

// Each of the n(n-1)/2 links present with probability p.
Small_graph Random_small_graph(std::uint32_t n, double p, std::uint32_t seed);

// Every maximal clique of at least min_size nodes, in ascending order of its node bit mask.
CliqueList Brute_maximal_cliques(const Small_graph& graph, std::uint32_t min_size);

// Every set of k nodes that are pairwise linked.
std::vector<NodeList> Brute_k_cliques(const Small_graph& graph, std::uint32_t k);

// The k-clique communities as node sets: unions of the k-cliques of one component of the graph
// whose nodes are the k-cliques and whose links join k-cliques sharing k - 1 nodes.
std::set<NodeList> Brute_k_clique_communities(const Small_graph& graph, std::uint32_t k);

// Rows per clique: (j, |clique i and clique j|) for every j sharing at least min_shared nodes,
// and the diagonal (i, size) always.
OverlapMatrix Brute_overlap_matrix(const CliqueList& cliques, std::uint32_t min_shared);

// The percolation written as its recursion reads, with ordered-map tallies.
void Reference_percolation(CommunityList& communities, CommunityLinkLists& community_links,
                           CommunityCliqueLists& community_cliques, const CliqueList& cliques,
                           const OverlapMatrix& overlaps, std::uint32_t k, std::uint32_t n_exact,
                           std::uint32_t& n_exact_coms);

}  // namespace kcp::testing
