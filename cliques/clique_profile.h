// The cliques of a run as percolation compares them, at any k: each clique's members as ranks,
// a node's rank being its place when the nodes held by some clique are ordered by how many
// cliques hold them, fewest first (ties by index). The most-held nodes (kHot of them) are "hot":
// each clique keeps a bitset of its hot members, so that the hot nodes two cliques share are
// counted by and-ing two short bitsets; its other ("cold") members are its lowest ranks. Built
// once per clique list; Describes tells whether a list is still the one it was built from.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "core/types.h"

namespace kcp {

class CliqueProfile {
 public:
  static constexpr std::size_t kHotWords = 7;
  static constexpr std::uint32_t kHot = 64 * kHotWords;

  // A clique's hot members, by Hot_bit, and the number of its cold ones: one cache line, all
  // that comparing two cliques of a dense core reads.
  struct alignas(64) HotBits {
    std::array<std::uint64_t, kHotWords> words{};
    std::uint32_t cold = 0;
  };
  struct Record {
    std::uint64_t begin = 0;  // the clique's first rank in the rank store
    std::uint32_t size = 0;
    std::uint32_t cold = 0;  // members that are not hot: the first `cold` ranks
  };

  explicit CliqueProfile(const CliqueList& cliques);

  std::size_t Clique_count() const { return records_.size(); }
  // The number of nodes held by some clique: ranks run from 0 to this, exclusive.
  std::uint32_t Rank_count() const { return rank_count_; }
  const Record& Of(const std::uint32_t& clique) const { return records_[clique]; }
  const HotBits& Hot(const std::uint32_t& clique) const { return hot_[clique]; }
  const HotBits* Hot_bits() const { return hot_.data(); }
  // The ranks of a clique's members, ascending: rarest node first.
  std::span<const std::uint32_t> Ranks(const std::uint32_t& clique) const {
    const Record& r = records_[clique];
    return {ranks_.data() + r.begin, r.size};
  }
  // The node of a rank.
  NodeIndex Node(const std::uint32_t& rank) const { return nodes_[rank]; }
  // The bit of a hot rank in HotBits, counted from the most-held node; kHot for a cold rank.
  std::uint32_t Hot_bit(const std::uint32_t& rank) const {
    const std::uint32_t from_top = rank_count_ - 1 - rank;
    return from_top < kHot ? from_top : kHot;
  }
  // The rank of a hot bit.
  std::uint32_t Hot_rank(const std::uint32_t& bit) const { return rank_count_ - 1 - bit; }
  // Whether `cliques` is the list the profile was built from: the same object with cliques of
  // the same sizes (a run does not change its cliques once they are found).
  bool Describes(const CliqueList& cliques) const;

 private:
  static std::uint64_t Fingerprint(const CliqueList& cliques);

  const CliqueList* source_;

  std::vector<Record> records_;
  std::vector<HotBits> hot_;
  std::vector<std::uint32_t> ranks_;
  std::vector<NodeIndex> nodes_;  // rank -> node
  std::uint32_t rank_count_ = 0;
  std::uint64_t fingerprint_ = 0;
};

}  // namespace kcp
