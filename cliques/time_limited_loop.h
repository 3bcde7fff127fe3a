// The outer loop of the time-limited clique searches, one for undirected (VtxMap) and directed
// (VtxdMap) graphs. Nodes are attempted in `order`, each under its own clock start; an attempt
// that runs over max_time sends its node to the back of the queue and keeps its cliques pending,
// one that finishes registers its cliques in the order found and drops the node from the working
// copy. The loop ends when the queue empties or every node left was given up in a row; the
// pending cliques are then registered and the nodes left, with their links, become the core.
// The per-node search (the `attempt`) is the caller's: it alone decides which cliques are found
// and in which order.
#pragma once

#include <deque>
#include <sstream>
#include <string>
#include <utility>

#include "cliques/clique_find.h"
#include "cliques/clique_find_time.h"
#include "cliques/search_report.h"
#include "core/stop_request.h"
#include "core/types.h"
#include "graph/vertex_map.h"
#include "text/console.h"

namespace kcp {

// The console wording of one search: the progress header up to the time limit, the word for
// what it finds ("cliques", "directed cliques") and the closing note when no node was left.
struct TimeLimitedTexts {
  std::string header_start;
  std::string items;
  std::string no_approximation;
};

// attempt(v, working, t0, exceeded, timer, known, node_result) searches node v of `working`:
// node_result gets the cliques it finds, in order; exceeded tells whether it ran over the limit.
// `known` lists the registered cliques holding v. Once stop is requested the timer cuts the
// attempt short and the loop throws Xstopped.
template <typename Map, typename Attempt>
void Time_limited_loop(CliqueList& cliques, OverlapMatrix& overlaps, Map& vertices, Map& core,
                       Map working, const NodeOrder& order, const double& max_time,
                       const SearchClock& search_clock, const TimeLimitedTexts& texts,
                       const StopRequest* stop, Attempt&& attempt) {
  using namespace Clique_find_time_sub_routines;
  using namespace Clique_find_report_sub_routines;
  cliques.clear();
  overlaps.rows.clear();
  std::deque<NodeIndex> queue(order.begin(), order.end());
  NodeCliqueMap node_cliques;
  PendingCliques pending;

  const std::string header = Time_limited_header(texts.header_start, max_time);
  const auto total = static_cast<std::uint32_t>(working.size());
  std::uint32_t skipped = 0;
  bool go_on = true;
  NodeResult node_result;
  AttemptTimer timer(search_clock, stop);
  while (!queue.empty() && go_on) {
    const NodeIndex v = queue.front();
    queue.pop_front();
    std::ostringstream block;
    Report_progress(header, "nodes", static_cast<std::uint32_t>(working.size()), total, block);
    Print_text(block.str());

    const long double t0 = timer.Start();
    node_result.clear();
    bool exceeded = false;
    attempt(v, working, t0, exceeded, timer,
            Clique_find_sub_routines::Known_cliques_of(v, cliques, node_cliques), node_result);
    // An attempt cut short by the request must not count as one that ran over the limit.
    Check_stop(stop);
    if (exceeded) {
      go_on = Requeue_hard_node(v, skipped, working.size(), queue, texts.items);
      pending.insert(node_result.begin(), node_result.end());
    } else {
      for (const NodeList& clique : node_result) {
        Clique_find_sub_routines::Iktatjuk_az_uj_math_cliquet(cliques, clique, vertices, overlaps,
                                                              node_cliques, false);
      }
      skipped = 0;
      working.erase(v);
    }
  }

  std::ostringstream closing;
  if (!working.empty()) {
    Register_pending(pending, cliques, vertices, overlaps, node_cliques);
    Report_clique_search_end("exact " + texts.items, cliques.size(), closing);
  } else {
    // Every node given up was completed later and found its pending cliques again.
    Report_clique_search_end(texts.items, cliques.size(), texts.no_approximation, closing);
  }
  Print_text(closing.str());
  core = std::move(working);
}

}  // namespace kcp
