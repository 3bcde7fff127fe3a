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

// The subsets of `nodes` nodes of a prefix of length n.
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
    const std::uint32_t size = profile.Of(j).size;
    if (size >= least_size) entries += Subsets(Prefix_length(size, t, key_nodes), key_nodes);
  }
  return entries;
}

std::uint32_t PrefixLists::Key_list(const std::uint64_t& key, const bool& add) {
  if (add && (list_count_ + std::size_t{1}) * 2 > key_slots_.size()) {
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
      key_lists_[at] = list_count_;
      new_count_.push_back(0);
      return list_count_++;
    }
  }
}

void PrefixLists::Clear() {
  t_ = 0;
  least_size_ = 0;
  list_count_ = key_nodes_ == 1 ? profile_->Rank_count() : 0;
  begin_.assign(list_count_ + std::size_t{1}, 0);
  end_.assign(list_count_, 0);
  entries_.clear();
  own_begin_.assign(key_nodes_ == 1 ? 0 : profile_->Clique_count() + std::size_t{1}, 0);
  own_lists_.clear();
  std::fill(key_slots_.begin(), key_slots_.end(), ~0ULL);
}

void PrefixLists::Prepare(const CliqueProfile& profile, const std::uint32_t& t,
                          const std::uint32_t& least_size, const std::uint32_t& key_nodes) {
  if (Entries(profile, t, least_size, key_nodes) > std::numeric_limits<std::uint32_t>::max()) {
    throw std::bad_alloc();
  }
  const bool grows = profile_ == &profile && key_nodes_ == key_nodes && least_size_ != 0 &&
                     t <= t_ && least_size <= least_size_;
  if (!grows) {
    profile_ = &profile;
    key_nodes_ = key_nodes;
    Clear();
  }
  Add(t, least_size);
}

void PrefixLists::Add(const std::uint32_t& t, const std::uint32_t& least_size) {
  const CliqueProfile& profile = *profile_;
  const std::uint32_t old_lists = list_count_;
  // The new keys of each clique: those that reach into the part its prefix grew by, or all of a
  // clique listed for the first time.
  const auto each_new_key = [&](const std::uint32_t& j, const auto& f) {
    const std::uint32_t size = profile.Of(j).size;
    if (size < least_size) return;
    const bool listed = least_size_ != 0 && size >= least_size_;
    const std::size_t from = listed ? Prefix_length(size, t_, key_nodes_) : 0;
    Each_key(profile.Ranks(j).first(Prefix_length(size, t, key_nodes_)), from, f);
  };
  new_count_.assign(list_count_, 0);
  new_lists_.clear();
  // Keys of several nodes are looked up once: each clique's new lists, in clique order.
  std::vector<std::uint64_t>& new_end = new_end_;
  if (key_nodes_ > 1) new_end.assign(profile.Clique_count(), 0);
  for (std::uint32_t j = 0; j < profile.Clique_count(); ++j) {
    each_new_key(j, [&](const std::uint64_t& key) {
      if (key_nodes_ == 1) {
        ++new_count_[key];
        return;
      }
      const std::uint32_t list = Key_list(key, true);
      ++new_count_[list];
      new_lists_.push_back(list);
    });
    if (key_nodes_ > 1) new_end[j] = new_lists_.size();
  }

  Make_room(old_lists);
  if (key_nodes_ == 1) {
    for (std::uint32_t j = 0; j < profile.Clique_count(); ++j) {
      each_new_key(j, [&](const std::uint64_t& rank) { entries_[end_[rank]++] = j; });
    }
  } else {
    std::uint64_t p = 0;
    for (std::uint32_t j = 0; j < profile.Clique_count(); ++j) {
      for (; p < new_end[j]; ++p) entries_[end_[new_lists_[p]]++] = j;
    }
    Extend_own_lists();
  }
  t_ = t;
  least_size_ = least_size;
}

void PrefixLists::Make_room(const std::uint32_t& old_lists) {
  // Each list keeps its old entries (those set aside included), then room for its new. Lists
  // only grow, so each starts no earlier than before: moved from the last to the first,
  // they fit in place.
  old_begin_.assign(begin_.begin(), begin_.end());
  begin_.resize(list_count_ + std::size_t{1});
  std::uint32_t at = 0;
  for (std::uint32_t l = 0; l < list_count_; ++l) {
    begin_[l] = at;
    at += (l < old_lists ? old_begin_[l + 1] - old_begin_[l] : 0) + new_count_[l];
  }
  begin_[list_count_] = at;
  entries_.resize(at);
  end_.resize(list_count_);
  for (std::uint32_t l = list_count_; l-- > 0;) {
    const std::uint32_t old_size = l < old_lists ? old_begin_[l + 1] - old_begin_[l] : 0;
    if (old_size != 0 && begin_[l] != old_begin_[l]) {
      std::copy_backward(entries_.begin() + old_begin_[l], entries_.begin() + old_begin_[l + 1],
                         entries_.begin() + begin_[l] + old_size);
    }
    end_[l] = begin_[l] + old_size;
  }
}

void PrefixLists::Extend_own_lists() {
  // Each clique's lists: its old ones, then its new ones, moved in place from the last clique
  // to the first as the lists above; clique j moves up by the new lists of the cliques before.
  const std::size_t cliques = profile_->Clique_count();
  own_lists_.resize(own_begin_[cliques] + new_lists_.size());
  const auto pos = [](auto& v, const std::uint64_t& i) {
    return v.begin() + static_cast<std::ptrdiff_t>(i);
  };
  for (std::size_t j = cliques; j-- > 0;) {
    const std::uint64_t before = j == 0 ? 0 : new_end_[j - 1];
    const std::uint64_t old_from = own_begin_[j];
    const std::uint64_t old_to = own_begin_[j + 1];
    const std::uint64_t to = old_to + before;
    if (before != 0) {
      std::copy_backward(pos(own_lists_, old_from), pos(own_lists_, old_to), pos(own_lists_, to));
    }
    std::copy(pos(new_lists_, before), pos(new_lists_, new_end_[j]), pos(own_lists_, to));
    own_begin_[j + 1] = old_to + new_end_[j];
  }
}

}  // namespace kcp
