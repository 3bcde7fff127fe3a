#include "cliques/clique_search_stage.h"

#include <string>

#include "cliques/approximation.h"
#include "cliques/clique_find.h"
#include "cliques/clique_find_dir.h"
#include "cliques/clique_find_dir_time.h"
#include "cliques/on_demand_index.h"
#include "cliques/overlap_extend.h"
#include "cliques/overlap_matrix.h"
#include "text/console.h"

namespace kcp {

namespace {

template <typename CoreMap>
void Approximate_core(const CoreMap& core, CliqueList& cliques, OverlapMatrix& overlaps,
                      std::uint32_t& n_exact, const StopRequest* stop) {
  Print_underscores(45);
  Print_line(" Approximating cliques in the remaing core...");
  CliqueList approximate;
  Appr_core_cliques(core, cliques, approximate, stop);
  // Kept only while the matrix is computed on demand: should exact cliques be dropped, the rows
  // the search would have stored for them are needed after all.
  CliqueList searched;
  if (overlaps.On_demand()) searched = cliques;
  Extend_clique_vec(cliques, n_exact, approximate);
  Complete_ovlp_matr(overlaps, searched, cliques, n_exact);
  Print_line(" Clique approximation finished,");
  Print_line(" number of   exact cliques=" + std::to_string(n_exact) + ",");
  Print_line(" number of approx. cliques=" + std::to_string(cliques.size() - n_exact));
}

}  // namespace

OverlapMatrix Run_overlap_matrix(const std::uint32_t& min_shared) {
  OverlapMatrix overlaps;
  overlaps.min_shared = min_shared;
  overlaps.storage = OverlapStorage::kOnDemand;
  overlaps.index = std::make_shared<OnDemandIndex>();
  return overlaps;
}

namespace {

void Search(const bool& time_limited, const bool& directed, CliqueList& cliques,
            OverlapMatrix& overlaps, VtxdMap& directed_vertices, VtxMap& vertices,
            std::uint32_t& n_exact, const double& max_time, const SearchClock& search_clock,
            const StopRequest* stop, const unsigned& threads) {
  if (!time_limited) {
    if (directed) {
      Clique_find_dir(cliques, overlaps, directed_vertices, stop);
    } else {
      Clique_find(cliques, overlaps, vertices, stop, threads);
    }
    n_exact = static_cast<std::uint32_t>(cliques.size());
    return;
  }
  if (directed) {
    VtxdMap core;
    Clique_find_dir_time(cliques, overlaps, directed_vertices, core, max_time, search_clock, stop);
    n_exact = static_cast<std::uint32_t>(cliques.size());
    if (!core.empty()) Approximate_core(core, cliques, overlaps, n_exact, stop);
  } else {
    VtxMap core;
    Clique_find_part_time(cliques, overlaps, vertices, core, max_time, search_clock, stop);
    n_exact = static_cast<std::uint32_t>(cliques.size());
    if (!core.empty()) Approximate_core(core, cliques, overlaps, n_exact, stop);
  }
}

}  // namespace

void Find_cliques(const bool& time_limited, const bool& directed, CliqueList& cliques,
                  OverlapMatrix& overlaps, VtxdMap& directed_vertices, VtxMap& vertices,
                  std::uint32_t& n_exact, const double& max_time, const SearchClock& search_clock,
                  const StopRequest* stop, const unsigned& threads) {
  Search(time_limited, directed, cliques, overlaps, directed_vertices, vertices, n_exact, max_time,
         search_clock, stop, threads);
  // From here on only percolation reads a stored matrix, at one k at a time.
  if (!overlaps.On_demand()) Order_rows_by_share(overlaps);
}

}  // namespace kcp
