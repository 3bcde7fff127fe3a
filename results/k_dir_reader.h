// Reads the directory of one k of a results directory into a KResults, by node names: the
// communities and their links (required), the community cliques or k-cliques, the community graph
// and the distributions (when present). Every file must carry the run's description, flavour and
// this k; the links must join members of their community, the cliques and the graph must refer
// to existing cliques and communities of the right kind (the first ones only, in a file cut
// short). Throws Xerror_msg naming the file.
#pragma once

#include <cstdint>
#include <string>

#include "results/clique_file_reader.h"
#include "results/node_numbering.h"
#include "results/run_results.h"

namespace kcp {

struct RunContext {
  // "", "directed" or "intensity".
  std::string flavour;
  std::string alap_szoveg;
  // Locked to the nodes of the graph file.
  NodeNumbering* numbering = nullptr;
  // Null when the run left no clique file.
  const CliqueFile* cliques = nullptr;
  // An empty optional file is taken as absent (reading what an interrupted run left).
  bool empty_is_absent = false;
  // Set when reading what an interrupted run left: a file cut inside its last line is read without
  // it and noted here, and may list fewer communities than the communities file.
  CutFiles* cut_files = nullptr;
};

KResults Read_k_dir(const std::string& k_dir, const std::uint32_t& k, const RunContext& run);

}  // namespace kcp
