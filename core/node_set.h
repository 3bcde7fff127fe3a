// An ordered set of node indices kept as one ascending array, with the interface of an ordered
// set: iteration ascending, insert and erase by value, look-ups by binary search. Sets of up to
// two nodes live inside the object (16 bytes), larger ones in one heap block, so the records of a
// thin graph cost no allocation. Inserting or erasing moves the larger members; building from an
// ascending range (From_sorted) costs one copy.
#pragma once

#include <algorithm>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <iterator>
#include <memory>
#include <new>
#include <span>
#include <utility>

namespace kcp {

class NodeSet {
 public:
  using value_type = std::uint32_t;
  using size_type = std::size_t;
  using difference_type = std::ptrdiff_t;
  using reference = const value_type&;
  using const_reference = const value_type&;
  using const_iterator = const value_type*;
  using iterator = const_iterator;
  using const_reverse_iterator = std::reverse_iterator<const_iterator>;
  using reverse_iterator = const_reverse_iterator;

  NodeSet() noexcept {}
  NodeSet(std::initializer_list<value_type> values) : NodeSet(values.begin(), values.end()) {}
  // Any order; repeated values are kept once.
  template <typename InputIt>
  NodeSet(InputIt first, InputIt last) {
    for (; first != last; ++first) Push_back(static_cast<value_type>(*first));
    std::sort(Data(), Data() + size_);
    size_ = static_cast<std::uint32_t>(std::unique(Data(), Data() + size_) - Data());
  }
  // `values` must be strictly ascending.
  static NodeSet From_sorted(std::span<const value_type> values) {
    NodeSet set;
    set.Assign(values.data(), values.size());
    return set;
  }

  NodeSet(const NodeSet& other) { Assign(other.Data(), other.size_); }
  NodeSet(NodeSet&& other) noexcept { Take(other); }
  NodeSet& operator=(const NodeSet& other) {
    if (this != &other) Assign(other.Data(), other.size_);
    return *this;
  }
  NodeSet& operator=(NodeSet&& other) noexcept {
    if (this != &other) {
      Release();
      Take(other);
    }
    return *this;
  }
  ~NodeSet() { Release(); }

  const_iterator begin() const noexcept { return Data(); }
  const_iterator end() const noexcept { return Data() + size_; }
  const_iterator cbegin() const noexcept { return begin(); }
  const_iterator cend() const noexcept { return end(); }
  const_reverse_iterator rbegin() const noexcept { return const_reverse_iterator(end()); }
  const_reverse_iterator rend() const noexcept { return const_reverse_iterator(begin()); }
  size_type size() const noexcept { return size_; }
  bool empty() const noexcept { return size_ == 0; }
  // The members the set holds without growing, and the bytes it took from the heap for them.
  size_type capacity() const noexcept { return capacity_; }
  size_type Heap_bytes() const noexcept { return On_heap() ? capacity_ * sizeof(value_type) : 0; }
  const value_type* data() const noexcept { return Data(); }

  // Releases the heap block, as an emptied tree would.
  void clear() noexcept {
    Release();
    size_ = 0;
    capacity_ = kInline;
  }

  const_iterator lower_bound(const value_type& n) const {
    return std::lower_bound(begin(), end(), n);
  }
  const_iterator upper_bound(const value_type& n) const {
    return std::upper_bound(begin(), end(), n);
  }
  const_iterator find(const value_type& n) const {
    const const_iterator at = lower_bound(n);
    return at != end() && *at == n ? at : end();
  }
  size_type count(const value_type& n) const { return find(n) != end() ? 1 : 0; }
  bool contains(const value_type& n) const { return find(n) != end(); }

  std::pair<const_iterator, bool> insert(const value_type& n) {
    // Appending is the common case: members often arrive in ascending order.
    if (size_ == 0 || Data()[size_ - 1] < n) {
      Push_back(n);
      return {end() - 1, true};
    }
    const std::size_t at = static_cast<std::size_t>(lower_bound(n) - begin());
    if (Data()[at] == n) return {begin() + at, false};
    Reserve(std::size_t{size_} + 1);
    value_type* data = Data();
    std::memmove(data + at + 1, data + at, (size_ - at) * sizeof(value_type));
    data[at] = n;
    ++size_;
    return {begin() + at, true};
  }
  // The hint is not needed: appending in ascending order is already the fast case.
  const_iterator insert(const_iterator /*hint*/, const value_type& n) { return insert(n).first; }
  // The union with the values of the range, which need not be ordered.
  template <typename InputIt>
  void insert(InputIt first, InputIt last) {
    for (; first != last; ++first) insert(static_cast<value_type>(*first));
  }

  // The union with `other`, in one merge.
  void Unite(const NodeSet& other) {
    if (other.empty()) return;
    if (empty()) {
      *this = other;
      return;
    }
    NodeSet united;
    united.Reserve(std::size_t{size_} + other.size_);
    value_type* const out = united.Data();
    united.size_ = static_cast<std::uint32_t>(
        std::set_union(begin(), end(), other.begin(), other.end(), out) - out);
    *this = std::move(united);
  }

  size_type erase(const value_type& n) {
    const const_iterator at = find(n);
    if (at == end()) return 0;
    erase(at);
    return 1;
  }
  const_iterator erase(const_iterator at) {
    const std::size_t i = static_cast<std::size_t>(at - begin());
    value_type* data = Data();
    std::memmove(data + i, data + i + 1, (size_ - i - 1) * sizeof(value_type));
    --size_;
    return begin() + i;
  }

  void swap(NodeSet& other) noexcept { std::swap(*this, other); }

  friend bool operator==(const NodeSet& a, const NodeSet& b) {
    return a.size_ == b.size_ && std::equal(a.begin(), a.end(), b.begin());
  }
  friend std::strong_ordering operator<=>(const NodeSet& a, const NodeSet& b) {
    return std::lexicographical_compare_three_way(a.begin(), a.end(), b.begin(), b.end());
  }

 private:
  static constexpr std::uint32_t kInline = 2;

  bool On_heap() const noexcept { return capacity_ > kInline; }
  value_type* Data() noexcept { return On_heap() ? heap_ : inline_; }
  const value_type* Data() const noexcept { return On_heap() ? heap_ : inline_; }

  void Reserve(const std::size_t& wanted) {
    if (wanted <= capacity_) return;
    if (wanted > UINT32_MAX) throw std::bad_alloc();
    const std::size_t grown = std::max<std::size_t>(wanted, std::size_t{capacity_} * 2);
    const std::size_t capacity = std::min<std::size_t>(grown, UINT32_MAX);
    auto* block = static_cast<value_type*>(::operator new(capacity * sizeof(value_type)));
    if (size_ != 0) std::memcpy(block, Data(), size_ * sizeof(value_type));
    Release();
    heap_ = block;
    capacity_ = static_cast<std::uint32_t>(capacity);
  }
  // Replaces the members by the `count` values at `from`.
  void Assign(const value_type* from, const std::size_t& count) {
    size_ = 0;
    Reserve(count);
    std::copy_n(from, count, On_heap() ? heap_ : inline_);
    size_ = static_cast<std::uint32_t>(count);
  }
  void Push_back(const value_type& n) {
    Reserve(std::size_t{size_} + 1);
    Data()[size_++] = n;
  }
  void Release() noexcept {
    if (On_heap()) ::operator delete(heap_);
  }
  // Takes other's members and leaves it empty; this set holds no heap block.
  void Take(NodeSet& other) noexcept {
    size_ = other.size_;
    capacity_ = other.capacity_;
    if (other.On_heap()) {
      heap_ = other.heap_;
    } else {
      std::memcpy(inline_, other.inline_, sizeof inline_);
    }
    other.size_ = 0;
    other.capacity_ = kInline;
  }

  std::uint32_t size_ = 0;
  std::uint32_t capacity_ = kInline;
  union {
    value_type inline_[kInline] = {0, 0};
    value_type* heap_;
  };
};

}  // namespace kcp
