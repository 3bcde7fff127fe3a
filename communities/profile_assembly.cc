#include "communities/profile_assembly.h"

#include <algorithm>
#include <bit>

namespace kcp {

namespace {

// Calls f(bit) for every bit set in `bits`, ascending.
template <typename F>
void For_each_bit(const CliqueProfile::HotBits& bits, F&& f) {
  for (std::uint32_t w = 0; w < CliqueProfile::kHotWords; ++w) {
    for (std::uint64_t word = bits.words[w]; word != 0; word &= word - 1) {
      f(w * 64 + static_cast<std::uint32_t>(std::countr_zero(word)));
    }
  }
}

}  // namespace

void ProfileAssembly::Assemble(const CliqueIndexList& members, const CliqueProfile& profile,
                               NodeList& nodes, LinkList& links) {
  nodes.clear();
  links.clear();
  if (local_.size() < profile.Rank_count()) {
    local_.resize(profile.Rank_count(), 0);
    seen_.resize(profile.Rank_count(), 0);
    position_.resize(profile.Rank_count(), 0);
  }
  HotBits hot{};
  cold_ranks_.clear();
  for (const std::uint32_t& m : members) {
    if (m >= profile.Clique_count()) continue;
    const CliqueProfile::Record& record = profile.Of(m);
    const HotBits& bits = profile.Hot(m);
    for (std::uint32_t w = 0; w < CliqueProfile::kHotWords; ++w) hot.words[w] |= bits.words[w];
    for (const std::uint32_t& rank : profile.Ranks(m).first(record.cold)) {
      if (local_[rank] == 0) {
        cold_ranks_.push_back(rank);
        local_[rank] = static_cast<std::uint32_t>(cold_ranks_.size());
      }
    }
  }
  // The nodes ascending, and for each its position among them.
  by_node_.clear();
  For_each_bit(hot, [&](const std::uint32_t& bit) {
    const std::uint32_t rank = profile.Hot_rank(bit);
    by_node_.emplace_back(profile.Node(rank), rank);
  });
  for (const std::uint32_t& rank : cold_ranks_) by_node_.emplace_back(profile.Node(rank), rank);
  std::sort(by_node_.begin(), by_node_.end());
  for (std::size_t i = 0; i < by_node_.size(); ++i) {
    nodes.push_back(by_node_[i].first);
    position_[by_node_[i].second] = static_cast<std::uint32_t>(i);
  }

  order_.Clear();
  Hot_links(members, profile);
  Cold_links(members, profile);
  order_.Sorted(nodes, links);
  for (const std::uint32_t& rank : cold_ranks_) local_[rank] = 0;
}

void ProfileAssembly::Hot_links(const CliqueIndexList& members, const CliqueProfile& profile) {
  HotBits used{};
  for (const std::uint32_t& m : members) {
    if (m >= profile.Clique_count()) continue;
    const HotBits& bits = profile.Hot(m);
    For_each_bit(bits, [&](const std::uint32_t& bit) {
      HotBits& row = rows_[bit];
      for (std::uint32_t w = 0; w < CliqueProfile::kHotWords; ++w) row.words[w] |= bits.words[w];
    });
    for (std::uint32_t w = 0; w < CliqueProfile::kHotWords; ++w) used.words[w] |= bits.words[w];
  }
  For_each_bit(used, [&](const std::uint32_t& a) {
    HotBits& row = rows_[a];
    For_each_bit(row, [&](const std::uint32_t& b) {
      if (b > a) Add_link(profile.Hot_rank(a), profile.Hot_rank(b));
    });
    row = HotBits{};
  });
}

void ProfileAssembly::Cold_links(const CliqueIndexList& members, const CliqueProfile& profile) {
  if (cold_ranks_.empty()) return;
  // Every pair of a member clique with a cold node, under the cold node of lower rank: a
  // clique's cold members come first among its ranks, so the partners of its cold member at
  // position i are those after i.
  const std::size_t n = cold_ranks_.size();
  bucket_.assign(n + 1, 0);
  for (const std::uint32_t& m : members) {
    if (m >= profile.Clique_count()) continue;
    const std::span<const std::uint32_t> ranks = profile.Ranks(m);
    for (std::uint32_t i = 0; i < profile.Of(m).cold; ++i) {
      bucket_[local_[ranks[i]]] += static_cast<std::uint32_t>(ranks.size() - i - 1);
    }
  }
  // bucket_[c + 1] counts the partners of cold node c; turn the counts into starts.
  for (std::size_t c = 0; c < n; ++c) bucket_[c + 1] += bucket_[c];
  later_.resize(bucket_[n]);
  for (const std::uint32_t& m : members) {
    if (m >= profile.Clique_count()) continue;
    const std::span<const std::uint32_t> ranks = profile.Ranks(m);
    for (std::uint32_t i = 0; i < profile.Of(m).cold; ++i) {
      std::uint32_t& at = bucket_[local_[ranks[i]] - 1];
      for (std::size_t j = i + 1; j < ranks.size(); ++j) later_[at++] = ranks[j];
    }
  }
  // Placing moved each start to the next bucket's start: bucket c now begins at bucket_[c - 1].
  for (std::size_t c = 0; c < n; ++c) {
    if (++stamp_ == 0) {
      std::fill(seen_.begin(), seen_.end(), 0);
      stamp_ = 1;
    }
    for (std::uint32_t p = c == 0 ? 0 : bucket_[c - 1]; p < bucket_[c]; ++p) {
      const std::uint32_t partner = later_[p];
      if (seen_[partner] == stamp_) continue;
      seen_[partner] = stamp_;
      Add_link(cold_ranks_[c], partner);
    }
  }
}

}  // namespace kcp
