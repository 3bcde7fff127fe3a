// Reference clique lists by exhaustive search over every node subset, for graphs of at most 20
// nodes (more throws std::invalid_argument). Results are sets of ascending node lists, so they
// compare with a search's output regardless of its order.
#pragma once

#include <set>

#include "driver/types.h"

namespace kcp::testing {

// Maximal cliques of three or more nodes; a key (i, j) links i and j whatever its direction.
std::set<NodeList> Brute_maximal_cliques(const IndexLinkMap& links);

// Maximal directed cliques of three or more nodes: node sets whose members can be ordered so
// that every earlier member links to every later one (the key (i, j) is a link from i to j), and
// that no further node can join.
std::set<NodeList> Brute_directed_cliques(const IndexLinkMap& links);

}  // namespace kcp::testing
