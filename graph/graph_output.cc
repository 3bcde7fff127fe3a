#include "graph/graph_output.h"

#include <ostream>

#include "core/result_layout.h"
#include "fsutil/result_file.h"

namespace kcp {

void Kiir_graph(const LinkMap& links, const std::string& dir, const bool& directed,
                const std::string& alap_szoveg, const bool& weighted) {
  ResultFile file(dir, directed ? "directed_graph" : "graph");
  // Mutual links are folded only later, at node indexing, so this file still holds both
  // directions although the line says otherwise; the wording stays.
  file << "# The links" << alap_szoveg
       << (directed ? layout::kDirectedGraphTail : layout::kUndirectedGraphTail) << "\n\n";
  // Weights in the stream's default format: %g with 6 significant digits.
  for (const auto& [key, weight] : links) {
    file << key.first << ' ' << key.second;
    if (weighted) file << ' ' << weight;
    file << '\n';
  }
  file.Close();
}

}  // namespace kcp
