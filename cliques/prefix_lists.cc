#include "cliques/prefix_lists.h"

#include <algorithm>
#include <limits>
#include <new>

namespace kcp {

namespace {

// Pairs are taken while they make at most this many times the entries of single nodes: beyond,
// building and forgetting the entries costs more than the shorter lists save.
constexpr std::uint64_t kPairEntriesPerNodeEntry = 5;

std::uint64_t Mix(std::uint64_t x) {
  x ^= x >> 33;
  x *= 0xff51afd7ed558ccdULL;
  x ^= x >> 33;
  return x;
}

void Check_positions(const std::uint64_t& entries) {
  if (entries > std::numeric_limits<std::uint32_t>::max()) throw std::bad_alloc();
}

}  // namespace

void PrefixLists::Build(const CliqueProfile& profile, const std::uint32_t& t,
                        const std::uint32_t& least_size) {
  profile_ = &profile;
  t_ = t;
  std::uint64_t node_entries = 0;
  std::uint64_t pair_entries = 0;
  for (std::uint32_t j = 0; j < profile.Clique_count(); ++j) {
    const std::uint64_t size = profile.Of(j).size;
    if (size < least_size) continue;
    node_entries += size - t + 1;
    pair_entries += (size - t + 2) * (size - t + 1) / 2;
  }
  key_nodes_ = t >= 2 && pair_entries <= kPairEntriesPerNodeEntry * node_entries ? 2 : 1;
  Check_positions(key_nodes_ == 1 ? node_entries : pair_entries);
  if (key_nodes_ == 1) {
    Build_node_keys(least_size);
  } else {
    Build_pair_keys(least_size);
  }
}

void PrefixLists::Open_lists() {
  std::uint32_t at = 0;
  for (std::uint32_t& b : begin_) {
    const std::uint32_t count = b;
    b = at;
    at += count;
  }
  end_.assign(begin_.begin(), begin_.end());
  entries_.resize(at);
}

void PrefixLists::Place(const std::uint32_t& key, const std::uint32_t& clique) {
  entries_[end_[key]++] = clique;
}

void PrefixLists::Build_node_keys(const std::uint32_t& least_size) {
  const CliqueProfile& profile = *profile_;
  own_begin_.clear();
  begin_.assign(profile.Rank_count(), 0);
  for (std::uint32_t j = 0; j < profile.Clique_count(); ++j) {
    const std::uint32_t size = profile.Of(j).size;
    if (size < least_size) continue;
    for (const std::uint32_t& rank : profile.Ranks(j).first(Prefix_length(size))) ++begin_[rank];
  }
  Open_lists();
  for (std::uint32_t j = 0; j < profile.Clique_count(); ++j) {
    const std::uint32_t size = profile.Of(j).size;
    if (size < least_size) continue;
    for (const std::uint32_t& rank : profile.Ranks(j).first(Prefix_length(size))) Place(rank, j);
  }
}

std::uint32_t PrefixLists::Pair_key(const std::uint32_t& a, const std::uint32_t& b,
                                    const bool& add) {
  const std::uint64_t pair = (std::uint64_t{a} << 32) | b;
  if (add && (pair_count_ + std::size_t{1}) * 2 > pair_slots_.size()) {
    // Grow to keep the table at most half full.
    std::vector<std::uint64_t> slots(std::max<std::size_t>(pair_slots_.size() * 2, 1024), ~0ULL);
    std::vector<std::uint32_t> ids(slots.size());
    const std::size_t mask = slots.size() - 1;
    for (std::size_t s = 0; s < pair_slots_.size(); ++s) {
      if (pair_slots_[s] == ~0ULL) continue;
      std::size_t at = Mix(pair_slots_[s]) & mask;
      while (slots[at] != ~0ULL) at = (at + 1) & mask;
      slots[at] = pair_slots_[s];
      ids[at] = pair_ids_[s];
    }
    pair_slots_.swap(slots);
    pair_ids_.swap(ids);
  }
  if (pair_slots_.empty()) return kNoKey;
  const std::size_t mask = pair_slots_.size() - 1;
  for (std::size_t at = Mix(pair) & mask;; at = (at + 1) & mask) {
    if (pair_slots_[at] == pair) return pair_ids_[at];
    if (pair_slots_[at] == ~0ULL) {
      if (!add) return kNoKey;
      pair_slots_[at] = pair;
      pair_ids_[at] = pair_count_;
      begin_.push_back(0);
      return pair_count_++;
    }
  }
}

void PrefixLists::Build_pair_keys(const std::uint32_t& least_size) {
  const CliqueProfile& profile = *profile_;
  std::fill(pair_slots_.begin(), pair_slots_.end(), ~0ULL);
  pair_count_ = 0;
  begin_.clear();
  own_begin_.assign(profile.Clique_count() + std::size_t{1}, 0);
  own_keys_.clear();
  for (std::uint32_t j = 0; j < profile.Clique_count(); ++j) {
    const std::uint32_t size = profile.Of(j).size;
    if (size >= least_size) {
      const std::span<const std::uint32_t> prefix = profile.Ranks(j).first(Prefix_length(size));
      for (std::size_t a = 0; a < prefix.size(); ++a) {
        for (std::size_t b = a + 1; b < prefix.size(); ++b) {
          const std::uint32_t key = Pair_key(prefix[a], prefix[b], true);
          ++begin_[key];
          own_keys_.push_back(key);
        }
      }
    }
    own_begin_[j + std::size_t{1}] = own_keys_.size();
  }
  Open_lists();
  for (std::uint32_t j = 0; j < profile.Clique_count(); ++j) {
    for (std::uint64_t p = own_begin_[j]; p < own_begin_[j + std::size_t{1}]; ++p) {
      Place(own_keys_[p], j);
    }
  }
}

}  // namespace kcp
