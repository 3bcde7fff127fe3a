// The index-to-name map: node index -> node name, iterated in ascending index order, each entry
// read as the pair (index, view of the name). The names are stored back to back (NamePool), so a
// name costs its bytes and twelve more. A map whose indices run densely from 1, as node
// numbering gives it, finds a name in one step; others by binary search. Appending in index
// order is the fast way to fill it; inserting elsewhere moves what follows.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <iterator>
#include <stdexcept>
#include <string_view>
#include <utility>
#include <vector>

#include "core/name_pool.h"
#include "core/position_iterator.h"

namespace kcp {

class NameMap {
 public:
  using key_type = std::uint32_t;
  using mapped_type = std::string_view;
  using value_type = std::pair<std::uint32_t, std::string_view>;
  using size_type = std::size_t;
  using const_iterator = PositionIterator<NameMap, value_type>;
  using iterator = const_iterator;
  using const_reverse_iterator = std::reverse_iterator<const_iterator>;
  using reverse_iterator = const_reverse_iterator;

  NameMap() = default;
  // As a map built by inserting the pairs in turn: of equal indices the first stays.
  NameMap(std::initializer_list<value_type> values) {
    for (const value_type& value : values) emplace(value.first, value.second);
  }

  const_iterator begin() const noexcept { return const_iterator(this, 0); }
  const_iterator end() const noexcept { return const_iterator(this, indices_.size()); }
  const_reverse_iterator rbegin() const noexcept { return const_reverse_iterator(end()); }
  const_reverse_iterator rend() const noexcept { return const_reverse_iterator(begin()); }
  size_type size() const noexcept { return indices_.size(); }
  bool empty() const noexcept { return indices_.empty(); }
  // Releases the storage.
  void clear() noexcept {
    std::vector<std::uint32_t>().swap(indices_);
    names_.Clear();
  }
  // Room for `count` names of `bytes` bytes in all.
  void reserve(const size_type& count, const size_type& bytes) {
    indices_.reserve(count);
    names_.Reserve(count, bytes);
  }

  const_iterator find(const std::uint32_t& index) const {
    const std::size_t at = Position_of(index);
    return at < indices_.size() && indices_[at] == index ? const_iterator(this, at) : end();
  }
  size_type count(const std::uint32_t& index) const { return find(index) != end() ? 1 : 0; }
  bool contains(const std::uint32_t& index) const { return find(index) != end(); }
  std::string_view at(const std::uint32_t& index) const {
    const const_iterator found = find(index);
    if (found == end()) throw std::out_of_range("NameMap::at");
    return names_[found.Position()];
  }
  // The name of `index`; the empty name when it has none.
  std::string_view operator[](const std::uint32_t& index) const {
    const std::size_t at = Position_of(index);
    return at < indices_.size() && indices_[at] == index ? names_[at] : std::string_view();
  }

  std::pair<const_iterator, bool> emplace(const std::uint32_t& index, std::string_view name) {
    if (indices_.empty() || indices_.back() < index) {
      indices_.push_back(index);
      names_.Add(name);
      return {end() - 1, true};
    }
    const std::size_t at = Position_of(index);
    if (indices_[at] == index) return {const_iterator(this, at), false};
    indices_.insert(indices_.begin() + static_cast<std::ptrdiff_t>(at), index);
    names_.Insert(at, name);
    return {const_iterator(this, at), true};
  }
  std::pair<const_iterator, bool> try_emplace(const std::uint32_t& index, std::string_view name) {
    return emplace(index, name);
  }
  std::pair<const_iterator, bool> insert(const value_type& value) {
    return emplace(value.first, value.second);
  }
  // The hint is not needed: appending in index order is already the fast case.
  const_iterator emplace_hint(const_iterator /*hint*/, const std::uint32_t& index,
                              std::string_view name) {
    return emplace(index, name).first;
  }

  value_type Entry_at(const std::size_t& at) const { return {indices_[at], names_[at]}; }

  friend bool operator==(const NameMap&, const NameMap&) = default;

 private:
  // The position of the first index not below `index`.
  std::size_t Position_of(const std::uint32_t& index) const {
    const std::size_t dense = std::size_t{index} - 1;
    if (index != 0 && dense < indices_.size() && indices_[dense] == index) return dense;
    return static_cast<std::size_t>(std::lower_bound(indices_.begin(), indices_.end(), index) -
                                    indices_.begin());
  }

  std::vector<std::uint32_t> indices_;  // ascending
  NamePool names_;                      // names_[i] is the name of indices_[i]
};

}  // namespace kcp
