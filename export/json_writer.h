// Node-link JSON of a run as networkx's node_link_graph reads it (3.4 and later: edges="links"):
// "directed", "multigraph" (false: reciprocal lines of an undirected run are one link), "graph"
// (flavour, weighted, k, and per k, keyed "3", the communities: "id" "-12", approximate, nodes),
// "nodes" ("id"; "k3": "0,-12" as in GraphML, absent when none) and "links" ("source", "target",
// "weight" in weighted runs or null when not finite, "k3"). networkx reads the GraphML graph.
#pragma once

#include <ostream>

#include "export/export_network.h"
#include "results/run_results.h"

namespace kcp {

void Write_node_link_json(const RunResults& results, const ExportNetwork& network,
                          std::ostream& out);

}  // namespace kcp
