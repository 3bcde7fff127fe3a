#include "cliques/member_index.h"

#include <algorithm>

namespace kcp {

void MemberIndex::Grow_nodes(const std::size_t& bound) {
  if (holders_.size() >= bound) return;
  const std::size_t before = holders_.capacity();
  holders_.resize(bound);
  bytes_ += (holders_.capacity() - before) * sizeof(std::vector<std::uint32_t>);
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
  for (std::size_t p = 0; p < lists.size(); ++p) Add(lists[p], static_cast<std::uint32_t>(p));
}

std::span<const std::uint32_t> MemberIndex::Holders(const NodeIndex& n) const {
  if (n >= holders_.size()) return {};
  return holders_[n];
}

}  // namespace kcp
