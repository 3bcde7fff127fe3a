// The path of a directed walk to one of its cliques, found without walking (see
// dir_walk_path.cc).
#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include "cliques/dir_arrays.h"
#include "core/types.h"

namespace kcp::Clique_find_dir_sub_routines {

// The steps of a walk: at each list, the gap tried and the node put into it. The walk takes the
// steps of a list in ascending (gap, node) order, so paths compare as the walk meets them.
using WalkPath = std::vector<std::pair<std::size_t, NodeIndex>>;

// The first path of v's walk that ends with the members M (ascending), a maximal directed
// clique holding v in the graph of `work`. Throws Xerror_msg when no path reaches M, which only
// a clique that is not one can cause.
WalkPath First_path_to(const NodeIndex& v, const NodeList& M, const DirArrays& work);

}  // namespace kcp::Clique_find_dir_sub_routines
