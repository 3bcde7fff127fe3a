#include "cliques/member_index.h"

#include <algorithm>

namespace kcp {

void MemberIndex::Grow_nodes(const std::size_t& bound) {
  if (holders_.size() >= bound) return;
  const std::size_t before = holders_.capacity();
  holders_.resize(bound);
  bytes_ += (holders_.capacity() - before) * sizeof(NodeSet);
}

void MemberIndex::Grow_tally(const std::size_t& bound) {
  if (tally_.size() >= bound) return;
  const std::size_t before = tally_.capacity();
  tally_.resize(bound, 0);
  bytes_ += (tally_.capacity() - before) * sizeof(std::uint32_t);
}

void MemberIndex::Reserve(const NodeList& members, const std::uint32_t& position) {
  // Lists are ascending, but the bound does not rely on it.
  if (!members.empty())
    Grow_nodes(*std::max_element(members.begin(), members.end()) + std::size_t{1});
  Grow_tally(position + std::size_t{1});
}

void MemberIndex::Add(const NodeList& members, const std::uint32_t& position) {
  Add(members, position, [](const NodeIndex&) { return true; });
}

void MemberIndex::Add_all(const std::vector<NodeList>& lists) {
  if (!holders_.empty() || !packed_begin_.empty()) {
    for (std::size_t p = 0; p < lists.size(); ++p) Add(lists[p], static_cast<std::uint32_t>(p));
    return;
  }
  std::size_t bound = 0;
  std::size_t members = 0;
  for (const NodeList& list : lists) {
    for (const NodeIndex& m : list) bound = std::max(bound, std::size_t{m} + 1);
    members += list.size();
  }
  Grow_tally(lists.size());
  if (members == 0) return;
  packed_begin_.assign(bound + 1, 0);
  for (const NodeList& list : lists) {
    for (const NodeIndex& m : list) ++packed_begin_[m + std::size_t{1}];
  }
  for (std::size_t n = 0; n < bound; ++n) packed_begin_[n + 1] += packed_begin_[n];
  packed_.resize(members);
  // Lists in ascending position: each node's positions come out ascending.
  std::vector<std::size_t> next(packed_begin_.begin(), packed_begin_.end() - 1);
  for (std::size_t p = 0; p < lists.size(); ++p) {
    for (const NodeIndex& m : lists[p]) packed_[next[m]++] = static_cast<std::uint32_t>(p);
  }
  bytes_ +=
      packed_begin_.capacity() * sizeof(std::size_t) + packed_.capacity() * sizeof(std::uint32_t);
}

void MemberIndex::Unpack() {
  const std::size_t bound = packed_begin_.size() - 1;
  Grow_nodes(bound);
  for (std::size_t n = 0; n < bound; ++n) {
    const std::span<const std::uint32_t> held = Holders(static_cast<NodeIndex>(n));
    holders_[n] = NodeSet::From_sorted(held);
    bytes_ += holders_[n].Heap_bytes();
  }
  bytes_ -=
      packed_begin_.capacity() * sizeof(std::size_t) + packed_.capacity() * sizeof(std::uint32_t);
  std::vector<std::size_t>().swap(packed_begin_);
  std::vector<std::uint32_t>().swap(packed_);
}

}  // namespace kcp
