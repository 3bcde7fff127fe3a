// The rows of the clique overlap matrix as percolation at one k reads them: for clique c, the
// cliques sharing at least k - 1 of its nodes, in ascending order of position. A stored matrix
// is walked as stored. A matrix kept on demand stores nothing; its rows are computed from the
// clique list through an index node -> cliques of at least max(k - 1, 1) nodes, and labelled
// cliques are never returned (percolation reads no labelled clique of a symmetric matrix), which
// also lets the index forget them as they are met.
#pragma once

#include <cstdint>
#include <vector>

#include "driver/types.h"

namespace kcp {

class OverlapRows {
 public:
  // Both references must outlive the object; on demand, the index is built here.
  OverlapRows(const CliqueList& cliques, const OverlapMatrix& overlaps, const std::uint32_t& k);

  // The number of rows: those stored, or one per clique on demand.
  std::size_t Row_count() const;

  // Fills `out` with the entries of row c sharing at least k - 1 nodes, ascending; with
  // free_only, and always on demand, only cliques whose label is negative (labels may only go
  // from negative to a community between calls). Returns whether the row holds an entry
  // sharing at least k nodes. A row that does not exist is empty.
  bool Row(const std::uint32_t& c, const std::vector<std::int32_t>& labels, const bool& free_only,
           CliqueIndexList& out);

 private:
  bool Stored_row(const std::uint32_t& c, const std::vector<std::int32_t>& labels,
                  const bool& free_only, CliqueIndexList& out) const;
  bool Computed_row(const std::uint32_t& c, const std::vector<std::int32_t>& labels,
                    CliqueIndexList& out);
  std::uint32_t Shared_with_marked(const Clique& other, const Clique& marked,
                                   const std::uint32_t& enough) const;

  const CliqueList& cliques_;
  const OverlapMatrix& overlaps_;
  std::uint32_t k_;
  std::uint32_t need_;   // k - 1, unsigned: wraps at k = 0 so that nothing qualifies
  std::uint32_t least_;  // max(need_, 1): pairs without a shared node have no entry
  std::vector<std::vector<std::uint32_t>> holders_;  // node -> free cliques of >= least_ nodes
  std::vector<std::uint32_t> node_stamp_;            // node -> stamp of the row marking it
  std::vector<std::uint32_t> clique_stamp_;          // clique -> stamp of the row that saw it
  std::uint32_t stamp_ = 0;
  std::vector<std::pair<std::size_t, NodeIndex>> by_length_;
};

}  // namespace kcp
