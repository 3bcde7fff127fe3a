#include "driver/network_stages.h"

#include "cliques/clique_search_stage.h"
#include "graph/node_index.h"

namespace kcp {

void Run_network_stages(LinkMap& links, const NetworkSettings& settings, const NetworkHooks& hooks,
                        Network& network) {
  hooks.before(NetworkStage::kConvert);
  Convert_s_links(network.index_links, network.names, links, settings.directed);
  links.clear();
  hooks.after(NetworkStage::kConvert, network);

  hooks.before(NetworkStage::kGraph);
  if (settings.directed) {
    Dir_vtx_map_from_link_map(network.directed_vertices, network.index_links);
    network.vertex_count = static_cast<std::uint32_t>(network.directed_vertices.size());
  } else {
    Vtx_map_from_link_map(network.vertices, network.index_links);
    network.vertex_count = static_cast<std::uint32_t>(network.vertices.size());
  }
  hooks.after(NetworkStage::kGraph, network);

  hooks.before(NetworkStage::kSearch);
  network.overlaps = Run_overlap_matrix(settings.min_shared);
  network.n_exact = 0;
  Find_cliques(settings.time_limited, settings.directed, network.cliques, network.overlaps,
               network.directed_vertices, network.vertices, network.n_exact, settings.max_time,
               SearchClock(), settings.stop, settings.threads);
  hooks.after(NetworkStage::kSearch, network);
}

}  // namespace kcp
