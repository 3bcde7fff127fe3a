#include "communities/link_order.h"

namespace kcp {

void LinkOrder::Sorted(const NodeList& nodes, LinkList& links) {
  // By the larger position, then, keeping that order, by the smaller.
  const std::size_t n = nodes.size();
  sorted_.resize(found_.size());
  const auto pass = [&](const std::vector<Found>& from, std::vector<Found>& to, const auto& key) {
    count_.assign(n + 1, 0);
    for (const Found& f : from) ++count_[key(f) + 1];
    for (std::size_t i = 0; i < n; ++i) count_[i + 1] += count_[i];
    for (const Found& f : from) to[count_[key(f)]++] = f;
  };
  pass(found_, sorted_, [](const Found& f) { return f.larger; });
  pass(sorted_, found_, [](const Found& f) { return f.smaller; });
  links.clear();
  links.reserve(found_.size());
  for (std::size_t i = 0; i < found_.size(); ++i) {
    if (i > 0 && found_[i].smaller == found_[i - 1].smaller &&
        found_[i].larger == found_[i - 1].larger) {
      continue;
    }
    links.emplace_back(nodes[found_[i].smaller], nodes[found_[i].larger]);
  }
}

}  // namespace kcp
