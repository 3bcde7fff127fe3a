// The outer loop of the exact clique searches, one for undirected and directed graphs: every node
// of `order` once, under the progress report of the nodes left, then the closing count of what
// was found. The per-node search is the caller's: it finds, registers and retires node v, and
// alone fixes which cliques come and in which order.
#pragma once

#include <cstdint>
#include <sstream>
#include <string>

#include "cliques/ranged_search.h"
#include "cliques/search_report.h"
#include "core/stop_request.h"
#include "core/types.h"
#include "graph/vertex_map.h"
#include "text/console.h"

namespace kcp {

// header is the progress line ("Locating cliques:"), items the closing word ("cliques"). The
// cliques and overlaps start empty. Throws Xstopped before a node once stop is requested.
template <typename Search_node>
void Exact_loop(const NodeOrder& order, const std::string& header, const std::string& items,
                CliqueList& cliques, OverlapMatrix& overlaps, const StopRequest* stop,
                Search_node&& search_node) {
  using namespace Clique_find_report_sub_routines;
  cliques.clear();
  overlaps.rows.clear();
  const auto total = static_cast<std::uint32_t>(order.size());
  std::uint32_t remaining = total;
  std::ostringstream block;
  for (const NodeIndex v : order) {
    Check_stop(stop);
    block.str(std::string());
    Report_progress(header, "nodes", remaining, total, block);
    Print_progress(block.view());
    search_node(v);
    --remaining;
  }
  std::ostringstream closing;
  Report_clique_search_end(items, cliques.size(), closing);
  Print_text(closing.str());
}

// Exact_loop of an undirected search on several threads (Search_in_ranges): the same progress
// lines and closing count, every clique handed to register_clique in the order of one thread.
template <typename Register_clique>
void Exact_loop_in_ranges(const NodeOrder& order, const Adjacency& graph, const unsigned& threads,
                          const std::string& header, const std::string& items, CliqueList& cliques,
                          OverlapMatrix& overlaps, const StopRequest* stop,
                          Register_clique&& register_clique) {
  using namespace Clique_find_report_sub_routines;
  cliques.clear();
  overlaps.rows.clear();
  const auto total = static_cast<std::uint32_t>(order.size());
  Search_in_ranges(
      order, graph, threads, stop,
      [&](const std::size_t& position, std::string& text) {
        std::ostringstream block;
        Report_progress(header, "nodes", total - static_cast<std::uint32_t>(position), total,
                        block);
        text.append(block.view());
      },
      [&](const std::size_t&, std::string_view noted, std::span<const NodeList> found) {
        Print_progress(noted);
        for (const NodeList& clique : found) register_clique(clique);
      });
  std::ostringstream closing;
  Report_clique_search_end(items, cliques.size(), closing);
  Print_text(closing.str());
}

}  // namespace kcp
