#include "cliques/clique_profile.h"

#include <algorithm>
#include <utility>

namespace kcp {

namespace {

std::uint64_t Mix(std::uint64_t x) {
  x ^= x >> 33;
  x *= 0xff51afd7ed558ccdULL;
  x ^= x >> 33;
  x *= 0xc4ceb9fe1a85ec53ULL;
  x ^= x >> 33;
  return x;
}

}  // namespace

std::uint64_t CliqueProfile::Fingerprint(const CliqueList& cliques) {
  std::uint64_t h = Mix(cliques.size() + 1);
  for (const Clique& clique : cliques) h = Mix(h ^ (clique.size() + 0x9e3779b97f4a7c15ULL));
  return h;
}

bool CliqueProfile::Describes(const CliqueList& cliques) const {
  return &cliques == source_ && cliques.size() == records_.size() &&
         Fingerprint(cliques) == fingerprint_;
}

CliqueProfile::CliqueProfile(const CliqueList& cliques)
    : source_(&cliques), fingerprint_(Fingerprint(cliques)) {
  NodeIndex end = 0;
  std::size_t members = 0;
  for (const Clique& clique : cliques) {
    for (const NodeIndex& v : clique) end = std::max<NodeIndex>(end, v + 1);
    members += clique.size();
  }
  std::vector<std::uint32_t> holders(end, 0);
  std::vector<NodeIndex> order;
  for (const Clique& clique : cliques) {
    for (const NodeIndex& v : clique) {
      if (holders[v]++ == 0) order.push_back(v);
    }
  }
  std::sort(order.begin(), order.end(), [&](const NodeIndex& a, const NodeIndex& b) {
    return holders[a] != holders[b] ? holders[a] < holders[b] : a < b;
  });
  rank_count_ = static_cast<std::uint32_t>(order.size());
  // holders turns into the rank of each node.
  for (std::uint32_t r = 0; r < rank_count_; ++r) holders[order[r]] = r;
  nodes_ = std::move(order);

  records_.resize(cliques.size());
  hot_.resize(cliques.size());
  ranks_.resize(members);
  std::uint64_t at = 0;
  for (std::size_t j = 0; j < cliques.size(); ++j) {
    Record& record = records_[j];
    record.begin = at;
    record.size = static_cast<std::uint32_t>(cliques[j].size());
    const auto from = ranks_.begin() + static_cast<std::ptrdiff_t>(at);
    for (const NodeIndex& v : cliques[j]) ranks_[at++] = holders[v];
    std::sort(from, ranks_.begin() + static_cast<std::ptrdiff_t>(at));
    for (auto r = from; r != ranks_.begin() + static_cast<std::ptrdiff_t>(at); ++r) {
      const std::uint32_t bit = Hot_bit(*r);
      if (bit == kHot) {
        ++record.cold;
        ++hot_[j].cold;
      } else {
        hot_[j].words[bit / 64] |= std::uint64_t{1} << (bit % 64);
      }
    }
  }
}

}  // namespace kcp
