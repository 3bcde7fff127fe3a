// The exact undirected search split into ranges of the node order, searched side by side. A
// node's cliques depend only on the graph and on which nodes come before it in the order, so a
// range is searched on its own processed flags (every node before the range marked done) and the
// ranges' cliques, taken in range order, are the cliques of a search on one thread, node by node.
#pragma once

#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "core/stop_request.h"
#include "core/types.h"
#include "graph/adjacency.h"
#include "graph/vertex_map.h"

namespace kcp {

// What the thread that searched a node noted before its search (note(position, text) appends to
// text), and the cliques Node_cliques_in_order registers for it (each ascending, node included).
using NodeNote = std::function<void(std::size_t, std::string&)>;
using NodeTake = std::function<void(std::size_t, std::string_view, std::span<const NodeList>)>;

// Calls take(position, noted, cliques) for every position of `order` in turn, on the calling
// thread. The searches, and the notes, run on up to `threads` threads, a bounded number of
// ranges ahead of the one taken. Throws Xstopped once stop is requested (the nodes taken before
// it stay taken); an exception of take or of a search ends the run after the ranges under way
// are finished and dropped.
void Search_in_ranges(const NodeOrder& order, const Adjacency& graph, const unsigned& threads,
                      const StopRequest* stop, const NodeNote& note, const NodeTake& take);

}  // namespace kcp
