#include "cliques/ranged_search.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "cliques/node_cliques.h"
#include "core/ordered_tasks.h"

namespace kcp {

namespace {

// A search state with the nodes before `marked` (positions in the order) flagged processed. It
// serves ranges in increasing order, so flagging costs one pass over the order per state.
struct RangeSearcher {
  explicit RangeSearcher(const Adjacency& graph) : search(graph) {}
  NodeSearch search;
  std::size_t marked = 0;

  void Mark_before(const NodeOrder& order, const std::size_t& position) {
    if (position < marked) {
      std::fill(search.processed.begin(), search.processed.end(), 0);
      marked = 0;
    }
    for (; marked < position; ++marked) search.processed[order[marked]] = 1;
  }
};

// What one range found: every node's notes and cliques, flattened.
struct RangeCliques {
  std::string notes;
  std::vector<NodeList> cliques;
  std::vector<std::size_t> note_ends;    // per node of the range, one past its notes
  std::vector<std::uint32_t> node_ends;  // per node of the range, one past its last clique
};

// Cuts the order into ranges of about equal search cost, a node costing its squared degree (its
// neighbours, each intersected with its neighbour list), enough of them that the threads stay
// busy to the end although the costly nodes come last.
std::vector<std::size_t> Range_starts(const NodeOrder& order, const Adjacency& graph,
                                      const unsigned& threads) {
  std::vector<std::size_t> starts{0};
  if (threads <= 1) {
    if (!order.empty()) starts.push_back(order.size());
    return starts;
  }
  const auto cost = [&](const NodeIndex& v) {
    const auto degree = static_cast<std::uint64_t>(graph.Of(v).size());
    return degree * degree + 1;
  };
  std::uint64_t total = 0;
  for (const NodeIndex v : order) total += cost(v);
  const std::uint64_t share = std::max<std::uint64_t>(total / (std::uint64_t{threads} * 64), 1);
  std::uint64_t filled = 0;
  for (std::size_t p = 0; p < order.size(); ++p) {
    filled += cost(order[p]);
    if (filled >= share || p + 1 == order.size()) {
      starts.push_back(p + 1);
      filled = 0;
    }
  }
  return starts;
}

}  // namespace

void Search_in_ranges(const NodeOrder& order, const Adjacency& graph, const unsigned& threads,
                      const StopRequest* stop, const NodeNote& note, const NodeTake& take) {
  const std::vector<std::size_t> starts = Range_starts(order, graph, threads);
  const std::size_t ranges = starts.size() - 1;
  std::vector<RangeCliques> found(ranges);
  std::mutex idle_mutex;
  std::vector<std::unique_ptr<RangeSearcher>> idle;
  // The clique searches of other threads are not known here: the search's shortcut through the
  // cliques already registered is left out, which changes its speed only.
  const CliqueList no_cliques;
  const NodeCliqueMap no_node_cliques;

  OrderedTasks tasks;
  tasks.run = [&](const std::size_t& r) {
    std::unique_ptr<RangeSearcher> searcher;
    {
      const std::lock_guard<std::mutex> lock(idle_mutex);
      if (!idle.empty()) {
        searcher = std::move(idle.back());
        idle.pop_back();
      }
    }
    if (!searcher) searcher = std::make_unique<RangeSearcher>(graph);
    searcher->Mark_before(order, starts[r]);
    RangeCliques& range = found[r];
    for (std::size_t p = starts[r]; p < starts[r + 1]; ++p) {
      Check_stop(stop);
      const NodeIndex v = order[p];
      note(p, range.notes);
      range.note_ends.push_back(range.notes.size());
      for (NodeList& clique :
           Node_cliques_in_order(v, searcher->search, no_cliques, no_node_cliques)) {
        range.cliques.push_back(std::move(clique));
      }
      range.node_ends.push_back(static_cast<std::uint32_t>(range.cliques.size()));
      searcher->search.processed[v] = 1;
      searcher->marked = p + 1;
    }
    const std::lock_guard<std::mutex> lock(idle_mutex);
    idle.push_back(std::move(searcher));
  };
  tasks.deliver = [&](const std::size_t& r) {
    RangeCliques range = std::move(found[r]);
    const std::span<const NodeList> all(range.cliques);
    const std::string_view notes(range.notes);
    std::uint32_t from = 0;
    std::size_t noted_from = 0;
    for (std::size_t p = starts[r]; p < starts[r + 1]; ++p) {
      const std::uint32_t to = range.node_ends[p - starts[r]];
      const std::size_t noted_to = range.note_ends[p - starts[r]];
      take(p, notes.substr(noted_from, noted_to - noted_from), all.subspan(from, to - from));
      from = to;
      noted_from = noted_to;
    }
  };
  tasks.discard = [&](const std::size_t& r) { found[r] = RangeCliques(); };
  Run_in_order(ranges, threads, std::size_t{threads} * 4, tasks);
}

}  // namespace kcp
