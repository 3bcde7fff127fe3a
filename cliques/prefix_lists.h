// Lists of cliques under keys drawn from their prefixes, for finding every clique that shares at
// least t nodes with a given one without comparing it with the others. A clique's prefix, for
// keys of r nodes, is its first size - t + r ranks (rarest node first, see clique_profile.h): two
// cliques that share t nodes have their r rarest shared nodes inside both prefixes, so both are
// listed under that r-node key. Keys of more nodes make shorter lists, with fewer cliques that
// share the key but not t nodes, out of many more entries; the caller weighs the two with
// Entries. Walks forget, for the rest of a k, the cliques the caller calls taken.
//
// From one k to the next smaller one, with keys of as many nodes, prefixes only grow and more
// cliques are listed: Prepare then adds the new entries to the lists it has rather than building
// them anew, and the memory of one k is kept for the next.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "cliques/clique_profile.h"

namespace kcp {

class PrefixLists {
 public:
  static constexpr std::uint32_t kMaxKeyNodes = 3;

  // The most nodes a key can have for threshold t: at most t, kMaxKeyNodes, and two when ranks
  // are too many to pack three of them into 64 bits.
  static std::uint32_t Max_key_nodes(const CliqueProfile& profile, const std::uint32_t& t);

  // The entries that lists with keys of `key_nodes` nodes hold for the cliques Prepare lists.
  static std::uint64_t Entries(const CliqueProfile& profile, const std::uint32_t& t,
                               const std::uint32_t& least_size, const std::uint32_t& key_nodes);

  // Lists, under keys of key_nodes (1 to Max_key_nodes) nodes, every clique of the profile with
  // at least least_size (>= t >= 1) members, none of them taken. Throws std::bad_alloc when the
  // lists would hold more entries than 32-bit positions count.
  void Prepare(const CliqueProfile& profile, const std::uint32_t& t,
               const std::uint32_t& least_size, const std::uint32_t& key_nodes);

  // Calls visit(j) for every clique j listed under a key of clique c's prefix (c itself when it
  // is listed) for which taken(j) is false, once per key: a clique sharing several keys with c
  // comes several times. Cliques found taken are set aside in the lists walked. c may be any
  // clique of the profile; one with fewer than t members has no key.
  template <typename Taken, typename Visit>
  void Walk(const std::uint32_t& c, Taken&& taken, Visit&& visit);

  std::uint32_t Key_nodes() const { return key_nodes_; }

 private:
  static constexpr std::uint32_t kNoKey = 0xffffffffu;

  static std::uint32_t Prefix_length(const std::uint32_t& size, const std::uint32_t& t,
                                     const std::uint32_t& key_nodes) {
    return size - t + key_nodes;
  }
  // Calls f(packed key) for every key of the prefix whose last node is at position `from` or
  // after.
  template <typename F>
  void Each_key(const std::span<const std::uint32_t>& prefix, const std::size_t& from, F&& f) const;
  // The list of a packed key, made when `add` and missing; kNoKey otherwise.
  std::uint32_t Key_list(const std::uint64_t& key, const bool& add);
  void Clear();
  // Adds the entries of the cliques listed at (t, least_size) and not at the lists' present
  // threshold and least size (all of them after Clear).
  void Add(const std::uint32_t& t, const std::uint32_t& least_size);
  // Steps of Add once the new entries are counted: lays the lists out again, each with room for
  // its new entries behind its old ones (the first old_lists lists had entries before); then
  // gives each clique's list of lists its new lists (keys of several nodes).
  void Make_room(const std::uint32_t& old_lists);
  void Extend_own_lists();

  template <typename Taken, typename Visit>
  void Walk_list(const std::uint32_t& list, Taken& taken, Visit& visit);

  const CliqueProfile* profile_ = nullptr;
  std::uint32_t t_ = 0;
  std::uint32_t least_size_ = 0;  // 0: nothing listed yet
  std::uint32_t key_nodes_ = 1;
  std::uint32_t list_count_ = 0;
  std::vector<std::uint32_t> begin_;    // list -> its first entry; one more for the end
  std::vector<std::uint32_t> end_;      // list -> one past its last entry not set aside
  std::vector<std::uint32_t> entries_;  // cliques, list by list
  // Keys of several nodes: the lists of each listed clique, and an open-addressing table from
  // packed keys to their lists. Single nodes (ranks) are their own lists.
  std::vector<std::uint64_t> own_begin_;
  std::vector<std::uint32_t> own_lists_;
  std::vector<std::uint64_t> key_slots_;  // packed keys, or ~0 when free
  std::vector<std::uint32_t> key_lists_;
  // Scratch of Add, kept with its memory.
  std::vector<std::uint32_t> new_count_;
  std::vector<std::uint32_t> new_lists_;
  std::vector<std::uint32_t> old_begin_;
  std::vector<std::uint64_t> new_end_;  // clique -> one past its last list in new_lists_
};

template <typename F>
void PrefixLists::Each_key(const std::span<const std::uint32_t>& prefix, const std::size_t& from,
                           F&& f) const {
  const std::size_t n = prefix.size();
  if (key_nodes_ == 1) {
    for (std::size_t a = from; a < n; ++a) f(std::uint64_t{prefix[a]});
    return;
  }
  if (key_nodes_ == 2) {
    for (std::size_t b = std::max<std::size_t>(from, 1); b < n; ++b) {
      for (std::size_t a = 0; a < b; ++a) f((std::uint64_t{prefix[a]} << 32) | prefix[b]);
    }
    return;
  }
  for (std::size_t c = std::max<std::size_t>(from, 2); c < n; ++c) {
    for (std::size_t b = 1; b < c; ++b) {
      const std::uint64_t bc = (std::uint64_t{prefix[b]} << 21) | prefix[c];
      for (std::size_t a = 0; a < b; ++a) f((std::uint64_t{prefix[a]} << 42) | bc);
    }
  }
}

template <typename Taken, typename Visit>
void PrefixLists::Walk_list(const std::uint32_t& list, Taken& taken, Visit& visit) {
  std::uint32_t end = end_[list];
  for (std::uint32_t q = begin_[list]; q < end;) {
    const std::uint32_t j = entries_[q];
    if (taken(j)) {
      // Set aside behind the entries still walked, for the next k.
      entries_[q] = entries_[--end];
      entries_[end] = j;
      continue;
    }
    visit(j);
    ++q;
  }
  end_[list] = end;
}

template <typename Taken, typename Visit>
void PrefixLists::Walk(const std::uint32_t& c, Taken&& taken, Visit&& visit) {
  const std::uint32_t size = profile_->Of(c).size;
  if (size < t_ || least_size_ == 0) return;
  const std::span<const std::uint32_t> prefix =
      profile_->Ranks(c).first(Prefix_length(size, t_, key_nodes_));
  if (key_nodes_ == 1) {
    for (const std::uint32_t& rank : prefix) {
      if (begin_[rank] != end_[rank]) __builtin_prefetch(entries_.data() + begin_[rank]);
    }
    for (const std::uint32_t& rank : prefix) Walk_list(rank, taken, visit);
    return;
  }
  if (c + std::size_t{1} < own_begin_.size() && own_begin_[c] != own_begin_[c + 1]) {
    // The heads of all the lists are fetched before the first is walked.
    for (std::uint64_t p = own_begin_[c]; p < own_begin_[c + 1]; ++p) {
      const std::uint32_t list = own_lists_[p];
      if (begin_[list] != end_[list]) __builtin_prefetch(entries_.data() + begin_[list]);
    }
    for (std::uint64_t p = own_begin_[c]; p < own_begin_[c + 1]; ++p) {
      Walk_list(own_lists_[p], taken, visit);
    }
    return;
  }
  // A clique that is not listed looks its keys up.
  Each_key(prefix, 0, [&](const std::uint64_t& key) {
    const std::uint32_t list = Key_list(key, false);
    if (list != kNoKey) Walk_list(list, taken, visit);
  });
}

}  // namespace kcp
