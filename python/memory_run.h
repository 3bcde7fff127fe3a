// A run of Varnel on links held in memory instead of a link file, as the Python module needs it:
// the stages of the program's run through the same functions (Run_network_stages with the
// overlap rows computed on demand, then Coms_from_appr_ovlp_matr at each k asked for, several k
// side by side through Run_k_stages), with nothing printed and no file written. Given
// the lines of a link file as links in file order, the cliques and the communities at every k
// equal those of the program's run on that file, in the same order.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "communities/percolation.h"
#include "core/stop_request.h"
#include "core/types.h"
#include "driver/network_stages.h"
#include "graph/vertex_map.h"

namespace kcp {

// The communities at one k in the run's order: the exact ones, then the approximate ones.
struct KCommunities {
  CommunityList communities;
  // Per community, the positions of its cliques in the clique list, in the order it took them.
  CommunityCliqueLists cliques;
  std::uint32_t n_exact = 0;
};

class MemoryRun {
 public:
  // names[p] is the name of the node at position p; links holds (source, target) positions, one
  // link every two entries. Self-links are dropped, as the link reader drops them. With a time
  // limit the search is the program's -t search. Throws Xerror_msg for a repeated name, an odd
  // link list or a position past names; the errors of the search pass through, Xstopped among
  // them once stop is requested. The exact undirected search runs on up to `threads` threads,
  // with the cliques of one.
  MemoryRun(const std::vector<std::string>& names, const std::vector<std::uint32_t>& links,
            bool directed, std::optional<double> time_limit, const StopRequest* stop = nullptr,
            const unsigned& threads = 1);

  // Exact cliques first (N_exact of them), then the approximate ones.
  const CliqueList& Cliques() const { return network_.cliques; }
  std::uint32_t N_exact() const { return network_.n_exact; }
  // Positions()[i - 1] is the position of the node with index i.
  const std::vector<std::uint32_t>& Positions() const { return positions_; }
  // The communities at k; throws Xerror_msg for k below 3, which the program never runs.
  KCommunities Communities(std::uint32_t k, const StopRequest* stop = nullptr) const;
  // The communities at every k of ks, found on up to `threads` threads at once (the largest k
  // first, so that each k builds on the one above when it is done); result i is that of ks[i].
  std::vector<KCommunities> Communities(const std::vector<std::uint32_t>& ks,
                                        const unsigned& threads,
                                        const StopRequest* stop = nullptr) const;
  // The maximal cliques of two nodes, which the search does not list (see pair_cliques.h).
  CliqueList Pair_cliques() const;

 private:
  bool directed_ = false;
  Network network_;  // the graph kept undirected only, for Pair_cliques
  std::vector<std::uint32_t> positions_;
};

}  // namespace kcp
