// A results directory read back into memory, by names rather than by the run's node indices, for
// the exporters. Read_results_dir reads the graph file, the clique file and, per "k=" directory,
// the communities, their links, the community graph and the distributions of whichever flavour
// the run wrote (plain, "directed_" or "intensity_"; the suffixes "_merged", "_exact", "_appr").
// Numbers are those of the files: a negative number marks an approximate community or clique.
// Throws Xerror_msg naming the file and line on a file it cannot make sense of.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "core/xerror_msg.h"

namespace kcp {

// One line of the graph file; weight_text is the weight column as written ("" when unweighted).
struct NamedLink {
  std::string source;
  std::string target;
  std::optional<double> weight;
  std::string weight_text;
};

// A community as the files give it: its number (negative when approximate), its node names in
// file order and its links in file order.
struct CommunityRecord {
  std::int64_t number = 0;
  bool approximate = false;
  std::vector<std::string> nodes;
  std::vector<std::pair<std::string, std::string>> links;
  // Positions in RunResults::cliques of the cliques it was grown from, in file order (the
  // [flag_]communities_cliques file; empty in an intensity run or when the file is missing).
  std::vector<std::uint32_t> cliques;
};

// One line of the clique file: its number (negative when approximate; the first approximate
// clique of a run without exact ones is "-0", number 0 with approximate set) and its members.
struct CliqueRecord {
  std::int64_t number = 0;
  bool approximate = false;
  std::vector<std::string> nodes;
};

// One edge of the community graph: two community numbers (negative when approximate) and the
// number of shared nodes.
struct CommunityEdge {
  std::int64_t first = 0;
  std::int64_t second = 0;
  std::uint32_t shared = 0;
  // Set for an approximate end, so that "-0" stays apart from 0.
  bool first_approximate = false;
  bool second_approximate = false;
};

// value -> count, as in one distribution file.
using DistributionTable = std::map<std::uint32_t, std::uint32_t>;

// Everything one "k=" directory holds.
struct KResults {
  std::uint32_t k = 0;
  std::vector<CommunityRecord> communities;
  std::vector<CommunityEdge> community_graph;
  // Keyed by file stem and suffix as written: "size_distribution", "degree_distribution_exact", ...
  // (without the flag prefix).
  std::map<std::string, DistributionTable> distributions;
  // The k-cliques of an intensity run (the k-cliques file), in file order; empty otherwise.
  std::vector<std::vector<std::string>> k_cliques;
};

struct RunResults {
  // "" for a plain run, "directed" or "intensity".
  std::string flavour;
  bool directed = false;
  bool weighted = false;
  // Every node name of the graph file, in order of first appearance.
  std::vector<std::string> nodes;
  std::vector<NamedLink> links;
  // The run description every result file repeats in its header (the base text of the run).
  std::string alap_szoveg;
  // The clique file in file order; empty when the run left none.
  std::vector<CliqueRecord> cliques;
  // Ascending k.
  std::vector<KResults> per_k;
  // What a run would have written but the directory lacks (only filled when that is allowed).
  std::vector<std::string> missing;
  // The files, below the results directory, that were cut inside their last line and were read
  // without it, in reading order (only filled when that is allowed).
  std::vector<std::string> cut;
};

// Thrown when a results directory lacks files its run writes (see results/completeness.h).
class Xincomplete_results : public Xerror_msg {
 public:
  using Xerror_msg::Xerror_msg;
};

// Reads the results directory `dir`; with only_k set, only that "k=" directory (which must exist).
// Unless allow_incomplete is set, a directory lacking any file its run writes is refused with
// Xincomplete_results naming what is missing. With it set, what is there is read: a "k="
// directory without its communities or their links is left out, RunResults::missing lists
// everything absent, and a file cut inside its last line is read without it and listed in
// RunResults::cut (without allow_incomplete it is an error).
// The graph file is required (it tells a results directory), and so are the communities and
// their links in every "k=" directory read; the clique file, the community cliques, the
// k-cliques, the community graph and the distributions are read when present. Files are checked
// against each other (same run description, flavour and k; links and cliques of the listed
// communities; nodes of the graph file).
RunResults Read_results_dir(const std::string& dir, const std::optional<std::uint32_t>& only_k,
                            bool allow_incomplete = false);

}  // namespace kcp
