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
    const std::uint64_t prefix = Name_prefix_key(name);
    const std::size_t mask = slots_.size() - 1;
    std::size_t at = hash & mask;
    // A name of up to eight bytes is told by its slot alone, without reading the pool.
    for (; slots_[at].id != 0; at = (at + 1) & mask) {
      const Slot& slot = slots_[at];
      if (slot.prefix == prefix && slot.length == name.size() &&
          (name.size() <= 8 || pool[slot.id - 1].substr(8) == name.substr(8))) {
        return slot.id - 1;
      }
    }
    const std::uint32_t id = pool.Add(name);
    slots_[at] = Slot{prefix, id + 1, static_cast<std::uint32_t>(name.size())};
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
    std::uint64_t prefix;  // Name_prefix_key of the name
    std::uint32_t id;      // pool number + 1; 0 marks a free slot
    std::uint32_t length;  // of the name (no line of a link file reaches 2^32 bytes)
  };

  // A table of at least `wanted` slots (a power of two) holding every name of the pool.
  void Grow(const NamePool& pool, const std::size_t& wanted) {
    std::size_t size = 16;
    while (size < wanted) size *= 2;
    slots_.assign(size, Slot{0, 0, 0});
    const std::size_t mask = size - 1;
    // The slots of the next names are fetched while the current one is placed.
    constexpr std::size_t kAhead = 16;
    std::size_t hashes[kAhead];
    for (std::size_t id = 0; id < pool.size() + kAhead; ++id) {
      if (id >= kAhead) {
        const std::size_t placed = id - kAhead;
        const std::string_view name = pool[placed];
        std::size_t at = hashes[placed % kAhead] & mask;
        while (slots_[at].id != 0) at = (at + 1) & mask;
        slots_[at] = Slot{Name_prefix_key(name), static_cast<std::uint32_t>(placed + 1),
                          static_cast<std::uint32_t>(name.size())};
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
