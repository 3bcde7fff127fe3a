#include "cliques/overlap_extend.h"

#include <algorithm>
#include <vector>

#include "cliques/overlap_matrix.h"

namespace kcp {

namespace {

// Writes a pair's count into one side. A count below `least` is written only over an entry
// already there: such a count is never read by percolation, but the entry it replaces, left over
// from an exact clique the approximation dropped, would be.
void Write_shared(OverlapRow& row, const std::uint32_t& clique, const std::uint32_t& shared,
                  const std::uint32_t& least) {
  if (shared >= least || Overlap_of(row, clique) != 0) Set_overlap(row, clique, shared);
}

}  // namespace

void Extend_ovlp_matr(OverlapMatrix& overlaps, const CliqueList& cliques,
                      const std::uint32_t& n_exact) {
  const std::uint32_t count = static_cast<std::uint32_t>(cliques.size());
  if (n_exact >= count) return;

  overlaps.rows.resize(overlaps.rows.size() + (count - n_exact));
  // Normally the rows of the exact search already number at least n_exact, so every position of
  // the list has a row. A matrix with fewer rows would be indexed past its end by the loops
  // below; it gets empty rows up to the clique count instead.
  if (overlaps.rows.size() < count) overlaps.rows.resize(count);

  // Node -> positions of the cliques holding it, for the nodes of the approximate cliques only,
  // so that only pairs sharing a node are intersected. Positions are ascending in each list.
  std::vector<char> wanted;
  for (std::uint32_t i = n_exact; i < count; ++i) {
    for (const NodeIndex& n : cliques[i]) {
      if (n >= wanted.size()) wanted.resize(std::size_t{n} + 1, 0);
      wanted[n] = 1;
    }
  }
  std::vector<std::vector<std::uint32_t>> holders(wanted.size());
  for (std::uint32_t j = 0; j < count; ++j) {
    for (const NodeIndex& n : cliques[j]) {
      if (n < wanted.size() && wanted[n]) holders[n].push_back(j);
    }
  }

  // An empty intersection writes nothing; a new entry below min_shared is not stored either.
  const std::uint32_t least = std::max<std::uint32_t>(overlaps.min_shared, 1);
  std::vector<std::uint32_t> shared(count, 0);
  std::vector<std::uint32_t> touched;
  for (std::uint32_t i = n_exact; i < count; ++i) {
    touched.clear();
    for (const NodeIndex& n : cliques[i]) {
      for (const std::uint32_t& j : holders[n]) {
        // Exact cliques and the approximate ones after i; pairs with earlier approximate cliques
        // were written when those were extended.
        if (j >= n_exact && j <= i) continue;
        if (shared[j]++ == 0) touched.push_back(j);
      }
    }
    std::sort(touched.begin(), touched.end());
    bool diagonal_written = false;
    for (const std::uint32_t& j : touched) {
      if (!diagonal_written && j > i) {
        Set_overlap(overlaps.rows[i], i, static_cast<std::uint32_t>(cliques[i].size()));
        diagonal_written = true;
      }
      Write_shared(overlaps.rows[j], i, shared[j], least);
      Write_shared(overlaps.rows[i], j, shared[j], least);
      shared[j] = 0;
    }
    if (!diagonal_written) {
      Set_overlap(overlaps.rows[i], i, static_cast<std::uint32_t>(cliques[i].size()));
    }
  }
}

void Complete_ovlp_matr(OverlapMatrix& overlaps, const CliqueList& searched,
                        const CliqueList& cliques, const std::uint32_t& n_exact) {
  if (overlaps.on_demand && n_exact < searched.size()) {
    overlaps.on_demand = false;
    overlaps.rows.clear();
    NodeCliqueMap node_cliques;
    for (std::uint32_t id = 0; id < searched.size(); ++id) {
      Add_clique_overlaps(overlaps, node_cliques, searched[id], id);
    }
  }
  if (!overlaps.on_demand) Extend_ovlp_matr(overlaps, cliques, n_exact);
}

}  // namespace kcp
