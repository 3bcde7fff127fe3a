// A map from node index to record, with the interface of an ordered map, kept as one slot per
// index from 0 up to the largest index held: look-up, insertion and erasure cost one step, and
// iteration visits the records held in ascending index order. Node indices run densely from 1,
// so the slots cost little beyond the records; a map that holds a few large indices holds a slot
// for every index below them. Erasing resets the slot's record to a default one. The slots lie in
// blocks of 4096 rather than in one array, so that a large map fits into the memory the stages
// before it freed; records never move while the map holds them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <iterator>
#include <stdexcept>
#include <type_traits>
#include <utility>
#include <vector>

namespace kcp {

template <typename Record>
class NodeMap {
 public:
  using key_type = std::uint32_t;
  using mapped_type = Record;
  using value_type = std::pair<const std::uint32_t, Record>;
  using size_type = std::size_t;

  template <bool constant>
  class Iterator {
   public:
    using Map = std::conditional_t<constant, const NodeMap, NodeMap>;
    using iterator_category = std::bidirectional_iterator_tag;
    using value_type = NodeMap::value_type;
    using difference_type = std::ptrdiff_t;
    using reference = std::conditional_t<constant, const value_type&, value_type&>;
    using pointer = std::conditional_t<constant, const value_type*, value_type*>;

    Iterator() = default;
    Iterator(Map* map, const std::size_t& at) : map_(map), at_(at) {}
    // A mutable iterator reads as a constant one.
    operator Iterator<true>() const requires(!constant) { return Iterator<true>(map_, at_); }

    reference operator*() const { return map_->Slot(at_); }
    pointer operator->() const { return &map_->Slot(at_); }
    Iterator& operator++() {
      at_ = map_->Next_held(at_ + 1);
      return *this;
    }
    Iterator operator++(int) {
      Iterator before = *this;
      ++*this;
      return before;
    }
    Iterator& operator--() {
      do {
        --at_;
      } while (!map_->held_[at_]);
      return *this;
    }
    Iterator operator--(int) {
      Iterator before = *this;
      --*this;
      return before;
    }
    friend bool operator==(const Iterator& a, const Iterator& b) { return a.at_ == b.at_; }

   private:
    Map* map_ = nullptr;
    std::size_t at_ = 0;
  };
  using iterator = Iterator<false>;
  using const_iterator = Iterator<true>;
  using reverse_iterator = std::reverse_iterator<iterator>;
  using const_reverse_iterator = std::reverse_iterator<const_iterator>;

  NodeMap() = default;
  NodeMap(const NodeMap& other) : held_(other.held_), count_(other.count_) {
    for (std::size_t i = 0; i < other.held_.size(); ++i) Add_slot(other.Slot(i).second);
  }
  NodeMap(NodeMap&& other) noexcept = default;
  NodeMap& operator=(const NodeMap& other) {
    if (this != &other) *this = NodeMap(other);
    return *this;
  }
  NodeMap& operator=(NodeMap&& other) noexcept = default;
  // As a map built by inserting the pairs in turn: of equal indices the first stays.
  NodeMap(std::initializer_list<std::pair<std::uint32_t, Record>> values) {
    for (const auto& [index, record] : values) try_emplace(index, record);
  }

  iterator begin() noexcept { return iterator(this, Next_held(0)); }
  iterator end() noexcept { return iterator(this, held_.size()); }
  const_iterator begin() const noexcept { return const_iterator(this, Next_held(0)); }
  const_iterator end() const noexcept { return const_iterator(this, held_.size()); }
  reverse_iterator rbegin() noexcept { return reverse_iterator(end()); }
  reverse_iterator rend() noexcept { return reverse_iterator(begin()); }
  const_reverse_iterator rbegin() const noexcept { return const_reverse_iterator(end()); }
  const_reverse_iterator rend() const noexcept { return const_reverse_iterator(begin()); }
  size_type size() const noexcept { return count_; }
  bool empty() const noexcept { return count_ == 0; }
  // One past the largest index a slot exists for (every held index lies below).
  std::size_t Index_bound() const noexcept { return held_.size(); }
  // Releases the storage.
  void clear() noexcept {
    std::vector<std::vector<value_type>>().swap(blocks_);
    std::vector<char>().swap(held_);
    count_ = 0;
  }
  // Room for the flags of every index below `bound`.
  void reserve(const std::size_t& bound) { held_.reserve(bound); }

  iterator find(const std::uint32_t& index) { return Holds(index) ? iterator(this, index) : end(); }
  const_iterator find(const std::uint32_t& index) const {
    return Holds(index) ? const_iterator(this, index) : end();
  }
  size_type count(const std::uint32_t& index) const { return Holds(index) ? 1 : 0; }
  bool contains(const std::uint32_t& index) const { return Holds(index); }
  Record& at(const std::uint32_t& index) {
    if (!Holds(index)) throw std::out_of_range("NodeMap::at");
    return Slot(index).second;
  }
  const Record& at(const std::uint32_t& index) const {
    if (!Holds(index)) throw std::out_of_range("NodeMap::at");
    return Slot(index).second;
  }
  Record& operator[](const std::uint32_t& index) { return try_emplace(index).first->second; }

  template <typename... Args>
  std::pair<iterator, bool> try_emplace(const std::uint32_t& index, Args&&... args) {
    if (Holds(index)) return {iterator(this, index), false};
    while (held_.size() <= index) {
      Add_slot(Record());
      held_.push_back(0);
    }
    Slot(index).second = Record(std::forward<Args>(args)...);
    held_[index] = 1;
    ++count_;
    return {iterator(this, index), true};
  }
  template <typename... Args>
  std::pair<iterator, bool> emplace(const std::uint32_t& index, Args&&... args) {
    return try_emplace(index, std::forward<Args>(args)...);
  }
  std::pair<iterator, bool> insert(const std::pair<std::uint32_t, Record>& value) {
    return try_emplace(value.first, value.second);
  }

  size_type erase(const std::uint32_t& index) {
    if (!Holds(index)) return 0;
    Slot(index).second = Record();
    held_[index] = 0;
    --count_;
    return 1;
  }
  iterator erase(const_iterator at) {
    const std::uint32_t index = at->first;
    erase(index);
    return iterator(this, Next_held(std::size_t{index} + 1));
  }

 private:
  bool Holds(const std::uint32_t& index) const noexcept {
    return index < held_.size() && held_[index] != 0;
  }
  std::size_t Next_held(std::size_t at) const noexcept {
    while (at < held_.size() && held_[at] == 0) ++at;
    return at;
  }

  static constexpr std::size_t kBlockBits = 12;
  static constexpr std::size_t kBlock = std::size_t{1} << kBlockBits;

  value_type& Slot(const std::size_t& i) { return blocks_[i >> kBlockBits][i & (kBlock - 1)]; }
  const value_type& Slot(const std::size_t& i) const {
    return blocks_[i >> kBlockBits][i & (kBlock - 1)];
  }
  // Appends the slot of the next index, holding `record`.
  void Add_slot(const Record& record) {
    const std::size_t index =
        blocks_.empty() ? 0 : (blocks_.size() - 1) * kBlock + blocks_.back().size();
    if (index % kBlock == 0) blocks_.emplace_back().reserve(kBlock);
    blocks_.back().emplace_back(static_cast<std::uint32_t>(index), record);
  }

  std::vector<std::vector<value_type>> blocks_;  // slot i, holding index i, is in block i / kBlock
  std::vector<char> held_;                       // whether slot i is in the map
  std::size_t count_ = 0;
};

}  // namespace kcp
