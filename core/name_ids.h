// Finds names in a NamePool by their bytes: an open-addressing hash table of pool numbers, at
// most half full, so that a name is numbered once however often it is met. The table must know
// every name of the pool: fill the pool through Intern only, or call Index_all after changing it
// otherwise.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

#include "core/name_pool.h"

namespace kcp {

class NameIds {
 public:
  static std::size_t Hash(std::string_view name) { return std::hash<std::string_view>()(name); }

  // The number of `name` in the pool, which gets it when it is new.
  std::uint32_t Intern(NamePool& pool, std::string_view name) {
    return Intern(pool, name, Hash(name));
  }
  // The same, for a name whose Hash is known.
  std::uint32_t Intern(NamePool& pool, std::string_view name, const std::size_t& hash) {
    if (2 * (pool.size() + 1) > slots_.size()) Grow(pool, 2 * (pool.size() + 1));
    const std::size_t mask = slots_.size() - 1;
    const auto tag = static_cast<std::uint32_t>(static_cast<std::uint64_t>(hash) >> 32);
    std::size_t at = hash & mask;
    for (; slots_[at].id != 0; at = (at + 1) & mask) {
      if (slots_[at].tag == tag && pool[slots_[at].id - 1] == name) return slots_[at].id - 1;
    }
    const std::uint32_t id = pool.Add(name);
    slots_[at] = Slot{tag, id + 1};
    ++known_;
    return id;
  }
  // Indexes every name of the pool, which must hold each name once.
  void Index_all(const NamePool& pool) {
    slots_.clear();
    Grow(pool, 2 * pool.size());
  }
  bool Knows_all(const NamePool& pool) const { return known_ == pool.size(); }
  // Asks the processor to fetch the slot where a look-up of a name with this hash starts, so
  // that several look-ups can wait for memory at once.
  void Prefetch(const std::size_t& hash) const {
    if (!slots_.empty()) __builtin_prefetch(&slots_[hash & (slots_.size() - 1)]);
  }
  // Releases the table.
  void Clear() noexcept {
    std::vector<Slot>().swap(slots_);
    known_ = 0;
  }

 private:
  struct Slot {
    std::uint32_t tag;  // the high half of the name's hash, which the slot's place does not tell
    std::uint32_t id;   // pool number + 1; 0 marks a free slot
  };

  // A table of at least `wanted` slots (a power of two) holding every name of the pool.
  void Grow(const NamePool& pool, const std::size_t& wanted) {
    std::size_t size = 16;
    while (size < wanted) size *= 2;
    slots_.assign(size, Slot{0, 0});
    const std::size_t mask = size - 1;
    // The slots of the next names are fetched while the current one is placed.
    constexpr std::size_t kAhead = 16;
    std::size_t hashes[kAhead];
    for (std::size_t id = 0; id < pool.size() + kAhead; ++id) {
      if (id >= kAhead) {
        const std::size_t placed = id - kAhead;
        const std::size_t hash = hashes[placed % kAhead];
        std::size_t at = hash & mask;
        while (slots_[at].id != 0) at = (at + 1) & mask;
        slots_[at] = Slot{static_cast<std::uint32_t>(static_cast<std::uint64_t>(hash) >> 32),
                          static_cast<std::uint32_t>(placed + 1)};
      }
      if (id < pool.size()) {
        hashes[id % kAhead] = Hash(pool[id]);
        Prefetch(hashes[id % kAhead]);
      }
    }
    known_ = pool.size();
  }

  std::vector<Slot> slots_;
  std::size_t known_ = 0;
};

}  // namespace kcp
