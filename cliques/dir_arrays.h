// The directed graph of a search as ascending in- and out-neighbour arrays per node, and the
// look-up of a node's record: what the walk of Clique_find_dir, its direct search and the
// rebuilding of its paths share.
#pragma once

#include "graph/adjacency.h"
#include "graph/vertex_map.h"

namespace kcp::Clique_find_dir_sub_routines {

struct DirArrays {
  explicit DirArrays(const VtxdMap& map)
      : ins(map, [](const Vtxd& record) -> const NodeSet& { return record.Ineighs_c(); }),
        outs(map, [](const Vtxd& record) -> const NodeSet& { return record.Oneighs_c(); }) {}
  Adjacency ins;
  Adjacency outs;
};

inline const Vtxd& Working_record(const VtxdMap& working, const NodeIndex& x) {
  return Record_of(working, x, "Clique_find_dir", "working graph");
}

inline const Vtxd& Full_record(const VtxdMap& vertices, const NodeIndex& z) {
  return Record_of(vertices, z, "Clique_find_dir", "vertex map");
}

}  // namespace kcp::Clique_find_dir_sub_routines
