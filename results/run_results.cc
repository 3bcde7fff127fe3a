#include "results/run_results.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "core/result_layout.h"
#include "core/xerror_msg.h"
#include "results/clique_file_reader.h"
#include "results/completeness.h"
#include "results/graph_file_reader.h"
#include "results/k_dir_reader.h"
#include "results/line_tokeniser.h"
#include "results/node_numbering.h"
#include "results/record_numbers.h"

namespace kcp {

namespace {

namespace fs = std::filesystem;

bool Exists(const std::string& path) {
  std::error_code error;
  return fs::exists(path, error);
}

// The "k=" directories of the results directory, ascending; other entries are not the run's.
std::vector<std::uint32_t> List_k_dirs(const std::string& dir) {
  std::vector<std::uint32_t> ks;
  std::error_code error;
  for (fs::directory_iterator it(dir, error), end; !error && it != end; it.increment(error)) {
    const std::string name = it->path().filename().string();
    std::uint32_t k = 0;
    std::error_code type_error;
    if (name.starts_with("k=") && Parse_unsigned(std::string_view(name).substr(2), k) &&
        it->is_directory(type_error)) {
      ks.push_back(k);
    }
  }
  if (error) Fail_in_file(dir, 0, "cannot list the directory: " + error.message());
  std::sort(ks.begin(), ks.end());
  return ks;
}

std::vector<std::string> Names_of(const NodeList& nodes, const std::vector<std::string>& names) {
  std::vector<std::string> result;
  result.reserve(nodes.size());
  for (const NodeIndex node : nodes) result.push_back(names[node]);
  return result;
}

// The graph file names the run: "graph" or "directed_graph", never both.
std::string Graph_path(const std::string& dir) {
  std::error_code error;
  if (!fs::exists(dir, error)) Fail_in_file(dir, 0, "no such results directory");
  if (!fs::is_directory(dir, error)) Fail_in_file(dir, 0, "this is not a directory");

  const bool plain_graph = Exists(dir + "/graph");
  const bool directed_graph = Exists(dir + "/directed_graph");
  if (plain_graph == directed_graph) {
    Fail_in_file(dir, 0,
                 plain_graph ? "it holds both a \"graph\" and a \"directed_graph\" file: not the "
                               "results of one run"
                             : "not a results directory of Varnel: it holds neither a \"graph\" "
                               "nor a \"directed_graph\" file");
  }
  return dir + (directed_graph ? "/directed_graph" : "/graph");
}

// Fills the run's kind, description, nodes and links from the graph file, whose header must
// agree with its name.
void Read_graph(const std::string& graph_path, NodeNumbering& numbering, CutFiles* cut,
                RunResults& results) {
  GraphFile graph = Read_graph_file(graph_path, numbering, cut);
  numbering.Lock();
  const bool directed_name = graph_path.ends_with("/directed_graph");
  if (graph.directed != directed_name) {
    Fail_in_file(graph_path, 0,
                 directed_name ? "the header says that mutual links were removed, which only an "
                                 "undirected run does, but the file name is that of a directed run"
                               : "the header is that of a directed run, but the file name is that "
                                 "of an undirected one");
  }
  results.directed = graph.directed;
  results.weighted = graph.weighted;
  results.flavour = graph.directed ? "directed" : "";
  if (layout::Has_line(graph.alap_szoveg, layout::kIntensityLine)) {
    if (graph.directed) {
      Fail_in_file(graph_path, 0,
                   "the run description names both an intensity threshold and "
                   "directed links, which no run combines");
    }
    results.flavour = "intensity";
  }
  results.alap_szoveg = graph.alap_szoveg;
  results.nodes.assign(numbering.Names().begin() + 1, numbering.Names().end());
  results.links = std::move(graph.links);
}

// Reads the clique file of the run into `cliques` and results.cliques; false when there is none
// or it was cut to nothing.
bool Read_cliques(const std::string& clique_path, NodeNumbering& numbering, CutFiles* cut,
                  CliqueFile& cliques, RunResults& results) {
  std::error_code size_error;
  const bool cut_to_nothing = Exists(clique_path) && fs::file_size(clique_path, size_error) == 0;
  if (!Exists(clique_path) || cut_to_nothing) return false;
  cliques = Read_clique_file(clique_path, numbering, cut);
  if (cliques.flag != (results.directed ? layout::kDirected : std::string_view())) {
    Fail_in_file(clique_path, 1, "the header does not match the file name");
  }
  if (cliques.alap_szoveg != results.alap_szoveg) {
    Fail_in_file(clique_path, 1,
                 "the run description differs from that of the graph file: this file belongs "
                 "to another run");
  }
  results.cliques.resize(cliques.cliques.size());
  for (std::size_t i = 0; i < cliques.cliques.size(); ++i) {
    CliqueRecord& record = results.cliques[i];
    record.approximate = i >= cliques.n_exact;
    record.number =
        record.approximate ? -static_cast<std::int64_t>(i) : static_cast<std::int64_t>(i);
    record.nodes = Names_of(cliques.cliques[i], numbering.Names());
  }
  return true;
}

// The k of the "k=" directories to read: only_k, whose directory must exist, or all of them.
std::vector<std::uint32_t> Ks_to_read(const std::string& dir,
                                      const std::optional<std::uint32_t>& only_k) {
  if (!only_k) return List_k_dirs(dir);
  std::error_code error;
  if (!fs::is_directory(dir + "/k=" + std::to_string(*only_k), error)) {
    Fail_in_file(dir, 0,
                 "there is no directory \"k=" + std::to_string(*only_k) +
                     "\": the run wrote no communities at that k");
  }
  return {*only_k};
}

// What the run would have written but the directory lacks; refused unless allow_incomplete.
std::vector<std::string> Check_complete(const std::string& dir, const RunResults& results,
                                        const CliqueFile& cliques, bool clique_file_present,
                                        const std::optional<std::uint32_t>& only_k,
                                        bool allow_incomplete) {
  ResultsLayout found{dir, results.flavour, results.alap_szoveg, std::nullopt, clique_file_present};
  for (const NodeList& clique : cliques.cliques) {
    const auto size = static_cast<std::uint32_t>(clique.size());
    found.largest_clique = std::max(found.largest_clique.value_or(0), size);
  }
  std::vector<std::string> missing = Missing_results(found, only_k);
  if (!missing.empty() && !allow_incomplete) {
    throw Xincomplete_results("ERROR: " + dir +
                              ": the results are incomplete, as an interrupted run leaves them: "
                              "missing " +
                              Missing_summary(missing));
  }
  return missing;
}

// Reads each "k=" directory of ks that holds its communities and their links.
void Read_per_k(const std::string& dir, const std::vector<std::uint32_t>& ks,
                const std::vector<std::string>& missing, const RunContext& run,
                RunResults& results) {
  for (const std::uint32_t k : ks) {
    const std::string label = layout::K_dir_name(k);
    // Without its communities and their links a directory holds nothing to export.
    const auto lacks = [&](const std::string& name) {
      return std::find_if(missing.begin(), missing.end(), [&](const std::string& item) {
               return item == label + "/" + name || item == label + "/" + name + " (empty)";
             }) != missing.end();
    };
    if (lacks(layout::Flag_file(results.flavour, layout::kCommunities)) ||
        lacks(layout::Flag_file(results.flavour, layout::kCommunityLinks))) {
      continue;
    }
    results.per_k.push_back(Read_k_dir(dir + "/" + label, k, run));
  }
}

}  // namespace

RunResults Read_results_dir(const std::string& dir, const std::optional<std::uint32_t>& only_k,
                            bool allow_incomplete) {
  const std::string graph_path = Graph_path(dir);
  // Reading what an interrupted run left, a file cut inside a line is read up to that line.
  CutFiles cut_files;
  CutFiles* const cut = allow_incomplete ? &cut_files : nullptr;
  NodeNumbering numbering;
  RunResults results;
  Read_graph(graph_path, numbering, cut, results);

  CliqueFile cliques;
  const std::string clique_path =
      dir + "/" + layout::Clique_file(results.directed ? layout::kDirected : std::string_view());
  const bool cliques_read = Read_cliques(clique_path, numbering, cut, cliques, results);

  const std::vector<std::uint32_t> ks = Ks_to_read(dir, only_k);
  std::vector<std::string> missing =
      Check_complete(dir, results, cliques, Exists(clique_path), only_k, allow_incomplete);

  RunContext run;
  run.flavour = results.flavour;
  run.alap_szoveg = results.alap_szoveg;
  run.numbering = &numbering;
  if (cliques_read) run.cliques = &cliques;
  run.empty_is_absent = allow_incomplete;
  run.cut_files = cut;
  Read_per_k(dir, ks, missing, run, results);
  results.missing = std::move(missing);
  for (const std::string& path : cut_files) results.cut.push_back(path.substr(dir.size() + 1));
  return results;
}

}  // namespace kcp
