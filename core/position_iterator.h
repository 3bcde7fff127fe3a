// A random-access iterator over the entries of a container that builds each entry when it is
// read (a pair of views, say) instead of storing it: `*it` returns the entry by value, `it->`
// reads a member of it. The container gives its entries by position through Entry_at.
#pragma once

#include <compare>
#include <cstddef>
#include <iterator>

namespace kcp {

template <typename Owner, typename Value>
class PositionIterator {
 public:
  struct Arrow {
    Value value;
    const Value* operator->() const noexcept { return &value; }
  };

  using iterator_category = std::random_access_iterator_tag;
  using value_type = Value;
  using difference_type = std::ptrdiff_t;
  using reference = Value;
  using pointer = Arrow;

  PositionIterator() = default;
  PositionIterator(const Owner* owner, const std::size_t& at) : owner_(owner), at_(at) {}

  Value operator*() const { return owner_->Entry_at(at_); }
  Arrow operator->() const { return Arrow{**this}; }
  Value operator[](const difference_type& n) const { return *(*this + n); }
  std::size_t Position() const noexcept { return at_; }

  PositionIterator& operator++() {
    ++at_;
    return *this;
  }
  PositionIterator operator++(int) {
    PositionIterator before = *this;
    ++at_;
    return before;
  }
  PositionIterator& operator--() {
    --at_;
    return *this;
  }
  PositionIterator operator--(int) {
    PositionIterator before = *this;
    --at_;
    return before;
  }
  PositionIterator& operator+=(const difference_type& n) {
    at_ = static_cast<std::size_t>(static_cast<difference_type>(at_) + n);
    return *this;
  }
  PositionIterator& operator-=(const difference_type& n) { return *this += -n; }
  friend PositionIterator operator+(PositionIterator it, const difference_type& n) {
    return it += n;
  }
  friend PositionIterator operator+(const difference_type& n, PositionIterator it) {
    return it += n;
  }
  friend PositionIterator operator-(PositionIterator it, const difference_type& n) {
    return it -= n;
  }
  friend difference_type operator-(const PositionIterator& a, const PositionIterator& b) {
    return static_cast<difference_type>(a.at_) - static_cast<difference_type>(b.at_);
  }
  friend bool operator==(const PositionIterator& a, const PositionIterator& b) {
    return a.at_ == b.at_;
  }
  friend std::strong_ordering operator<=>(const PositionIterator& a, const PositionIterator& b) {
    return a.at_ <=> b.at_;
  }

 private:
  const Owner* owner_ = nullptr;
  std::size_t at_ = 0;
};

}  // namespace kcp
