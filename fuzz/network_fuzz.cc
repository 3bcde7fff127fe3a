// Fuzz target: a whole search on a small network. The first byte chooses undirected or directed
// links; the rest is a link file. Networks of at most 40 links have their maximal cliques found
// and their communities extracted at every k. Every clique must be a clique of the network and no
// clique may lie inside another; every community must be the union of its cliques, each of which
// has at least k nodes.
#include <algorithm>
#include <cstdlib>
#include <set>

#include "cliques/clique_search_stage.h"
#include "cliques/overlap_matrix.h"
#include "communities/percolation.h"
#include "fuzz/fuzz_files.h"
#include "graph/link_reader.h"
#include "graph/node_index.h"
#include "graph/vertex_map.h"

namespace {

using namespace kcp;

void Check(const bool& holds) {
  if (!holds) std::abort();
}

void Check_cliques(const CliqueList& cliques, const IndexLinkMap& links) {
  std::set<std::pair<NodeIndex, NodeIndex>> linked;
  for (const auto& [pair, weight] : links) {
    linked.insert(pair);
    linked.insert({pair.second, pair.first});
  }
  for (const Clique& clique : cliques) {
    Check(clique.size() >= 3 && std::is_sorted(clique.begin(), clique.end()));
    for (std::size_t i = 0; i < clique.size(); ++i) {
      for (std::size_t j = i + 1; j < clique.size(); ++j) {
        Check(linked.contains({clique[i], clique[j]}));
      }
    }
  }
  for (std::size_t a = 0; a < cliques.size(); ++a) {
    for (std::size_t b = 0; b < cliques.size(); ++b) {
      if (a == b || cliques[a].size() > cliques[b].size()) continue;
      Check(!std::includes(cliques[b].begin(), cliques[b].end(), cliques[a].begin(),
                           cliques[a].end()));
    }
  }
}

void Check_communities(const CliqueList& cliques, const OverlapMatrix& overlaps,
                       const std::uint32_t& n_exact) {
  const std::uint32_t largest = Max_clique_size_in_cl_vec(cliques);
  for (std::uint32_t k = largest; k > 2; --k) {
    CommunityList communities;
    CommunityLinkLists community_links;
    CommunityCliqueLists community_cliques;
    std::uint32_t n_exact_coms = 0;
    Coms_from_appr_ovlp_matr(communities, community_links, community_cliques, cliques, overlaps, k,
                             n_exact, n_exact_coms);
    Check(communities.size() == community_cliques.size() && n_exact_coms <= communities.size());
    for (std::size_t c = 0; c < communities.size(); ++c) {
      std::set<NodeIndex> united;
      for (const std::uint32_t clique : community_cliques[c]) {
        Check(clique < cliques.size() && cliques[clique].size() >= k);
        united.insert(cliques[clique].begin(), cliques[clique].end());
      }
      Check(std::set<NodeIndex>(communities[c].begin(), communities[c].end()) == united);
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 1) return 0;
  const bool directed = (data[0] & 1) != 0;
  const std::string path = fuzz::Write_scratch(
      "network", std::string_view(reinterpret_cast<const char*>(data) + 1, size - 1));
  LinkMap links;
  try {
    Read_unw_links(path, links);
  } catch (const Xep_read_file&) {
    return 0;
  }
  if (links.size() > 40) return 0;
  IndexLinkMap index_links;
  NameMap names;
  Convert_s_links(index_links, names, links, directed);
  VtxMap vertices;
  VtxdMap directed_vertices;
  if (directed) {
    Dir_vtx_map_from_link_map(directed_vertices, index_links);
  } else {
    Vtx_map_from_link_map(vertices, index_links);
  }
  CliqueList cliques;
  OverlapMatrix overlaps = Run_overlap_matrix(2);
  std::uint32_t n_exact = 0;
  Find_cliques(false, directed, cliques, overlaps, directed_vertices, vertices, n_exact, 0.0);
  Check(n_exact == cliques.size());
  Check_cliques(cliques, index_links);
  Check_communities(cliques, overlaps, n_exact);
  return 0;
}
