#include "graph/output_tables.h"

#include <algorithm>

namespace kcp {

LinkLookup::LinkLookup(const IndexLinkMap& links) {
  const std::size_t nodes = links.empty() ? 0 : std::size_t{links.rbegin()->first.first} + 1;
  begin_.assign(nodes + 1, 0);
  targets_.reserve(links.size());
  // The keys ascend by source, then target: each source's targets arrive in one ascending run.
  for (const auto& [key, weight] : links) {
    ++begin_[key.first + std::size_t{1}];
    targets_.push_back(key.second);
  }
  for (std::size_t n = 0; n < nodes; ++n) begin_[n + 1] += begin_[n];
}

std::span<const NodeIndex> LinkLookup::Targets(const NodeIndex& a) const {
  if (std::size_t{a} + 1 >= begin_.size()) return {};
  return std::span<const NodeIndex>(targets_).subspan(begin_[a],
                                                      begin_[a + std::size_t{1}] - begin_[a]);
}

bool LinkLookup::Holds(const NodeIndex& a, const NodeIndex& b) const {
  const std::span<const NodeIndex> targets = Targets(a);
  return std::binary_search(targets.begin(), targets.end(), b);
}

}  // namespace kcp
