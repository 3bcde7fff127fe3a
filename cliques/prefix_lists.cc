#include "cliques/prefix_lists.h"

#include <algorithm>
#include <limits>
#include <new>

namespace kcp {

namespace {

std::uint64_t Mix(std::uint64_t x) {
  x ^= x >> 33;
  x *= 0xff51afd7ed558ccdULL;
  x ^= x >> 33;
  return x;
}

bool Listed(const CliqueProfile& profile, const std::uint32_t& j, const std::uint32_t& least_size) {
  return profile.Of(j).size >= least_size;
}

// The subsets of `nodes` of prefix length n.
std::uint64_t Subsets(const std::uint64_t& n, const std::uint32_t& nodes) {
  if (nodes == 1) return n;
  if (nodes == 2) return n * (n - 1) / 2;
  return n * (n - 1) * (n - 2) / 6;
}

}  // namespace

std::uint32_t PrefixLists::Max_key_nodes(const CliqueProfile& profile, const std::uint32_t& t) {
  const std::uint32_t packable = profile.Rank_count() <= (std::uint32_t{1} << 21) ? 3 : 2;
  return std::min({t, kMaxKeyNodes, packable});
}

std::uint64_t PrefixLists::Entries(const CliqueProfile& profile, const std::uint32_t& t,
                                   const std::uint32_t& least_size,
                                   const std::uint32_t& key_nodes) {
  std::uint64_t entries = 0;
  for (std::uint32_t j = 0; j < profile.Clique_count(); ++j) {
    if (!Listed(profile, j, least_size)) continue;
    entries += Subsets(Prefix_length(profile.Of(j).size, t, key_nodes), key_nodes);
  }
  return entries;
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

std::uint32_t PrefixLists::Key_list(const std::uint64_t& key, const bool& add) {
  if (add && (key_count_ + std::size_t{1}) * 2 > key_slots_.size()) {
    // Grow to keep the table at most half full.
    std::vector<std::uint64_t> slots(std::max<std::size_t>(key_slots_.size() * 2, 1024), ~0ULL);
    std::vector<std::uint32_t> lists(slots.size());
    const std::size_t mask = slots.size() - 1;
    for (std::size_t s = 0; s < key_slots_.size(); ++s) {
      if (key_slots_[s] == ~0ULL) continue;
      std::size_t at = Mix(key_slots_[s]) & mask;
      while (slots[at] != ~0ULL) at = (at + 1) & mask;
      slots[at] = key_slots_[s];
      lists[at] = key_lists_[s];
    }
    key_slots_.swap(slots);
    key_lists_.swap(lists);
  }
  if (key_slots_.empty()) return kNoKey;
  const std::size_t mask = key_slots_.size() - 1;
  for (std::size_t at = Mix(key) & mask;; at = (at + 1) & mask) {
    if (key_slots_[at] == key) return key_lists_[at];
    if (key_slots_[at] == ~0ULL) {
      if (!add) return kNoKey;
      key_slots_[at] = key;
      key_lists_[at] = key_count_;
      begin_.push_back(0);
      return key_count_++;
    }
  }
}

void PrefixLists::Build(const CliqueProfile& profile, const std::uint32_t& t,
                        const std::uint32_t& least_size, const std::uint32_t& key_nodes) {
  profile_ = &profile;
  t_ = t;
  key_nodes_ = key_nodes;
  if (Entries(profile, t, least_size, key_nodes) > std::numeric_limits<std::uint32_t>::max()) {
    throw std::bad_alloc();
  }
  const auto prefix = [&](const std::uint32_t& j) {
    return profile.Ranks(j).first(Prefix_length(profile.Of(j).size, t, key_nodes));
  };
  if (key_nodes == 1) {
    // Single nodes: a list per rank, filled in two passes, counting and placing.
    own_begin_.clear();
    begin_.assign(profile.Rank_count(), 0);
    for (std::uint32_t j = 0; j < profile.Clique_count(); ++j) {
      if (!Listed(profile, j, least_size)) continue;
      for (const std::uint32_t& rank : prefix(j)) ++begin_[rank];
    }
    Open_lists();
    for (std::uint32_t j = 0; j < profile.Clique_count(); ++j) {
      if (!Listed(profile, j, least_size)) continue;
      for (const std::uint32_t& rank : prefix(j)) Place(rank, j);
    }
    return;
  }
  // Several nodes: the keys are looked up once, while counting, and each clique keeps its lists.
  std::fill(key_slots_.begin(), key_slots_.end(), ~0ULL);
  key_count_ = 0;
  begin_.clear();
  own_begin_.assign(profile.Clique_count() + std::size_t{1}, 0);
  own_lists_.clear();
  for (std::uint32_t j = 0; j < profile.Clique_count(); ++j) {
    if (Listed(profile, j, least_size)) {
      Each_key(prefix(j), [&](const std::uint64_t& key) {
        const std::uint32_t list = Key_list(key, true);
        ++begin_[list];
        own_lists_.push_back(list);
      });
    }
    own_begin_[j + std::size_t{1}] = own_lists_.size();
  }
  Open_lists();
  for (std::uint32_t j = 0; j < profile.Clique_count(); ++j) {
    for (std::uint64_t p = own_begin_[j]; p < own_begin_[j + std::size_t{1}]; ++p) {
      Place(own_lists_[p], j);
    }
  }
}

}  // namespace kcp
