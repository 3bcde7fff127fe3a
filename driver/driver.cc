#include "driver/driver.h"

#include <csignal>
#include <exception>
#include <iostream>
#include <limits>
#include <string>
#include <vector>

#include "cli/base_text.h"
#include "cli/params_record.h"
#include "cli/run_params.h"
#include "cli/usage.h"
#include "cliques/clique_output.h"
#include "cliques/clique_search_stage.h"
#include "cliques/overlap_matrix.h"
#include "communities/community_stage.h"
#include "core/types.h"
#include "driver/k_stages.h"
#include "graph/graph_output.h"
#include "graph/node_index.h"
#include "graph/vertex_map.h"
#include "text/console.h"

namespace kcp {

std::uint32_t Min_shared_for_run(bool fixed_k_flag, std::uint32_t fixed_k) {
  if (!fixed_k_flag) return 2;
  // At k = 0 the threshold k - 1 wraps, so no pair is ever read; only the diagonal is needed.
  if (fixed_k == 0) return std::numeric_limits<std::uint32_t>::max();
  return fixed_k <= 2 ? 1 : fixed_k - 1;
}

namespace {

void Run_stages(int argc, char** argv, const unsigned& threads, RunStage& stage) {
  std::string out_dir;
  LinkMap links;
  bool time_flag = false;
  bool directed = false;
  bool intensity_flag = false;
  bool fixed_k_flag = false;
  bool weighted = false;
  double max_time = 0.0;
  double intensity = 0.0;
  std::uint32_t fixed_k = 0;
  std::string com_flag;
  std::string alap_szoveg;
  IndexLinkMap index_links;
  NameMap names;
  VtxMap vertices;
  VtxdMap directed_vertices;
  std::uint32_t vertex_count = 0;
  CliqueList cliques;
  OverlapMatrix overlaps;
  std::uint32_t n_exact = 0;

  Print_line(" Reading input ...");
  stage = {"reading the switches and the links", true};
  Process_input(argc, argv, out_dir, links, max_time, time_flag, directed, intensity_flag,
                intensity, fixed_k_flag, fixed_k, weighted, com_flag, alap_szoveg);
  Extend_alap_szoveg(alap_szoveg, intensity_flag, intensity, directed, time_flag, max_time,
                     fixed_k_flag, fixed_k);
  stage = {"preparing the results directory", false};
  Check_out_dir(out_dir);
  Kiir_params(out_dir, alap_szoveg);
  stage = {"writing the graph file", true};
  Kiir_graph(links, out_dir, directed, alap_szoveg, weighted);
  Print_underscores(15);
  Print_line(" Links read OK.");

  Print_underscores(20);
  Print_line(" Converting links...");
  stage = {"converting the links", true};
  Convert_s_links(index_links, names, links, directed);
  links.clear();
  Print_line(" Links converted OK, total number of " + std::to_string(index_links.size()) +
             " will be");
  Print_line(" taken into account in the community finding.");

  Print_underscores(34);
  Print_line(" Preparing graph from the links...");
  stage = {"preparing the graph from the links", true};
  if (directed) {
    Dir_vtx_map_from_link_map(directed_vertices, index_links);
    vertex_count = static_cast<std::uint32_t>(directed_vertices.size());
  } else {
    Vtx_map_from_link_map(vertices, index_links);
    vertex_count = static_cast<std::uint32_t>(vertices.size());
  }
  Print_line(" Graph created from the links OK.");

  overlaps = Run_overlap_matrix(Min_shared_for_run(fixed_k_flag, fixed_k));
  n_exact = 0;
  stage = {"searching the cliques", true};
  Find_cliques(time_flag, directed, cliques, overlaps, directed_vertices, vertices, n_exact,
               max_time, SearchClock(), nullptr, threads);
  // Nothing after the search reads the graph: its memory goes to the community stages.
  vertices.clear();
  directed_vertices.clear();
  Print_underscores(27);
  Print_line(" Writing cliques to disk...");
  stage = {"writing the cliques", true};
  Kiir_cliques_VN(out_dir, cliques, names, n_exact, com_flag, alap_szoveg);
  Print_line(" done.");

  const std::uint32_t largest = Max_clique_size_in_cl_vec(cliques);
  const OutputTables tables(names, index_links);
  std::vector<std::uint32_t> ks;
  if (fixed_k_flag) {
    ks.push_back(fixed_k);
  } else {
    for (std::uint32_t k = largest; k > 2; --k) ks.push_back(k);
  }
  Run_k_stages(
      ks.size(), threads,
      [&](const std::size_t& i) {
        // A k above every clique finds nothing: memory running out there is not the network's
        // doing.
        stage = {"extracting the communities at k=" + std::to_string(ks[i]), ks[i] <= largest};
      },
      [&](const std::size_t& i) {
        Find_coms(ks[i], cliques, overlaps, n_exact, com_flag, alap_szoveg, out_dir, names,
                  vertex_count, intensity_flag, intensity, index_links, largest, tables);
      });
  Print_banner();
}

}  // namespace

std::string Out_of_memory_message(const RunStage& stage) {
  std::string message = "ERROR: out of memory while " + stage.doing;
  return stage.network ? message + "; the network is too large for this machine's memory."
                       : message + ".";
}

int Run(int argc, char** argv, const unsigned& threads) {
  // Past a file-size limit the write fails with EFBIG and is reported like a full disk; left to
  // its signal, the limit would end the run without a word.
  std::signal(SIGXFSZ, SIG_IGN);
  RunStage stage;
  try {
    Print_banner();
    Run_stages(argc, argv, threads, stage);
  } catch (const std::bad_alloc&) {
    // Every structure of the run is gone by now: there is room again for the message.
    Print_line(Out_of_memory_message(stage));
  } catch (const std::exception& error) {
    Print_line(error.what());
  }
  return 0;
}

}  // namespace kcp
