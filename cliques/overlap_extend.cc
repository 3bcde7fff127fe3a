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
  MemberIndex holders;
  for (std::uint32_t j = 0; j < count; ++j) {
    holders.Add(cliques[j], j, [&](const NodeIndex& n) { return n < wanted.size() && wanted[n]; });
  }

  // An empty intersection writes nothing; a new entry below min_shared is not stored either.
  const std::uint32_t least = std::max<std::uint32_t>(overlaps.min_shared, 1);
  for (std::uint32_t i = n_exact; i < count; ++i) {
    // Exact cliques and the approximate ones after i; pairs with earlier approximate cliques
    // were written when those were extended.
    const auto written = [&](const std::uint32_t& j) { return j >= n_exact && j <= i; };
    bool diagonal_written = false;
    for (const MemberIndex::Shared& j : holders.Shared_with(cliques[i], written)) {
      if (!diagonal_written && j.position > i) {
        Set_overlap(overlaps.rows[i], i, static_cast<std::uint32_t>(cliques[i].size()));
        diagonal_written = true;
      }
      Write_shared(overlaps.rows[j.position], i, j.count, least);
      Write_shared(overlaps.rows[i], j.position, j.count, least);
    }
    if (!diagonal_written) {
      Set_overlap(overlaps.rows[i], i, static_cast<std::uint32_t>(cliques[i].size()));
    }
  }
}

void Complete_ovlp_matr(OverlapMatrix& overlaps, const CliqueList& searched,
                        const CliqueList& cliques, const std::uint32_t& n_exact) {
  if (overlaps.On_demand() && n_exact < searched.size()) {
    overlaps.storage = OverlapStorage::kStored;
    overlaps.rows.clear();
    NodeCliqueMap node_cliques;
    for (std::uint32_t id = 0; id < searched.size(); ++id) {
      Add_clique_overlaps(overlaps, node_cliques, searched[id], id);
    }
  }
  if (!overlaps.On_demand()) Extend_ovlp_matr(overlaps, cliques, n_exact);
}

}  // namespace kcp
