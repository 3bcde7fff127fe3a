// An ordered map kept as one vector of (key, value) pairs ascending by key, with the interface of
// an ordered map: iteration in key order, look-ups by binary search, insertion and erasure by
// key. Appending a key larger than every other costs what a vector append costs, and
// From_sorted adopts a whole ascending vector at once; insertions and erasures elsewhere move the
// entries behind them, so maps built out of order are for small sizes only.
#pragma once

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <stdexcept>
#include <tuple>
#include <utility>
#include <vector>

namespace kcp {

template <typename Key, typename Value>
class FlatMap {
 public:
  using key_type = Key;
  using mapped_type = Value;
  using value_type = std::pair<Key, Value>;
  using size_type = std::size_t;
  using iterator = typename std::vector<value_type>::iterator;
  using const_iterator = typename std::vector<value_type>::const_iterator;
  using reverse_iterator = typename std::vector<value_type>::reverse_iterator;
  using const_reverse_iterator = typename std::vector<value_type>::const_reverse_iterator;

  FlatMap() = default;
  // As a map built by inserting the values in turn: of equal keys the first stays.
  FlatMap(std::initializer_list<value_type> values) : entries_(values) {
    std::stable_sort(entries_.begin(), entries_.end(), Less_entry);
    entries_.erase(std::unique(entries_.begin(), entries_.end(),
                               [](const value_type& a, const value_type& b) {
                                 return !(a.first < b.first) && !(b.first < a.first);
                               }),
                   entries_.end());
  }
  // `entries` must be strictly ascending by key.
  static FlatMap From_sorted(std::vector<value_type>&& entries) {
    FlatMap map;
    map.entries_ = std::move(entries);
    return map;
  }

  iterator begin() noexcept { return entries_.begin(); }
  iterator end() noexcept { return entries_.end(); }
  const_iterator begin() const noexcept { return entries_.begin(); }
  const_iterator end() const noexcept { return entries_.end(); }
  const_iterator cbegin() const noexcept { return entries_.cbegin(); }
  const_iterator cend() const noexcept { return entries_.cend(); }
  reverse_iterator rbegin() noexcept { return entries_.rbegin(); }
  reverse_iterator rend() noexcept { return entries_.rend(); }
  const_reverse_iterator rbegin() const noexcept { return entries_.rbegin(); }
  const_reverse_iterator rend() const noexcept { return entries_.rend(); }
  size_type size() const noexcept { return entries_.size(); }
  bool empty() const noexcept { return entries_.empty(); }
  // Releases the storage, as an emptied tree would.
  void clear() noexcept { std::vector<value_type>().swap(entries_); }
  void reserve(const size_type& count) { entries_.reserve(count); }

  iterator lower_bound(const Key& key) {
    return std::lower_bound(entries_.begin(), entries_.end(), key, Less_key);
  }
  const_iterator lower_bound(const Key& key) const {
    return std::lower_bound(entries_.begin(), entries_.end(), key, Less_key);
  }
  iterator upper_bound(const Key& key) {
    return std::upper_bound(entries_.begin(), entries_.end(), key, Key_less);
  }
  const_iterator upper_bound(const Key& key) const {
    return std::upper_bound(entries_.begin(), entries_.end(), key, Key_less);
  }
  iterator find(const Key& key) {
    const iterator at = lower_bound(key);
    return at != end() && !(key < at->first) ? at : end();
  }
  const_iterator find(const Key& key) const {
    const const_iterator at = lower_bound(key);
    return at != end() && !(key < at->first) ? at : end();
  }
  size_type count(const Key& key) const { return find(key) != end() ? 1 : 0; }
  bool contains(const Key& key) const { return find(key) != end(); }

  Value& at(const Key& key) {
    const iterator found = find(key);
    if (found == end()) throw std::out_of_range("FlatMap::at");
    return found->second;
  }
  const Value& at(const Key& key) const {
    const const_iterator found = find(key);
    if (found == end()) throw std::out_of_range("FlatMap::at");
    return found->second;
  }
  Value& operator[](const Key& key) { return try_emplace(key).first->second; }

  template <typename... Args>
  std::pair<iterator, bool> try_emplace(const Key& key, Args&&... args) {
    if (entries_.empty() || entries_.back().first < key) {
      Append(key, std::forward<Args>(args)...);
      return {end() - 1, true};
    }
    const iterator at = lower_bound(key);
    if (!(key < at->first)) return {at, false};
    return {entries_.emplace(at, std::piecewise_construct, std::forward_as_tuple(key),
                             std::forward_as_tuple(std::forward<Args>(args)...)),
            true};
  }
  template <typename... Args>
  std::pair<iterator, bool> emplace(const Key& key, Args&&... args) {
    return try_emplace(key, std::forward<Args>(args)...);
  }
  std::pair<iterator, bool> insert(const value_type& value) {
    return try_emplace(value.first, value.second);
  }
  // The hint is not needed: appending in key order is already the fast case.
  template <typename... Args>
  iterator emplace_hint(const_iterator /*hint*/, const Key& key, Args&&... args) {
    return try_emplace(key, std::forward<Args>(args)...).first;
  }

  size_type erase(const Key& key) {
    const iterator found = find(key);
    if (found == end()) return 0;
    entries_.erase(found);
    return 1;
  }
  iterator erase(const_iterator at) { return entries_.erase(at); }

  friend bool operator==(const FlatMap& a, const FlatMap& b) { return a.entries_ == b.entries_; }

 private:
  static bool Less_entry(const value_type& a, const value_type& b) { return a.first < b.first; }
  static bool Less_key(const value_type& a, const Key& key) { return a.first < key; }
  static bool Key_less(const Key& key, const value_type& a) { return key < a.first; }

  template <typename... Args>
  void Append(const Key& key, Args&&... args) {
    entries_.emplace_back(std::piecewise_construct, std::forward_as_tuple(key),
                          std::forward_as_tuple(std::forward<Args>(args)...));
  }

  std::vector<value_type> entries_;
};

}  // namespace kcp
