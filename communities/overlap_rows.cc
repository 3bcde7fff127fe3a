#include "communities/overlap_rows.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <utility>

#include "cliques/on_demand_index.h"

namespace kcp {

namespace {

// Cliques ahead of the one compared whose hot bits are fetched into the cache.
constexpr std::size_t kAhead = 8;

bool Is_free(const std::vector<std::int32_t>& labels, const std::uint32_t& clique) {
  return clique >= labels.size() || labels[clique] < 0;
}

bool Bit(const std::vector<std::uint64_t>& bits, const std::uint32_t& i) {
  return (bits[i / 64] >> (i % 64)) & 1;
}

void Set_bit(std::vector<std::uint64_t>& bits, const std::uint32_t& i) {
  bits[i / 64] |= std::uint64_t{1} << (i % 64);
}

}  // namespace

OverlapRows::OverlapRows(const CliqueList& cliques, const OverlapMatrix& overlaps,
                         const std::uint32_t& k, const std::uint32_t& n_exact)
    : cliques_(cliques),
      overlaps_(overlaps),
      k_(k),
      need_(k - 1),
      least_(std::max(k - 1, 1u)),
      all_exact_(n_exact >= cliques.size()) {
  if (!overlaps_.On_demand() || k_ == 0) return;
  // A k above every clique seeds no community: its index is made only if a row is asked for.
  if (std::any_of(cliques_.begin(), cliques_.end(),
                  [&](const Clique& clique) { return clique.size() >= k_; })) {
    Build_index();
  }
}

void OverlapRows::Build_index() {
  index_ = overlaps_.index;
  if (index_) {
    profile_ = index_->Profile(cliques_);
    lists_ = index_->Borrow_lists();
  } else {
    profile_ = std::make_shared<const CliqueProfile>(cliques_);
    lists_ = std::make_unique<PrefixLists>();
  }
  least_size_ = all_exact_ ? std::max(least_, k_) : least_;
  const std::size_t words = (cliques_.size() + 63) / 64;
  taken_.assign(words, 0);
  seen_.assign(words, 0);
  cold_marks_.assign((profile_->Rank_count() + std::size_t{63}) / 64, 0);
  lists_->Prepare(*profile_, least_, least_size_, Key_nodes());
}

std::uint32_t OverlapRows::Key_nodes() const {
  const auto entries = [&](const std::uint32_t& key_nodes) {
    return PrefixLists::Entries(*profile_, least_, least_size_, key_nodes);
  };
  const std::uint32_t most = PrefixLists::Max_key_nodes(*profile_, least_);
  std::uint32_t key_nodes = 1;
  std::uint64_t last = entries(1);
  // Longer keys while their entries stay within these multiples of the shorter keys' entries:
  // beyond, building and forgetting the entries costs more than the comparisons they spare.
  for (const std::uint64_t& ratio : {std::uint64_t{5}, std::uint64_t{2}}) {
    if (key_nodes == most) break;
    const std::uint64_t next = entries(key_nodes + 1);
    if (next > ratio * last) break;
    ++key_nodes;
    last = next;
  }
  return key_nodes;
}

OverlapRows::~OverlapRows() {
  if (index_ && lists_) index_->Return_lists(std::move(lists_));
}

std::size_t OverlapRows::Row_count() const {
  return overlaps_.On_demand() ? cliques_.size() : overlaps_.rows.size();
}

void OverlapRows::Taken(const std::uint32_t& j) {
  if (j < cliques_.size() && !taken_.empty()) Set_bit(taken_, j);
}

bool OverlapRows::Row(const std::uint32_t& c, const std::vector<std::int32_t>& labels,
                      const bool& free_only, CliqueIndexList& out) {
  out.clear();
  if (!overlaps_.On_demand()) return Stored_row(c, labels, free_only, out);
  return Computed_row(c, labels, out);
}

bool OverlapRows::Stored_row(const std::uint32_t& c, const std::vector<std::int32_t>& labels,
                             const bool& free_only, CliqueIndexList& out) const {
  if (c >= overlaps_.rows.size()) return false;
  if (overlaps_.by_share) {
    const OverlapRow& row = overlaps_.rows[c];
    for (const Overlap& entry : row) {
      if (entry.shared < need_) break;
      if (free_only && entry.clique < labels.size() && labels[entry.clique] >= 0) continue;
      out.push_back(entry.clique);
    }
    std::sort(out.begin(), out.end());
    return !row.empty() && row.front().shared >= k_;
  }
  bool qualifies = false;
  for (const Overlap& entry : overlaps_.rows[c]) {
    if (entry.shared >= k_) qualifies = true;
    if (entry.shared < need_) continue;
    // A clique named in a row but beyond the labels counts as free.
    if (free_only && entry.clique < labels.size() && labels[entry.clique] >= 0) continue;
    out.push_back(entry.clique);
  }
  return qualifies;
}

std::uint32_t OverlapRows::Shared_cold(const std::uint32_t& j) const {
  std::uint32_t shared = 0;
  for (const std::uint32_t& rank : profile_->Ranks(j).first(profile_->Of(j).cold)) {
    shared += Bit(cold_marks_, rank);
  }
  return shared;
}

bool OverlapRows::Computed_row(const std::uint32_t& c, const std::vector<std::int32_t>& labels,
                               CliqueIndexList& out) {
  if (c >= cliques_.size()) return false;
  // At k = 0 the diagonal qualifies, and k - 1 wraps so that nothing is a candidate.
  if (k_ == 0) return true;
  if (!profile_) {
    Build_index();
    for (std::uint32_t j = 0; j < labels.size() && j < cliques_.size(); ++j) {
      if (labels[j] >= 0) Taken(j);
    }
  }
  const CliqueProfile::Record& own = profile_->Of(c);
  // The diagonal holds the clique's own size.
  bool qualifies = own.size >= k_;
  if (own.size >= need_ && Is_free(labels, c)) out.push_back(c);
  if (own.size < least_) return qualifies;

  const std::span<const std::uint32_t> own_cold = profile_->Ranks(c).first(own.cold);
  for (const std::uint32_t& rank : own_cold) Set_bit(cold_marks_, rank);
  // First the distinct untaken cliques of c's lists, then their overlaps, their hot bits fetched
  // ahead of use.
  Set_bit(seen_, c);
  met_.clear();
  lists_->Walk(
      c, [&](const std::uint32_t& j) { return Bit(taken_, j); },
      [&](const std::uint32_t& j) {
        if (Bit(seen_, j)) return;
        Set_bit(seen_, j);
        met_.push_back(j);
      });
  seen_[c / 64] = 0;
  for (const std::uint32_t& j : met_) seen_[j / 64] = 0;

  const CliqueProfile::HotBits* const hot = profile_->Hot_bits();
  const CliqueProfile::HotBits& own_hot = hot[c];
  for (std::size_t i = 0; i < met_.size(); ++i) {
    if (i + kAhead < met_.size()) __builtin_prefetch(hot + met_[i + kAhead]);
    const std::uint32_t j = met_[i];
    std::uint32_t shared = 0;
    for (std::size_t w = 0; w < CliqueProfile::kHotWords; ++w) {
      shared += static_cast<std::uint32_t>(std::popcount(own_hot.words[w] & hot[j].words[w]));
    }
    // Cold members are counted only when they can make the difference.
    if (shared < k_ && own.cold != 0) {
      const std::uint32_t other_cold = hot[j].cold;
      if (other_cold != 0 && shared + std::min(own.cold, other_cold) >= least_) {
        shared += Shared_cold(j);
      }
    }
    if (shared < least_) continue;
    if (!Is_free(labels, j)) {
      Taken(j);
      continue;
    }
    if (shared >= k_) qualifies = true;
    out.push_back(j);
  }
  for (const std::uint32_t& rank : own_cold) cold_marks_[rank / 64] = 0;
  std::sort(out.begin(), out.end());
  return qualifies;
}

}  // namespace kcp
