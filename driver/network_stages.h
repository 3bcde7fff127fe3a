// The stages of a run from its links to its cliques, in their fixed order, for the program and
// for runs on links held in memory alike: the links numbered (Convert_s_links), the graph made
// from them, the overlap matrix of the run and the clique search (Find_cliques). What differs
// between callers, the console lines and the stage an out-of-memory message names or a check for
// a stop request, comes through hooks called before and after each stage.
#pragma once

#include <cstdint>
#include <functional>

#include "cliques/overlap_matrix.h"
#include "core/stop_request.h"
#include "core/types.h"
#include "graph/vertex_map.h"

namespace kcp {

enum class NetworkStage { kConvert, kGraph, kSearch };

// What the stages make: the numbered links and names, the graph (directed_vertices in a directed
// run, vertices otherwise), its node count, and the cliques, exact ones first.
struct Network {
  IndexLinkMap index_links;
  NameMap names;
  VtxMap vertices;
  VtxdMap directed_vertices;
  std::uint32_t vertex_count = 0;
  CliqueList cliques;
  OverlapMatrix overlaps;
  std::uint32_t n_exact = 0;
};

struct NetworkSettings {
  bool directed = false;
  bool time_limited = false;
  double max_time = 0.0;         // read only when time_limited
  std::uint32_t min_shared = 2;  // of the overlap matrix (see Run_overlap_matrix)
  unsigned threads = 1;          // of the exact undirected search
  const StopRequest* stop = nullptr;
};

struct NetworkHooks {
  std::function<void(NetworkStage)> before = [](NetworkStage) {};
  std::function<void(NetworkStage, const Network&)> after = [](NetworkStage, const Network&) {};
};

// Empties links once they are numbered. The errors of the stages pass through.
void Run_network_stages(LinkMap& links, const NetworkSettings& settings, const NetworkHooks& hooks,
                        Network& network);

}  // namespace kcp
