// The LinkMap: (source name, target name) -> weight, iterated in byte-wise order of the source
// name, then of the target name; each entry reads as the pair ((source view, target view),
// weight). A pair and its reverse are two keys. Every name is stored once (NamePool) and a link
// costs sixteen bytes besides. A whole link file is best turned into a LinkMap at once
// (LinkLines, graph/link_lines.h); single insertions keep the order too, at the cost of moving
// the links that follow.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <stdexcept>
#include <string_view>
#include <utility>
#include <vector>

#include "core/name_ids.h"
#include "core/name_pool.h"
#include "core/position_iterator.h"

namespace kcp {

class LinkMap {
 public:
  using key_type = std::pair<std::string_view, std::string_view>;
  using mapped_type = double;
  using value_type = std::pair<key_type, double>;
  using size_type = std::size_t;
  using const_iterator = PositionIterator<LinkMap, value_type>;
  using iterator = const_iterator;

  // One link as stored: the pool numbers of its names and its weight.
  struct Entry {
    std::uint32_t source;
    std::uint32_t target;
    double weight;
  };

  LinkMap() = default;
  // As a map built by inserting the links in turn: of equal keys the first stays.
  LinkMap(std::initializer_list<value_type> values) {
    for (const value_type& value : values) try_emplace(value.first, value.second);
  }
  // Takes the names and the links as they are: `entries` ascending by (source name, target
  // name), byte-wise, no two equal, and no name twice in `names`.
  LinkMap(NamePool&& names, std::vector<Entry>&& entries)
      : names_(std::move(names)), entries_(std::move(entries)) {}

  const_iterator begin() const noexcept { return const_iterator(this, 0); }
  const_iterator end() const noexcept { return const_iterator(this, entries_.size()); }
  size_type size() const noexcept { return entries_.size(); }
  bool empty() const noexcept { return entries_.empty(); }
  // Releases the storage.
  void clear() noexcept {
    names_.Clear();
    std::vector<Entry>().swap(entries_);
    ids_.Clear();
  }

  const_iterator find(const key_type& key) const {
    const std::size_t at = Position_of(key);
    return at < entries_.size() && Key_at(at) == key ? const_iterator(this, at) : end();
  }
  size_type count(const key_type& key) const { return find(key) != end() ? 1 : 0; }
  bool contains(const key_type& key) const { return find(key) != end(); }
  const double& at(const key_type& key) const {
    const const_iterator found = find(key);
    if (found == end()) throw std::out_of_range("LinkMap::at");
    return entries_[found.Position()].weight;
  }
  double& operator[](const key_type& key) {
    return entries_[try_emplace(key, 0.0).first.Position()].weight;
  }

  std::pair<const_iterator, bool> try_emplace(const key_type& key, const double& weight) {
    std::size_t at = entries_.size();
    if (!entries_.empty() && !(Key_at(at - 1) < key)) {
      at = Position_of(key);
      if (Key_at(at) == key) return {const_iterator(this, at), false};
    }
    if (!ids_.Knows_all(names_)) ids_.Index_all(names_);
    const std::uint32_t source = ids_.Intern(names_, key.first);
    const std::uint32_t target = ids_.Intern(names_, key.second);
    entries_.insert(entries_.begin() + static_cast<std::ptrdiff_t>(at),
                    Entry{source, target, weight});
    return {const_iterator(this, at), true};
  }
  std::pair<const_iterator, bool> emplace(const key_type& key, const double& weight) {
    return try_emplace(key, weight);
  }
  std::pair<const_iterator, bool> insert(const value_type& value) {
    return try_emplace(value.first, value.second);
  }

  // The stored form, for the stages that number the names.
  const NamePool& Names() const noexcept { return names_; }
  std::span<const Entry> Entries() const noexcept { return entries_; }

  value_type Entry_at(const std::size_t& at) const { return {Key_at(at), entries_[at].weight}; }

  friend bool operator==(const LinkMap& a, const LinkMap& b) {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin());
  }

 private:
  key_type Key_at(const std::size_t& at) const {
    return {names_[entries_[at].source], names_[entries_[at].target]};
  }
  // The position of the first key not below `key`.
  std::size_t Position_of(const key_type& key) const {
    std::size_t low = 0;
    std::size_t high = entries_.size();
    while (low < high) {
      const std::size_t middle = low + (high - low) / 2;
      if (Key_at(middle) < key) {
        low = middle + 1;
      } else {
        high = middle;
      }
    }
    return low;
  }

  NamePool names_;
  std::vector<Entry> entries_;
  NameIds ids_;  // filled on the first single insertion only
};

}  // namespace kcp
