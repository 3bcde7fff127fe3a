// Which lists hold each node, for lists of ascending node indices (the cliques of a run, the
// communities at one k), and the count of the nodes a list shares with every list it meets. It
// is the one index behind every stage that counts shared members: the overlap matrix as the
// searches fill it, its extension to the approximate cliques, and the community graph and
// statistics. Counting costs what the memberships of the members hold; its scratch is reused.
// The bytes the index holds are counted as it grows, for the overlap matrix's memory budget.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "core/types.h"

namespace kcp {

class MemberIndex {
 public:
  // One list met by Shared_with: its position and the number of nodes it shares.
  struct Shared {
    std::uint32_t position;
    std::uint32_t count;
  };

  // Makes room for the members of a list about to be added at `position`, so that counting the
  // overlaps of that list needs no allocation the byte count has not seen.
  void Reserve(const NodeList& members, const std::uint32_t& position);
  // Records that every member holds the list at `position`; positions are added in ascending
  // order. Members for which keep(member) is false are not recorded.
  void Add(const NodeList& members, const std::uint32_t& position);
  template <typename Keep>
  void Add(const NodeList& members, const std::uint32_t& position, Keep&& keep);
  // Every list of `lists`, at its position. Into an empty index the lists go in one pass, with
  // one array for all memberships.
  void Add_all(const std::vector<NodeList>& lists);

  // The positions of the lists holding node n, ascending.
  std::span<const std::uint32_t> Holders(const NodeIndex& n) const {
    if (!packed_begin_.empty()) {
      if (std::size_t{n} + 1 >= packed_begin_.size()) return {};
      return std::span<const std::uint32_t>(packed_).subspan(
          packed_begin_[n], packed_begin_[n + std::size_t{1}] - packed_begin_[n]);
    }
    if (n >= holders_.size()) return {};
    return std::span<const std::uint32_t>(holders_[n].data(), holders_[n].size());
  }
  // One past the largest node recorded.
  std::size_t Node_bound() const {
    return packed_begin_.empty() ? holders_.size() : packed_begin_.size() - 1;
  }

  // The lists sharing at least one node with `members`, ascending by position, each with its
  // shared count (a list recorded in the index counts itself). Lists for which skip(position)
  // holds are left out. The result lives until the next call.
  template <typename Skip>
  std::span<const Shared> Shared_with(const NodeList& members, Skip&& skip);
  std::span<const Shared> Shared_with(const NodeList& members) {
    return Shared_with(members, [](const std::uint32_t&) { return false; });
  }

  std::size_t Bytes() const { return bytes_; }

 private:
  void Grow_nodes(const std::size_t& bound);
  void Grow_tally(const std::size_t& bound);
  // Moves the packed memberships into per-node lists, which single additions extend.
  void Unpack();

  // node -> positions of its lists, ascending; a node in one or two lists needs no allocation
  std::vector<NodeSet> holders_;
  // The memberships of Add_all, node by node: node n's are packed_[packed_begin_[n],
  // packed_begin_[n + 1]). Empty when the lists came one at a time.
  std::vector<std::size_t> packed_begin_;
  std::vector<std::uint32_t> packed_;
  std::vector<std::uint32_t> tally_;  // position -> shared count, 0 between calls
  std::vector<std::uint32_t> touched_;
  std::vector<Shared> shared_;
  std::size_t bytes_ = 0;
};

template <typename Keep>
void MemberIndex::Add(const NodeList& members, const std::uint32_t& position, Keep&& keep) {
  if (!packed_begin_.empty()) Unpack();
  Reserve(members, position);
  for (const NodeIndex& m : members) {
    if (!keep(m)) continue;
    NodeSet& list = holders_[m];
    const std::size_t before = list.Heap_bytes();
    list.insert(position);
    bytes_ += list.Heap_bytes() - before;
  }
}

template <typename Skip>
std::span<const MemberIndex::Shared> MemberIndex::Shared_with(const NodeList& members,
                                                              Skip&& skip) {
  touched_.clear();
  for (const NodeIndex& m : members) {
    for (const std::uint32_t& j : Holders(m)) {
      if (skip(j)) continue;
      if (tally_[j]++ == 0) touched_.push_back(j);
    }
  }
  std::sort(touched_.begin(), touched_.end());
  shared_.clear();
  for (const std::uint32_t& j : touched_) {
    shared_.push_back(Shared{j, tally_[j]});
    tally_[j] = 0;
  }
  return shared_;
}

}  // namespace kcp
