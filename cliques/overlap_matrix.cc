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

}  // namespace

void Add_clique_overlaps(OverlapMatrix& overlaps, NodeCliqueMap& node_cliques, const Clique& K,
                         const std::uint32_t& id) {
  MemberIndex& index = node_cliques.index;
  if (overlaps.On_demand()) {
    // No rows; the memberships stay, since the searches look registered cliques up by node.
    index.Add(K, id);
    return;
  }
  if (overlaps.rows.size() != id) {
    throw Xerror_msg("ERROR: Add_clique_overlaps() : clique " + std::to_string(id) +
                     " does not follow the last row of the overlap matrix.");
  }
  index.Reserve(K, id);
  const std::span<const MemberIndex::Shared> shared = index.Shared_with(K);
  std::size_t kept = 0;
  for (const MemberIndex::Shared& c : shared) {
    if (c.count >= overlaps.min_shared) ++kept;
  }

  // Refuse before anything is stored: the entries on both sides, the diagonal, the new row and
  // the node memberships.
  std::size_t& row_bytes = node_cliques.row_bytes;
  const std::size_t needed =
      (2 * kept + 1) * sizeof(Overlap) + sizeof(OverlapRow) + K.size() * sizeof(std::uint32_t);
  if (index.Bytes() + row_bytes + needed > node_cliques.memory_budget) {
    throw Xerror_msg("ERROR: the clique overlap matrix needs more memory than this machine has (" +
                     std::to_string(id) +
                     " cliques so far); run at one k with -k, or with a time limit -t.");
  }

  OverlapRow row;
  row.reserve(kept + 1);
  for (const MemberIndex::Shared& c : shared) {
    if (c.count >= overlaps.min_shared) {
      // id is larger than every position in row c, so the row stays sorted.
      Push_counted(overlaps.rows[c.position], Overlap{id, c.count}, row_bytes);
      row.push_back(Overlap{c.position, c.count});
    }
  }
  row.push_back(Overlap{id, static_cast<std::uint32_t>(K.size())});
  row_bytes += Capacity_bytes(row);
  Push_counted(overlaps.rows, std::move(row), row_bytes);
  index.Add(K, id);
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
