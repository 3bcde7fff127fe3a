#include "cliques/clique_find.h"

#include <algorithm>
#include <sstream>

#include "cliques/exact_loop.h"
#include "cliques/node_cliques.h"
#include "cliques/search_report.h"
#include "text/console.h"

namespace kcp {

namespace Clique_find_sub_routines {

NodeList Tighten(const NodeSet& A, std::span<const NodeIndex> B, std::span<const NodeIndex> C) {
  NodeList result;
  const auto keep = [&](const NodeIndex& n) {
    if (!std::binary_search(C.begin(), C.end(), n)) result.push_back(n);
  };
  if (B.size() * 8 < A.size()) {
    for (const NodeIndex n : B) {
      if (A.count(n) != 0) keep(n);
    }
    return result;
  }
  auto a = A.begin();
  for (const NodeIndex n : B) {
    while (a != A.end() && *a < n) ++a;
    if (a == A.end()) break;
    if (*a == n) keep(n);
  }
  return result;
}

KnownCliques Known_cliques_of(const NodeIndex& v, const CliqueList& cliques,
                              const NodeCliqueMap& node_cliques) {
  KnownCliques known;
  const std::span<const std::uint32_t> held = node_cliques.index.Holders(v);
  known.reserve(held.size());
  for (const std::uint32_t c : held) known.push_back(cliques[c]);
  return known;
}

}  // namespace Clique_find_sub_routines

void Clique_find(CliqueList& cliques, OverlapMatrix& overlaps, VtxMap& vertices,
                 const StopRequest* stop, const unsigned& threads) {
  using namespace Clique_find_sub_routines;

  Print_line(" Sorting the nodes...");
  NodeOrder order;
  Sort_Vtx_map(order, vertices);
  Print_line(" done.");

  // The working graph of the search is the whole graph less the processed nodes: it is kept as
  // processed flags over the graph's adjacency arrays rather than as a shrinking copy of the map.
  const Adjacency graph(vertices);
  NodeCliqueMap node_cliques;
  if (threads > 1) {
    Exact_loop_in_ranges(order, graph, threads, " Locating cliques:", "cliques", cliques, overlaps,
                         stop, [&](const NodeList& clique) {
                           Iktatjuk_az_uj_math_cliquet(cliques, clique, vertices, overlaps,
                                                       node_cliques, false);
                         });
    return;
  }
  NodeSearch search(graph);
  Exact_loop(
      order, " Locating cliques:", "cliques", cliques, overlaps, stop, [&](const NodeIndex& v) {
        for (const NodeList& clique : Node_cliques_in_order(v, search, cliques, node_cliques)) {
          Iktatjuk_az_uj_math_cliquet(cliques, clique, vertices, overlaps, node_cliques, false);
        }
        search.processed[v] = 1;
      });
}

}  // namespace kcp
