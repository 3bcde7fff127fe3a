// GraphML of a run for graph tools: the nodes and links of the graph file (export_network.h),
// edgedefault "directed" for a directed run, a "weight" (double) per link in a weighted run, and
// per k the string attributes "k3", "k4", ... listing the labels of the communities that hold the
// node or the link ("0,5"; "-12" for an approximate one; absent when none). Names are written by
// the rule of safe_text.h. Keys are declared before the graph; nodes, then links, in file order.
#pragma once

#include <ostream>

#include "export/export_network.h"
#include "results/run_results.h"

namespace kcp {

void Write_graphml(const RunResults& results, const ExportNetwork& network, std::ostream& out);

}  // namespace kcp
