// Reference results for the clique searches. The brute-force lists try every node subset, for
// graphs of at most 20 nodes (more throws std::invalid_argument), and are sets of ascending node
// lists, so they compare with a search's output regardless of its order. The plain walks follow
// the searches' registration rules step by step, recursively and without any shortcut, and give
// the cliques in the order the searches must number them; they are meant for small graphs.
#pragma once

#include <set>

#include "core/types.h"

namespace kcp::testing {

// Maximal cliques of three or more nodes; a key (i, j) links i and j whatever its direction.
std::set<NodeList> Brute_maximal_cliques(const IndexLinkMap& links);

// Maximal directed cliques of three or more nodes: node sets whose members can be ordered so
// that every earlier member links to every later one (the key (i, j) is a link from i to j), and
// that no further node can join.
std::set<NodeList> Brute_directed_cliques(const IndexLinkMap& links);

// Maximal cliques of the undirected graph in registration order: nodes by ascending degree, then
// index; per node a depth-first walk over ascending candidates, pruned only by the cliques
// already known to hold the node.
CliqueList Plain_clique_walk(const IndexLinkMap& links);

// Maximal directed cliques in registration order: nodes by ascending number of distinct
// neighbours, then index; per node a depth-first walk inserting candidates into the gaps of a
// member sequence, finds kept by running key and registered in key order.
CliqueList Plain_directed_clique_walk(const IndexLinkMap& links);

}  // namespace kcp::testing
