// Reads the graph file of a run ("graph", or "directed_graph" for a directed run): the links as
// the run used them, by node name, with or without a weight column. The header tells directed
// from undirected (its last line) and weighted from unweighted (a weight threshold or an
// intensity threshold in the run description). Node names enter `numbering` in order of first
// appearance, which gives every node the index the run gave it. Throws Xerror_msg naming the file
// and line on anything Kiir_graph could not have written; given cut_files, a file cut inside its
// last line is read without that line (see LineTokeniser).
#pragma once

#include <string>
#include <vector>

#include "core/types.h"
#include "results/line_tokeniser.h"
#include "results/node_numbering.h"
#include "results/run_results.h"

namespace kcp {

struct GraphFile {
  bool directed = false;
  bool weighted = false;
  std::string alap_szoveg;
  // In file order, with the weight text as written.
  std::vector<NamedLink> links;
  // What Kiir_graph takes.
  LinkMap link_map;
};

GraphFile Read_graph_file(const std::string& path, NodeNumbering& numbering,
                          CutFiles* cut_files = nullptr);

}  // namespace kcp
