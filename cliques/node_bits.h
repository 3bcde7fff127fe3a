// A set of local node numbers 0 .. 64·words − 1 as a row of bits, for the searches that work on
// one node's neighbourhood renumbered from 0: the pivoting search of the undirected cliques and
// the direct search of the directed ones. Both sets of an operation have the same number of
// words; members come out ascending.
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace kcp {

class NodeBits {
 public:
  using Word = std::uint64_t;
  static constexpr std::size_t kWordBits = 64;

  // Words enough for n local numbers.
  static std::size_t Words_for(const std::size_t& n) { return (n + kWordBits - 1) / kWordBits; }

  explicit NodeBits(const std::size_t& words = 0) : w_(words, 0) {}

  std::size_t Words() const { return w_.size(); }
  Word& operator[](const std::size_t& w) { return w_[w]; }
  const Word& operator[](const std::size_t& w) const { return w_[w]; }

  void Set(const std::size_t& i) { w_[i / kWordBits] |= Word{1} << (i % kWordBits); }
  void Reset(const std::size_t& i) { w_[i / kWordBits] &= ~(Word{1} << (i % kWordBits)); }
  bool Test(const std::size_t& i) const { return (w_[i / kWordBits] >> (i % kWordBits)) & 1; }
  bool None() const {
    return std::all_of(w_.begin(), w_.end(), [](const Word& w) { return w == 0; });
  }
  // Whether the two sets share a member; whether every member of this set is in `whole`.
  bool Meets(const NodeBits& other) const {
    for (std::size_t i = 0; i < w_.size(); ++i) {
      if ((w_[i] & other.w_[i]) != 0) return true;
    }
    return false;
  }
  bool Within(const NodeBits& whole) const {
    for (std::size_t i = 0; i < w_.size(); ++i) {
      if ((w_[i] & ~whole.w_[i]) != 0) return false;
    }
    return true;
  }
  std::size_t Count_and(const NodeBits& other) const {
    std::size_t count = 0;
    for (std::size_t i = 0; i < w_.size(); ++i) {
      count += static_cast<std::size_t>(std::popcount(w_[i] & other.w_[i]));
    }
    return count;
  }
  NodeBits And(const NodeBits& other) const {
    NodeBits result(w_.size());
    for (std::size_t i = 0; i < w_.size(); ++i) result.w_[i] = w_[i] & other.w_[i];
    return result;
  }
  // Members of this set outside `other`, ascending.
  std::vector<std::uint32_t> Minus_list(const NodeBits& other) const {
    std::vector<std::uint32_t> list;
    for (std::size_t i = 0; i < w_.size(); ++i) {
      for (Word w = w_[i] & ~other.w_[i]; w != 0; w &= w - 1) {
        list.push_back(static_cast<std::uint32_t>(i * kWordBits + std::countr_zero(w)));
      }
    }
    return list;
  }
  template <typename F>
  void For_each(F&& f) const {
    for (std::size_t i = 0; i < w_.size(); ++i) {
      for (Word w = w_[i]; w != 0; w &= w - 1) {
        f(i * kWordBits + static_cast<std::size_t>(std::countr_zero(w)));
      }
    }
  }

 private:
  std::vector<Word> w_;
};

}  // namespace kcp
