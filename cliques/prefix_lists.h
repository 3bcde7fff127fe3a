// Lists of cliques under keys drawn from their prefixes, for finding every clique that shares at
// least t nodes with a given one without comparing it with the others. A clique's prefix, for
// keys of r nodes, is its first size - t + r ranks (rarest node first, see clique_profile.h): two
// cliques that share t nodes have their r rarest shared nodes inside both prefixes, so both are
// listed under that r-node key. Keys are single nodes (r = 1) or node pairs (r = 2): pairs make
// shorter lists but many more entries; Build weighs the two for the cliques at hand. Lists keep
// their cliques ascending and forget, as they are walked, the cliques the caller calls taken.
// The memory of one Build is kept for the next.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "cliques/clique_profile.h"

namespace kcp {

class PrefixLists {
 public:
  // Lists every clique of the profile with at least `least_size` members (least_size >= t >= 1).
  // Throws std::bad_alloc when the lists would hold more entries than 32-bit positions count.
  void Build(const CliqueProfile& profile, const std::uint32_t& t, const std::uint32_t& least_size);

  // Calls visit(j) for every clique j listed under a key of clique c's prefix (c itself when it
  // is listed) for which taken(j) is false, once per key: a clique sharing several keys with c
  // comes several times. Cliques found taken leave the lists walked. c may be any clique of the
  // profile; one with fewer than t members has no key.
  template <typename Taken, typename Visit>
  void Walk(const std::uint32_t& c, Taken&& taken, Visit&& visit);

  // The number of nodes of a key: 1 or 2.
  std::uint32_t Key_nodes() const { return key_nodes_; }

 private:
  static constexpr std::uint32_t kNoKey = 0xffffffffu;

  std::uint32_t Prefix_length(const std::uint32_t& size) const { return size - t_ + key_nodes_; }
  void Build_node_keys(const std::uint32_t& least_size);
  void Build_pair_keys(const std::uint32_t& least_size);
  // The key of the pair (a, b) of ranks, a < b, made when `add` and missing; kNoKey otherwise.
  std::uint32_t Pair_key(const std::uint32_t& a, const std::uint32_t& b, const bool& add);
  void Place(const std::uint32_t& key, const std::uint32_t& clique);
  // Ends the counting: begin_ from the counts, end_ at each begin, ready for Place.
  void Open_lists();

  template <typename Taken, typename Visit>
  void Walk_key(const std::uint32_t& key, Taken& taken, Visit& visit);

  const CliqueProfile* profile_ = nullptr;
  std::uint32_t t_ = 1;
  std::uint32_t key_nodes_ = 1;
  std::vector<std::uint32_t> begin_;    // key -> its first entry (counts while building)
  std::vector<std::uint32_t> end_;      // key -> one past its last untaken entry
  std::vector<std::uint32_t> entries_;  // cliques, key by key
  // Pair keys: the keys of each listed clique, and an open-addressing table of the pairs.
  std::vector<std::uint64_t> own_begin_;
  std::vector<std::uint32_t> own_keys_;
  std::vector<std::uint64_t> pair_slots_;  // (a << 32 | b), or ~0 when free
  std::vector<std::uint32_t> pair_ids_;
  std::uint32_t pair_count_ = 0;
};

template <typename Taken, typename Visit>
void PrefixLists::Walk_key(const std::uint32_t& key, Taken& taken, Visit& visit) {
  const std::uint32_t end = end_[key];
  std::uint32_t kept = begin_[key];
  for (std::uint32_t q = begin_[key]; q < end; ++q) {
    const std::uint32_t j = entries_[q];
    if (taken(j)) continue;
    // Kept entries move up over forgotten ones, in order.
    entries_[kept++] = j;
    visit(j);
  }
  end_[key] = kept;
}

template <typename Taken, typename Visit>
void PrefixLists::Walk(const std::uint32_t& c, Taken&& taken, Visit&& visit) {
  const std::uint32_t size = profile_->Of(c).size;
  if (size < t_) return;
  const std::span<const std::uint32_t> prefix = profile_->Ranks(c).first(Prefix_length(size));
  if (key_nodes_ == 1) {
    for (const std::uint32_t& rank : prefix) Walk_key(rank, taken, visit);
    return;
  }
  if (c + std::size_t{1} < own_begin_.size() && own_begin_[c] != own_begin_[c + 1]) {
    for (std::uint64_t p = own_begin_[c]; p < own_begin_[c + 1]; ++p) {
      Walk_key(own_keys_[p], taken, visit);
    }
    return;
  }
  // A clique that is not listed looks its pairs up.
  for (std::size_t a = 0; a < prefix.size(); ++a) {
    for (std::size_t b = a + 1; b < prefix.size(); ++b) {
      const std::uint32_t key = Pair_key(prefix[a], prefix[b], false);
      if (key != kNoKey) Walk_key(key, taken, visit);
    }
  }
}

}  // namespace kcp
