// Where the walk of a node records each clique the direct search found for it: the walk's path
// to a clique is rebuilt step by step on bit rows over the clique's members, so that cliques can
// be registered in the walk's order without walking. The walk (clique_find_dir.cc) fixes the
// order; this is the fast path that must reproduce it.
#include "cliques/dir_walk_path.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "core/xerror_msg.h"

namespace kcp {

namespace Clique_find_dir_sub_routines {

namespace {

// The links among the members of a clique M (ascending), as bit rows over their positions in
// M; a set of members is a row too, and ascending positions are ascending nodes.
class MemberLinks {
 public:
  MemberLinks(const NodeList& M, const DirArrays& work)
      : words_((M.size() + 63) / 64), rows_(3 * M.size() * words_, 0) {
    for (std::size_t i = 0; i < M.size(); ++i) {
      Mark(M, work.ins.Of(M[i]), Row(kIns, i));
      Mark(M, work.outs.Of(M[i]), Row(kOuts, i));
      std::uint64_t* one_way = Row(kOneWay, i);
      for (std::size_t w = 0; w < words_; ++w) one_way[w] = Outs(i)[w] & ~Ins(i)[w];
    }
  }

  std::size_t Words() const { return words_; }
  // Members linking to member i, members i links to, and members i links to one way only.
  const std::uint64_t* Ins(const std::size_t& i) const { return Row(kIns, i); }
  const std::uint64_t* Outs(const std::size_t& i) const { return Row(kOuts, i); }
  const std::uint64_t* One_way(const std::size_t& i) const { return Row(kOneWay, i); }

 private:
  enum Kind : std::size_t { kIns = 0, kOuts = 1, kOneWay = 2 };
  std::uint64_t* Row(const Kind& kind, const std::size_t& i) {
    return rows_.data() + (3 * i + kind) * words_;
  }
  const std::uint64_t* Row(const Kind& kind, const std::size_t& i) const {
    return rows_.data() + (3 * i + kind) * words_;
  }
  static void Mark(const NodeList& M, std::span<const NodeIndex> linked, std::uint64_t* row) {
    auto from = linked.begin();
    for (std::size_t j = 0; j < M.size(); ++j) {
      from = std::lower_bound(from, linked.end(), M[j]);
      if (from == linked.end()) return;
      if (*from == M[j]) row[j >> 6] |= std::uint64_t{1} << (j & 63);
    }
  }

  std::size_t words_;
  std::vector<std::uint64_t> rows_;
};

// A gap list restricted to the members of M: the candidates of gap g are the bits
// [g * words, (g + 1) * words). Labels are not kept: which members can still be placed depends
// only on the candidates.
struct MemberGaps {
  std::size_t words = 0;
  std::vector<std::uint64_t> bits;

  std::size_t Size() const { return bits.size() / words; }
  std::uint64_t* Gap(const std::size_t& g) { return bits.data() + g * words; }
  const std::uint64_t* Gap(const std::size_t& g) const { return bits.data() + g * words; }
  bool Holds(const std::size_t& g, const std::size_t& i) const {
    return (Gap(g)[i >> 6] >> (i & 63)) & 1u;
  }
  // The smallest candidate of gap g, or `none` when it has none.
  std::size_t First(const std::size_t& g, const std::size_t& none) const {
    for (std::size_t w = 0; w < words; ++w) {
      if (Gap(g)[w] != 0) return w * 64 + static_cast<std::size_t>(__builtin_ctzll(Gap(g)[w]));
    }
    return none;
  }
};

// Tighten_dir on member gaps: member y goes into gap f.
void Tighten_members(const MemberGaps& gaps, const std::size_t& f, const std::size_t& y,
                     const MemberLinks& links, MemberGaps& result) {
  const std::size_t words = gaps.words;
  result.words = words;
  result.bits.resize(gaps.bits.size() + words);
  for (std::size_t g = 0; g < gaps.Size(); ++g) {
    const std::uint64_t* side = g < f ? links.Ins(y) : links.Outs(y);
    std::uint64_t* into = result.Gap(g < f ? g : g + 1);
    for (std::size_t w = 0; w < words; ++w) into[w] = gaps.Gap(g)[w] & side[w];
  }
  for (std::size_t w = 0; w < words; ++w) result.Gap(f)[w] = gaps.Gap(f)[w] & links.Ins(y)[w];
}

// Whether the members `rest` can all still be put into the list: each into a gap that holds it
// as a candidate, a node linked one way only to another into the same or an earlier gap (within
// a gap any order the links allow can still be built). Taking every node, in an order where
// those links run forwards, into the first gap that is no earlier than the gaps of the nodes
// linking to it, finds such a placement whenever there is one.
bool Can_take_all(const MemberGaps& gaps, const std::vector<std::uint64_t>& rest,
                  const std::size_t& members, const MemberLinks& links) {
  std::vector<std::size_t> waiting(members, 0);
  std::vector<std::size_t> lowest(members, 0);
  std::vector<std::size_t> ready;
  std::size_t count = 0;
  const auto each = [&](const std::uint64_t* row, const auto& visit) {
    for (std::size_t w = 0; w < links.Words(); ++w) {
      for (std::uint64_t bits = row[w] & rest[w]; bits != 0; bits &= bits - 1) {
        visit(w * 64 + static_cast<std::size_t>(__builtin_ctzll(bits)));
      }
    }
  };
  each(rest.data(), [&](const std::size_t& i) {
    ++count;
    each(links.One_way(i), [&](const std::size_t& j) { ++waiting[j]; });
  });
  each(rest.data(), [&](const std::size_t& i) {
    if (waiting[i] == 0) ready.push_back(i);
  });
  std::size_t placed = 0;
  while (!ready.empty()) {
    const std::size_t i = ready.back();
    ready.pop_back();
    std::size_t gap = lowest[i];
    while (gap < gaps.Size() && !gaps.Holds(gap, i)) ++gap;
    if (gap == gaps.Size()) return false;
    ++placed;
    each(links.One_way(i), [&](const std::size_t& j) {
      lowest[j] = std::max(lowest[j], gap);
      if (--waiting[j] == 0) ready.push_back(j);
    });
  }
  return placed == count;
}

}  // namespace

// The first path of v's walk that ends with the members M (ascending), a clique v must end
// with. Every order of M is reached by exactly one path, so the walk records M at the first path
// that can still take in all of M; it is followed step by step, trying the steps in the walk's
// order.
WalkPath First_path_to(const NodeIndex& v, const NodeList& M, const DirArrays& work) {
  const MemberLinks links(M, work);
  const std::size_t words = links.Words();
  const auto at_v = std::lower_bound(M.begin(), M.end(), v);
  if (at_v == M.end() || *at_v != v) {
    throw Xerror_msg("ERROR: Clique_find_dir() : node " + std::to_string(v) +
                     " is not in a clique it must end with.");
  }
  const auto v_at = static_cast<std::size_t>(at_v - M.begin());
  MemberGaps list{words, std::vector<std::uint64_t>(2 * words, 0)};
  for (std::size_t w = 0; w < words; ++w) {
    list.Gap(0)[w] = links.Ins(v_at)[w];
    list.Gap(1)[w] = links.Outs(v_at)[w];
  }
  std::vector<std::uint64_t> rest(words, 0);
  for (std::size_t i = 0; i < M.size(); ++i) {
    if (i != v_at) rest[i >> 6] |= std::uint64_t{1} << (i & 63);
  }
  WalkPath path;
  MemberGaps base;
  MemberGaps next;
  std::vector<std::uint64_t> rest_after;
  for (std::size_t left = M.size() - 1; left > 0; --left) {
    bool moved = false;
    for (std::size_t f = 0; f < list.Size() && !moved; ++f) {
      // The walk reaches the gap f only with the earlier gaps used up, and tries its candidates
      // in ascending order, each with the smaller ones gone.
      base = list;
      std::fill(base.bits.begin(), base.bits.begin() + static_cast<std::ptrdiff_t>(f * words), 0);
      for (std::size_t y = base.First(f, M.size()); y != M.size() && !moved;
           y = base.First(f, M.size())) {
        Tighten_members(base, f, y, links, next);
        base.Gap(f)[y >> 6] &= ~(std::uint64_t{1} << (y & 63));
        rest_after = rest;
        rest_after[y >> 6] &= ~(std::uint64_t{1} << (y & 63));
        if (Can_take_all(next, rest_after, M.size(), links)) {
          path.emplace_back(f, M[y]);
          std::swap(list, next);
          std::swap(rest, rest_after);
          moved = true;
        }
      }
    }
    if (!moved) {
      // M is a maximal directed clique holding v, so some order of it always remains open.
      throw Xerror_msg("ERROR: Clique_find_dir() : no walk of node " + std::to_string(v) +
                       " reaches one of its cliques.");
    }
  }
  return path;
}

}  // namespace Clique_find_dir_sub_routines

}  // namespace kcp
