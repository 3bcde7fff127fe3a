// The neighbour sets of a vertex map (or any one set of each record) laid out as one ascending
// array per node, side by side, for the searches' hot loops: Of(v) is v's set in ascending
// order, empty for a node without a record. The arrays are a snapshot: later changes to the map
// do not reach them.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "core/types.h"

namespace kcp {

class Adjacency {
 public:
  // The neighbour sets of the records.
  template <typename VertexMap>
  explicit Adjacency(const VertexMap& vertices)
      : Adjacency(vertices,
                  [](const auto& record) -> const NodeSet& { return record.Neighs_c(); }) {}

  // The sets that `sets` gives for each record (say the in-neighbours of a directed record).
  template <typename VertexMap, typename Sets>
  Adjacency(const VertexMap& vertices, Sets sets) {
    const std::size_t bound = vertices.empty() ? 0 : std::size_t{vertices.rbegin()->first} + 1;
    begin_.assign(bound + 1, 0);
    for (const auto& [index, record] : vertices) {
      begin_[index + std::size_t{1}] = static_cast<std::uint32_t>(sets(record).size());
    }
    for (std::size_t v = 0; v < bound; ++v) begin_[v + 1] += begin_[v];
    neighbours_.reserve(begin_[bound]);
    for (const auto& [index, record] : vertices) {
      neighbours_.insert(neighbours_.end(), sets(record).begin(), sets(record).end());
    }
  }

  std::span<const NodeIndex> Of(const NodeIndex& v) const {
    if (std::size_t{v} + 1 >= begin_.size()) return {};
    return std::span<const NodeIndex>(neighbours_).subspan(begin_[v], begin_[v + 1] - begin_[v]);
  }
  // One past the largest node index with a record.
  std::size_t Node_bound() const { return begin_.empty() ? 0 : begin_.size() - 1; }

 private:
  std::vector<std::uint32_t> begin_;
  std::vector<NodeIndex> neighbours_;
};

}  // namespace kcp
