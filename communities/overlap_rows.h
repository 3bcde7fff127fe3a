// The rows of the clique overlap matrix as percolation at one k reads them: for clique c, the
// cliques sharing at least k - 1 of its nodes, in ascending order of position. A stored matrix
// is walked as stored. A matrix kept on demand stores nothing; its rows are computed from the
// clique list, and taken cliques are never returned (percolation reads no labelled clique of a
// symmetric matrix), which lets the lists behind the rows forget them as they are met.
//
// Computed rows find their cliques through prefix lists (cliques/prefix_lists.h) over the
// cliques that can share k - 1 nodes with another: those of at least k - 1 nodes, or, when every
// clique of the list is exact, of at least k, since an exact maximal clique lies inside no other
// (one of k - 1 nodes sharing them all with a clique would). Shared nodes are counted on the
// cliques' hot-node bitsets and their few other members (cliques/clique_profile.h). What is built
// for one k is kept in the matrix's index for the next.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "cliques/clique_profile.h"
#include "cliques/prefix_lists.h"
#include "core/types.h"

// Computed rows count shared hot nodes with the processor's population count where it has one:
// the row is compiled twice and the version the processor can run is chosen when the program
// starts. (Not under the sanitizers, whose runtimes this choice would precede.)
#if defined(__x86_64__) && defined(__has_feature)
#if !__has_feature(address_sanitizer) && !__has_feature(thread_sanitizer)
#define KCP_POPCOUNT_CLONES __attribute__((target_clones("popcnt", "default"), flatten))
#endif
#elif defined(__x86_64__) && !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
#define KCP_POPCOUNT_CLONES __attribute__((target_clones("popcnt", "default"), flatten))
#endif
#ifndef KCP_POPCOUNT_CLONES
#define KCP_POPCOUNT_CLONES
#endif

namespace kcp {

class OverlapRows {
 public:
  // Both references must outlive the object; on demand, the lists are built here (for a k above
  // every clique, at the first row asked for). Cliques at or beyond n_exact are approximate.
  OverlapRows(const CliqueList& cliques, const OverlapMatrix& overlaps, const std::uint32_t& k,
              const std::uint32_t& n_exact);
  ~OverlapRows();
  OverlapRows(const OverlapRows&) = delete;
  OverlapRows& operator=(const OverlapRows&) = delete;

  // The number of rows: those stored, or one per clique on demand.
  std::size_t Row_count() const;

  // Fills `out` with the entries of row c sharing at least k - 1 nodes, ascending; with
  // free_only, and always on demand, only cliques whose label is negative (labels may only go
  // from negative to a community between calls). Returns whether the row holds an entry
  // sharing at least k nodes (on demand: a free one, or c itself). A row that does not exist is
  // empty.
  bool Row(const std::uint32_t& c, const std::vector<std::int32_t>& labels, const bool& free_only,
           CliqueIndexList& out);

  // Tells the rows that clique j has been labelled, so that computed rows skip it unread.
  void Taken(const std::uint32_t& j);

  // The profile of the cliques behind computed rows; null for a stored matrix.
  const std::shared_ptr<const CliqueProfile>& Profile() const { return profile_; }

 private:
  bool Stored_row(const std::uint32_t& c, const std::vector<std::int32_t>& labels,
                  const bool& free_only, CliqueIndexList& out) const;
  KCP_POPCOUNT_CLONES bool Computed_row(const std::uint32_t& c,
                                        const std::vector<std::int32_t>& labels,
                                        CliqueIndexList& out);
  // The nodes j shares with the clique whose cold ranks are marked, among j's cold members.
  std::uint32_t Shared_cold(const std::uint32_t& j) const;
  // The nodes of the keys that the cliques at hand are listed under.
  std::uint32_t Key_nodes() const;
  // The profile, the prefix lists and the bitmaps of computed rows.
  void Build_index();

  const CliqueList& cliques_;
  const OverlapMatrix& overlaps_;
  std::uint32_t k_;
  std::uint32_t need_;            // k - 1, unsigned: wraps at k = 0 so that nothing qualifies
  std::uint32_t least_;           // max(need_, 1): pairs without a shared node have no entry
  std::uint32_t least_size_ = 0;  // the fewest members a listed clique has
  bool all_exact_;

  std::shared_ptr<OnDemandIndex> index_;
  std::shared_ptr<const CliqueProfile> profile_;
  std::unique_ptr<PrefixLists> lists_;
  std::vector<std::uint64_t> taken_;       // bit per clique
  std::vector<std::uint64_t> seen_;        // bit per clique met by the row being computed
  std::vector<std::uint32_t> met_;         // those cliques, but the row's own
  std::vector<std::uint64_t> cold_marks_;  // bit per rank: the cold members of that row's clique
};

}  // namespace kcp
