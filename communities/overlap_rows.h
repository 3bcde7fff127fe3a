// The rows of the clique overlap matrix as percolation at one k reads them: for clique c, the
// cliques sharing at least k - 1 of its nodes, in ascending order of position. A stored matrix
// is walked as stored. A matrix kept on demand stores nothing; its rows are computed from the
// clique list, and labelled cliques are never returned (percolation reads no labelled clique of
// a symmetric matrix), which also lets the index forget them as they are met.
//
// The index of the computed rows is a prefix filter. Nodes are ranked by how many cliques of at
// least t = max(k - 1, 1) nodes hold them, rarest first. Two cliques sharing t nodes share one of
// the first |c| - t + 1 nodes of each (its prefix), and two of the first |c| - t + 2: cliques are
// listed under the node pairs of their prefix, so that a row walks only cliques that share two
// rare nodes with it. A clique whose prefix is long (a few very large cliques) is listed under its
// single prefix nodes instead, and walks the lists of single nodes; so is every clique when
// t < 3, since cliques sharing fewer than two nodes need not share a pair.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "core/types.h"

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
  // Lists of cliques keyed by a node (second = kNone) or by a node pair (first ranked first).
  // Lists keep only their live part: a labelled clique is swapped out of the list it is met in.
  class KeyedLists {
   public:
    static constexpr NodeIndex kNone = 0xffffffffu;
    // entries: (second << 32 | clique), bucketed by first node as first_begin says, each
    // bucket ascending.
    void Build(std::vector<std::uint64_t> entries, std::vector<std::uint32_t> first_begin,
               const std::size_t& clique_count);
    // The list of one key, if there is one.
    template <typename Visit>
    void Walk(const NodeIndex& first, const NodeIndex& second, Visit&& visit);
    // Every list the clique is in.
    template <typename Visit>
    void Walk_own(const std::uint32_t& clique, Visit&& visit);

   private:
    struct Range {
      std::uint32_t begin;
      std::uint32_t end;  // one past the last live entry
    };
    template <typename Visit>
    void Walk_key(const std::uint32_t& key, Visit&& visit);

    std::vector<std::uint32_t> first_keys_;  // node -> its first key; size nodes + 1
    std::vector<NodeIndex> second_;          // key -> second node
    std::vector<Range> range_;               // key -> its entries
    std::vector<std::uint32_t> cliques_;     // the entries
    std::vector<std::uint32_t> own_begin_;   // clique -> first of its keys in own_keys_
    std::vector<std::uint32_t> own_keys_;
  };

  bool Stored_row(const std::uint32_t& c, const std::vector<std::int32_t>& labels,
                  const bool& free_only, CliqueIndexList& out) const;
  bool Computed_row(const std::uint32_t& c, const std::vector<std::int32_t>& labels,
                    CliqueIndexList& out);
  void Build_index();
  // The first `length` members of clique c in rank order (all of them when it has fewer).
  std::span<const NodeIndex> Prefix(const std::uint32_t& c, const std::size_t& length) const;
  bool Long_prefix(const std::size_t& size) const;

  const CliqueList& cliques_;
  const OverlapMatrix& overlaps_;
  std::uint32_t k_;
  std::uint32_t need_;               // k - 1, unsigned: wraps at k = 0 so that nothing qualifies
  std::uint32_t least_;              // max(need_, 1): pairs without a shared node have no entry
  std::vector<std::uint32_t> rank_;  // node -> rank, rarest first
  KeyedLists by_pair_;               // cliques with a short prefix, under its node pairs
  KeyedLists long_by_node_;          // cliques with a long prefix, under its nodes
  KeyedLists all_by_node_;           // every clique, under its nodes (walked by long prefixes)
  std::vector<std::uint32_t> node_stamp_;    // node -> stamp of the row marking it
  std::vector<std::uint32_t> clique_stamp_;  // clique -> stamp of the row that saw it
  std::uint32_t stamp_ = 0;
  bool has_long_ = false;                  // long and short prefixes both occur
  std::vector<std::size_t> member_begin_;  // clique -> first of its members in members_
  std::vector<NodeIndex> members_;         // in rank order within each clique
};

}  // namespace kcp
