#include "cliques/overlap_matrix.h"

#include <unistd.h>

#include <algorithm>
#include <string>
#include <utility>

#include "core/xerror_msg.h"

namespace kcp {

std::size_t Overlap_memory_budget() {
  const long pages = sysconf(_SC_PHYS_PAGES);
  const long page_size = sysconf(_SC_PAGE_SIZE);
  if (pages <= 0 || page_size <= 0) return static_cast<std::size_t>(-1);
  return static_cast<std::size_t>(pages) / 2 * static_cast<std::size_t>(page_size);
}

namespace {

template <typename T>
std::size_t Capacity_bytes(const std::vector<T>& v) {
  return v.capacity() * sizeof(T);
}

// Appends and accounts for whatever the vector had to grow by.
template <typename T, typename Value>
void Push_counted(std::vector<T>& v, Value&& value, std::size_t& accounted_bytes) {
  const std::size_t before = Capacity_bytes(v);
  v.push_back(std::forward<Value>(value));
  accounted_bytes += Capacity_bytes(v) - before;
}

template <typename T>
void Resize_counted(std::vector<T>& v, const std::size_t& size, std::size_t& accounted_bytes) {
  const std::size_t before = Capacity_bytes(v);
  v.resize(size);
  accounted_bytes += Capacity_bytes(v) - before;
}

}  // namespace

void Add_clique_overlaps(OverlapMatrix& overlaps, NodeCliqueMap& node_cliques, const Clique& K,
                         const std::uint32_t& id) {
  if (overlaps.on_demand) {
    // No rows; the memberships stay, since the searches look registered cliques up by node.
    auto& of_node = node_cliques.cliques_of_node;
    if (!K.empty() && of_node.size() <= K.back()) of_node.resize(K.back() + std::size_t{1});
    for (const NodeIndex m : K) of_node[m].push_back(id);
    return;
  }
  if (overlaps.rows.size() != id) {
    throw Xerror_msg("ERROR: Add_clique_overlaps() : clique " + std::to_string(id) +
                     " does not follow the last row of the overlap matrix.");
  }
  auto& of_node = node_cliques.cliques_of_node;
  auto& tally = node_cliques.tally;
  auto& touched = node_cliques.touched;
  std::size_t& accounted = node_cliques.accounted_bytes;
  if (!K.empty() && of_node.size() <= K.back()) {
    Resize_counted(of_node, K.back() + std::size_t{1}, accounted);
  }
  if (tally.size() <= id) Resize_counted(tally, id + std::size_t{1}, accounted);

  // Count, for every earlier clique sharing a node with K, how many nodes it shares.
  touched.clear();
  for (const NodeIndex m : K) {
    for (const std::uint32_t c : of_node[m]) {
      if (tally[c]++ == 0) touched.push_back(c);
    }
  }
  std::sort(touched.begin(), touched.end());
  std::size_t kept = 0;
  for (const std::uint32_t c : touched) {
    if (tally[c] >= overlaps.min_shared) ++kept;
  }

  // Refuse before anything is stored: the entries on both sides, the diagonal, the new row and
  // the node memberships.
  const std::size_t needed =
      (2 * kept + 1) * sizeof(Overlap) + sizeof(OverlapRow) + K.size() * sizeof(std::uint32_t);
  if (accounted + needed > node_cliques.memory_budget) {
    for (const std::uint32_t c : touched) tally[c] = 0;
    touched.clear();
    throw Xerror_msg("ERROR: the clique overlap matrix needs more memory than this machine has (" +
                     std::to_string(id) +
                     " cliques so far); run at one k with -k, or with a time limit -t.");
  }

  OverlapRow row;
  row.reserve(kept + 1);
  for (const std::uint32_t c : touched) {
    if (tally[c] >= overlaps.min_shared) {
      // id is larger than every position in row c, so the row stays sorted.
      Push_counted(overlaps.rows[c], Overlap{id, tally[c]}, accounted);
      row.push_back(Overlap{c, tally[c]});
    }
    tally[c] = 0;
  }
  touched.clear();
  row.push_back(Overlap{id, static_cast<std::uint32_t>(K.size())});
  accounted += Capacity_bytes(row);
  Push_counted(overlaps.rows, std::move(row), accounted);
  for (const NodeIndex m : K) Push_counted(of_node[m], id, accounted);
}

std::uint32_t Overlap_of(const OverlapRow& row, const std::uint32_t& clique) {
  const auto it = std::lower_bound(
      row.begin(), row.end(), clique,
      [](const Overlap& entry, const std::uint32_t& c) { return entry.clique < c; });
  return it != row.end() && it->clique == clique ? it->shared : 0;
}

void Set_overlap(OverlapRow& row, const std::uint32_t& clique, const std::uint32_t& shared) {
  const auto it = std::lower_bound(
      row.begin(), row.end(), clique,
      [](const Overlap& entry, const std::uint32_t& c) { return entry.clique < c; });
  if (it != row.end() && it->clique == clique) {
    it->shared = shared;
  } else {
    row.insert(it, Overlap{clique, shared});
  }
}

void Order_rows_by_share(OverlapMatrix& overlaps) {
  for (OverlapRow& row : overlaps.rows) {
    std::sort(row.begin(), row.end(), [](const Overlap& a, const Overlap& b) {
      return a.shared != b.shared ? a.shared > b.shared : a.clique < b.clique;
    });
  }
  overlaps.by_share = true;
}

std::uint32_t Max_clique_size_in_cl_vec(const CliqueList& cliques) {
  std::uint32_t largest = 0;
  for (const Clique& clique : cliques) {
    if (clique.size() > largest) largest = static_cast<std::uint32_t>(clique.size());
  }
  return largest;
}

}  // namespace kcp
