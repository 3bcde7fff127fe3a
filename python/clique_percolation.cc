#include "python/clique_percolation.h"

#include <algorithm>
#include <utility>

#include "cliques/clique_search_stage.h"
#include "communities/percolation.h"
#include "core/xerror_msg.h"

namespace kcp {

CommunityList Percolate_cliques(const CliqueList& cliques, std::uint32_t k,
                                const StopRequest* stop) {
  if (k < 2) throw Xerror_msg("ERROR: k-clique communities need k = 2 or above.");
  CliqueList kept;
  for (Clique clique : cliques) {
    std::sort(clique.begin(), clique.end());
    clique.erase(std::unique(clique.begin(), clique.end()), clique.end());
    if (!clique.empty() && clique.front() == 0) {
      throw Xerror_msg("ERROR: node index 0 in a clique; nodes are numbered from 1.");
    }
    if (clique.size() >= k) kept.push_back(std::move(clique));
  }
  const OverlapMatrix overlaps = Run_overlap_matrix(k - 1);
  CommunityList communities;
  CommunityLinkLists links;
  CommunityCliqueLists members;
  std::uint32_t n_exact_coms = 0;
  const auto n_exact = static_cast<std::uint32_t>(kept.size());
  Coms_from_appr_ovlp_matr(communities, links, members, kept, overlaps, k, n_exact, n_exact_coms,
                           stop);
  return communities;
}

}  // namespace kcp
