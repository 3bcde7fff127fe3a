#include "communities/overlap_rows.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <new>
#include <utility>

namespace kcp {

namespace {

// Beyond this many nodes in its pair prefix a clique is listed under single nodes: its pairs
// would outnumber the cliques it can meet.
constexpr std::size_t kLongPrefix = 48;

bool Is_free(const std::vector<std::int32_t>& labels, const std::uint32_t& clique) {
  return clique >= labels.size() || labels[clique] < 0;
}

}  // namespace

void OverlapRows::KeyedLists::Build(std::vector<std::uint64_t> entries,
                                    std::vector<std::uint32_t> first_begin,
                                    const std::size_t& clique_count) {
  const std::size_t nodes = first_begin.empty() ? 0 : first_begin.size() - 1;
  first_keys_.assign(nodes + 1, 0);
  second_.clear();
  range_.clear();
  cliques_.resize(entries.size());
  own_begin_.assign(clique_count + 1, 0);
  for (const std::uint64_t& e : entries)
    ++own_begin_[static_cast<std::uint32_t>(e) + std::size_t{1}];
  for (std::size_t j = 0; j < clique_count; ++j) own_begin_[j + 1] += own_begin_[j];
  own_keys_.resize(entries.size());
  std::vector<std::uint32_t> own_next(own_begin_.begin(), own_begin_.end() - 1);
  for (std::size_t u = 0; u < nodes; ++u) {
    first_keys_[u] = static_cast<std::uint32_t>(second_.size());
    const auto from = entries.begin() + first_begin[u];
    const auto to = entries.begin() + first_begin[u + 1];
    for (auto e = from; e != to; ++e) {
      const auto second = static_cast<NodeIndex>(*e >> 32);
      const auto at = static_cast<std::uint32_t>(e - entries.begin());
      if (e == from || second != second_.back()) {
        second_.push_back(second);
        range_.push_back(Range{at, at});
      }
      const auto j = static_cast<std::uint32_t>(*e);
      cliques_[at] = j;
      ++range_.back().end;
      own_keys_[own_next[j]++] = static_cast<std::uint32_t>(range_.size() - 1);
    }
  }
  first_keys_[nodes] = static_cast<std::uint32_t>(second_.size());
}

template <typename Visit>
void OverlapRows::KeyedLists::Walk_key(const std::uint32_t& key, Visit&& visit) {
  Range& range = range_[key];
  for (std::uint32_t p = range.begin; p < range.end;) {
    // visit returns false for a clique labelled for good, which the list then forgets (the
    // order within a list does not matter: rows are sorted).
    if (visit(cliques_[p])) {
      ++p;
    } else {
      cliques_[p] = cliques_[--range.end];
    }
  }
}

template <typename Visit>
void OverlapRows::KeyedLists::Walk(const NodeIndex& first, const NodeIndex& second, Visit&& visit) {
  if (first + std::size_t{1} >= first_keys_.size()) return;
  const auto from = second_.begin() + first_keys_[first];
  const auto to = second_.begin() + first_keys_[first + 1];
  const auto key = std::lower_bound(from, to, second);
  if (key == to || *key != second) return;
  Walk_key(static_cast<std::uint32_t>(key - second_.begin()), visit);
}

template <typename Visit>
void OverlapRows::KeyedLists::Walk_own(const std::uint32_t& clique, Visit&& visit) {
  if (std::size_t{clique} + 1 >= own_begin_.size()) return;
  for (std::uint32_t p = own_begin_[clique]; p < own_begin_[clique + 1]; ++p) {
    Walk_key(own_keys_[p], visit);
  }
}

OverlapRows::OverlapRows(const CliqueList& cliques, const OverlapMatrix& overlaps,
                         const std::uint32_t& k)
    : cliques_(cliques), overlaps_(overlaps), k_(k), need_(k - 1), least_(std::max(k - 1, 1u)) {
  if (!overlaps_.On_demand() || k_ == 0) return;
  Build_index();
}

bool OverlapRows::Long_prefix(const std::size_t& size) const {
  // Cliques sharing one or two nodes need not share a pair of their prefixes' nodes.
  return least_ < 3 || size - least_ + 2 > kLongPrefix;
}

std::span<const NodeIndex> OverlapRows::Prefix(const std::uint32_t& c,
                                               const std::size_t& length) const {
  const std::size_t from = member_begin_[c];
  return std::span<const NodeIndex>(members_).subspan(
      from, std::min(length, member_begin_[c + std::size_t{1}] - from));
}

void OverlapRows::Build_index() {
  std::size_t nodes = 0;
  for (const Clique& clique : cliques_) {
    if (!clique.empty()) nodes = std::max<std::size_t>(nodes, std::size_t{clique.back()} + 1);
  }
  // Only the nodes of the cliques taking part are ranked: on a network with many values of k,
  // a k with few large cliques then costs what those cliques hold.
  std::vector<std::uint32_t> holders(nodes, 0);
  std::vector<NodeIndex> order;
  bool any_long = false;
  bool any_short = false;
  for (const Clique& clique : cliques_) {
    if (clique.size() < least_) continue;
    any_long = any_long || Long_prefix(clique.size());
    any_short = any_short || !Long_prefix(clique.size());
    for (const NodeIndex& v : clique) {
      if (holders[v]++ == 0) order.push_back(v);
    }
  }
  std::sort(order.begin(), order.end(), [&](const NodeIndex& a, const NodeIndex& b) {
    return holders[a] != holders[b] ? holders[a] < holders[b] : a < b;
  });
  rank_.assign(nodes, 0);
  for (std::size_t r = 0; r < order.size(); ++r) rank_[order[r]] = static_cast<std::uint32_t>(r);

  // The members of the cliques taking part, side by side, each clique's in rank order: its
  // prefixes are then its first members, and the shared-node counts read them in one sweep.
  member_begin_.assign(cliques_.size() + 1, 0);
  members_.clear();
  const auto by_rank = [&](const NodeIndex& a, const NodeIndex& b) { return rank_[a] < rank_[b]; };
  for (std::size_t j = 0; j < cliques_.size(); ++j) {
    if (cliques_[j].size() >= least_) {
      const std::size_t from = members_.size();
      members_.insert(members_.end(), cliques_[j].begin(), cliques_[j].end());
      std::sort(members_.begin() + static_cast<std::ptrdiff_t>(from), members_.end(), by_rank);
    }
    member_begin_[j + 1] = members_.size();
  }

  // Each list family is filled in two passes over the cliques: count per first node, then place.
  const auto build = [&](KeyedLists& lists, const auto& wanted, const std::size_t& extra,
                         const bool& pairs) {
    std::vector<std::uint32_t> begin(nodes + 1, 0);
    const auto each_entry = [&](const auto& put) {
      for (std::uint32_t j = 0; j < cliques_.size(); ++j) {
        const std::size_t size = cliques_[j].size();
        if (size < least_ || !wanted(size)) continue;
        const std::span<const NodeIndex> prefix = Prefix(j, size - least_ + extra);
        for (std::size_t a = 0; a < prefix.size(); ++a) {
          if (!pairs) {
            put(prefix[a], KeyedLists::kNone, j);
            continue;
          }
          for (std::size_t b = a + 1; b < prefix.size(); ++b) put(prefix[a], prefix[b], j);
        }
      }
    };
    // Buckets by first node, each ascending by second node, then clique: cliques come in
    // ascending order, so under single nodes one placing pass is enough, and pairs are placed
    // by second node first, then moved, in that order, to the buckets of their first node.
    std::vector<std::uint32_t> by_second(pairs ? nodes + 1 : 0, 0);
    std::uint64_t total = 0;
    each_entry([&](const NodeIndex& u, const NodeIndex& v, const std::uint32_t&) {
      ++total;
      if (total > std::numeric_limits<std::uint32_t>::max()) return;
      ++begin[u + 1];
      if (pairs) ++by_second[v + 1];
    });
    // Positions are 32-bit: more entries than that would take over 34 GB of lists anyway.
    if (total > std::numeric_limits<std::uint32_t>::max()) throw std::bad_alloc();
    for (std::size_t u = 0; u < nodes; ++u) begin[u + 1] += begin[u];
    std::vector<std::uint64_t> entries(begin[nodes]);
    std::vector<std::uint32_t> next(begin.begin(), begin.end() - 1);
    if (!pairs) {
      each_entry([&](const NodeIndex& u, const NodeIndex&, const std::uint32_t& j) {
        entries[next[u]++] = (std::uint64_t{KeyedLists::kNone} << 32) | j;
      });
    } else {
      for (std::size_t v = 0; v < nodes; ++v) by_second[v + 1] += by_second[v];
      std::vector<std::uint64_t> staged(by_second[nodes]);
      each_entry([&](const NodeIndex& u, const NodeIndex& v, const std::uint32_t& j) {
        staged[by_second[v]++] = (std::uint64_t{u} << 32) | j;
      });
      // by_second[v] now ends bucket v, which starts where bucket v - 1 ended.
      std::size_t at = 0;
      for (std::size_t v = 0; v < nodes; ++v) {
        for (; at < by_second[v]; ++at) {
          const auto u = static_cast<NodeIndex>(staged[at] >> 32);
          entries[next[u]++] = (std::uint64_t{v} << 32) | static_cast<std::uint32_t>(staged[at]);
        }
      }
    }
    lists.Build(std::move(entries), std::move(begin), cliques_.size());
  };
  const auto is_short = [&](const std::size_t& size) { return !Long_prefix(size); };
  const auto is_long = [&](const std::size_t& size) { return Long_prefix(size); };
  const auto every = [](const std::size_t&) { return true; };
  if (any_short) build(by_pair_, is_short, 2, true);
  has_long_ = any_long && any_short;
  if (any_long) {
    if (any_short) build(long_by_node_, is_long, 1, false);
    build(all_by_node_, every, 1, false);
  }
  node_stamp_.assign(nodes, 0);
  clique_stamp_.assign(cliques_.size(), 0);
}

std::size_t OverlapRows::Row_count() const {
  return overlaps_.On_demand() ? cliques_.size() : overlaps_.rows.size();
}

bool OverlapRows::Row(const std::uint32_t& c, const std::vector<std::int32_t>& labels,
                      const bool& free_only, CliqueIndexList& out) {
  out.clear();
  if (!overlaps_.On_demand()) return Stored_row(c, labels, free_only, out);
  return Computed_row(c, labels, out);
}

bool OverlapRows::Stored_row(const std::uint32_t& c, const std::vector<std::int32_t>& labels,
                             const bool& free_only, CliqueIndexList& out) const {
  if (c >= overlaps_.rows.size()) return false;
  if (overlaps_.by_share) {
    const OverlapRow& row = overlaps_.rows[c];
    for (const Overlap& entry : row) {
      if (entry.shared < need_) break;
      if (free_only && entry.clique < labels.size() && labels[entry.clique] >= 0) continue;
      out.push_back(entry.clique);
    }
    std::sort(out.begin(), out.end());
    return !row.empty() && row.front().shared >= k_;
  }
  bool qualifies = false;
  for (const Overlap& entry : overlaps_.rows[c]) {
    if (entry.shared >= k_) qualifies = true;
    if (entry.shared < need_) continue;
    // A clique named in a row but beyond the labels counts as free.
    if (free_only && entry.clique < labels.size() && labels[entry.clique] >= 0) continue;
    out.push_back(entry.clique);
  }
  return qualifies;
}

bool OverlapRows::Computed_row(const std::uint32_t& c, const std::vector<std::int32_t>& labels,
                               CliqueIndexList& out) {
  if (c >= cliques_.size()) return false;
  // At k = 0 the diagonal qualifies, and k - 1 wraps so that nothing is a candidate.
  if (k_ == 0) return true;
  const Clique& clique = cliques_[c];
  const std::uint32_t size = static_cast<std::uint32_t>(clique.size());
  // The diagonal holds the clique's own size.
  bool qualifies = size >= k_;
  if (size >= need_ && Is_free(labels, c)) out.push_back(c);
  if (size < least_) return qualifies;

  if (++stamp_ == 0) {
    std::fill(node_stamp_.begin(), node_stamp_.end(), 0);
    std::fill(clique_stamp_.begin(), clique_stamp_.end(), 0);
    stamp_ = 1;
  }
  for (const NodeIndex& v : clique) node_stamp_[v] = stamp_;
  clique_stamp_[c] = stamp_;

  const std::uint32_t enough = std::max(k_, least_);
  const auto visit = [&](const std::uint32_t& j) {
    if (!Is_free(labels, j)) return false;
    if (clique_stamp_[j] == stamp_) return true;
    clique_stamp_[j] = stamp_;
    std::uint32_t shared = 0;
    for (std::size_t p = member_begin_[j]; p < member_begin_[j + std::size_t{1}]; ++p) {
      if (node_stamp_[members_[p]] == stamp_ && ++shared >= enough) break;
    }
    if (shared >= k_) qualifies = true;
    if (shared >= least_) out.push_back(j);
    return true;
  };
  // A clique walks the lists it is listed in itself: the keys of its own prefix.
  if (Long_prefix(size)) {
    all_by_node_.Walk_own(c, visit);
  } else {
    by_pair_.Walk_own(c, visit);
    if (has_long_) {
      // Only the long-prefix cliques are listed here; the prefix of length size - least_ + 1 is
      // the one two cliques sharing least_ nodes must meet in.
      for (const NodeIndex& u : Prefix(c, size - least_ + 1)) {
        long_by_node_.Walk(u, KeyedLists::kNone, visit);
      }
    }
  }
  std::sort(out.begin(), out.end());
  return qualifies;
}

}  // namespace kcp
