#include "communities/overlap_rows.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace kcp {

OverlapRows::OverlapRows(const CliqueList& cliques, const OverlapMatrix& overlaps,
                         const std::uint32_t& k)
    : cliques_(cliques), overlaps_(overlaps), k_(k), need_(k - 1), least_(std::max(k - 1, 1u)) {
  if (!overlaps_.on_demand || k_ == 0) return;
  // Two passes, so that every list is allocated once at its final size.
  std::size_t nodes = 0;
  for (const Clique& clique : cliques_) {
    if (!clique.empty()) nodes = std::max<std::size_t>(nodes, std::size_t{clique.back()} + 1);
  }
  std::vector<std::uint32_t> counts(nodes, 0);
  for (const Clique& clique : cliques_) {
    if (clique.size() < least_) continue;
    for (const NodeIndex& v : clique) ++counts[v];
  }
  holders_.resize(nodes);
  for (std::size_t v = 0; v < nodes; ++v) holders_[v].reserve(counts[v]);
  for (std::uint32_t j = 0; j < cliques_.size(); ++j) {
    if (cliques_[j].size() < least_) continue;
    for (const NodeIndex& v : cliques_[j]) holders_[v].push_back(j);
  }
  node_stamp_.assign(nodes, 0);
  clique_stamp_.assign(cliques_.size(), 0);
}

std::size_t OverlapRows::Row_count() const {
  return overlaps_.on_demand ? cliques_.size() : overlaps_.rows.size();
}

bool OverlapRows::Row(const std::uint32_t& c, const std::vector<std::int32_t>& labels,
                      const bool& free_only, CliqueIndexList& out) {
  out.clear();
  if (!overlaps_.on_demand) return Stored_row(c, labels, free_only, out);
  return Computed_row(c, labels, out);
}

bool OverlapRows::Stored_row(const std::uint32_t& c, const std::vector<std::int32_t>& labels,
                             const bool& free_only, CliqueIndexList& out) const {
  if (c >= overlaps_.rows.size()) return false;
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

namespace {

bool Is_free(const std::vector<std::int32_t>& labels, const std::uint32_t& clique) {
  return clique >= labels.size() || labels[clique] < 0;
}

}  // namespace

std::uint32_t OverlapRows::Shared_with_marked(const Clique& other, const Clique& marked,
                                              const std::uint32_t& enough) const {
  std::uint32_t shared = 0;
  // Walk the smaller side: a large approximate clique is searched rather than walked.
  if (other.size() <= 8 * marked.size()) {
    for (const NodeIndex& v : other) {
      if (node_stamp_[v] == stamp_ && ++shared >= enough) break;
    }
  } else {
    for (const NodeIndex& v : marked) {
      if (std::binary_search(other.begin(), other.end(), v) && ++shared >= enough) break;
    }
  }
  return shared;
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

  // A clique sharing at least least_ of the clique's nodes holds one of any size - least_ + 1
  // of them: the nodes held by the fewest cliques are walked.
  by_length_.clear();
  for (const NodeIndex& v : clique) by_length_.emplace_back(holders_[v].size(), v);
  const std::size_t walked = size - least_ + 1;
  if (walked < by_length_.size()) {
    std::nth_element(by_length_.begin(), by_length_.begin() + walked, by_length_.end());
  }
  const std::uint32_t enough = std::max(k_, least_);
  for (std::size_t w = 0; w < walked; ++w) {
    std::vector<std::uint32_t>& holders = holders_[by_length_[w].second];
    for (std::size_t p = 0; p < holders.size();) {
      const std::uint32_t j = holders[p];
      if (!Is_free(labels, j)) {
        // Labelled for good: forget it (the order of a list does not matter).
        holders[p] = holders.back();
        holders.pop_back();
        continue;
      }
      ++p;
      if (clique_stamp_[j] == stamp_) continue;
      clique_stamp_[j] = stamp_;
      const std::uint32_t shared = Shared_with_marked(cliques_[j], clique, enough);
      if (shared >= k_) qualifies = true;
      if (shared >= least_) out.push_back(j);
    }
  }
  std::sort(out.begin(), out.end());
  return qualifies;
}

}  // namespace kcp
