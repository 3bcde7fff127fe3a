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
#include "cliques/overlap_matrix.h"
#include "communities/community_stage.h"
#include "core/types.h"
#include "driver/k_stages.h"
#include "driver/network_stages.h"
#include "graph/graph_output.h"
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

// The switches and links of the command line, as Process_input reads them.
struct RunInput {
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
};

// Reads the switches and the links, claims the results directory and writes the run's record
// and the graph file.
void Read_input(int argc, char** argv, RunInput& in, RunStage& stage) {
  Print_line(" Reading input ...");
  stage = {"reading the switches and the links", true};
  Process_input(argc, argv, in.out_dir, in.links, in.max_time, in.time_flag, in.directed,
                in.intensity_flag, in.intensity, in.fixed_k_flag, in.fixed_k, in.weighted,
                in.com_flag, in.alap_szoveg);
  Extend_alap_szoveg(in.alap_szoveg, in.intensity_flag, in.intensity, in.directed, in.time_flag,
                     in.max_time, in.fixed_k_flag, in.fixed_k);
  stage = {"preparing the results directory", false};
  Check_out_dir(in.out_dir);
  Kiir_params(in.out_dir, in.alap_szoveg);
  stage = {"writing the graph file", true};
  Kiir_graph(in.links, in.out_dir, in.directed, in.alap_szoveg, in.weighted);
  Print_underscores(15);
  Print_line(" Links read OK.");
}

// The console lines around the stages from the links to the cliques.
NetworkHooks Console_hooks(RunStage& stage) {
  NetworkHooks hooks;
  hooks.before = [&stage](const NetworkStage& next) {
    switch (next) {
      case NetworkStage::kConvert:
        Print_underscores(20);
        Print_line(" Converting links...");
        stage = {"converting the links", true};
        break;
      case NetworkStage::kGraph:
        Print_underscores(34);
        Print_line(" Preparing graph from the links...");
        stage = {"preparing the graph from the links", true};
        break;
      case NetworkStage::kSearch:
        stage = {"searching the cliques", true};
        break;
    }
  };
  hooks.after = [](const NetworkStage& done, const Network& network) {
    if (done == NetworkStage::kConvert) {
      Print_line(" Links converted OK, total number of " +
                 std::to_string(network.index_links.size()) + " will be");
      Print_line(" taken into account in the community finding.");
    } else if (done == NetworkStage::kGraph) {
      Print_line(" Graph created from the links OK.");
    }
  };
  return hooks;
}

// The communities of every k of the run, largest first, or of the one k asked for.
void Run_communities(const RunInput& in, Network& network, const unsigned& threads,
                     RunStage& stage) {
  const std::uint32_t largest = Max_clique_size_in_cl_vec(network.cliques);
  const OutputTables tables(network.names, network.index_links);
  std::vector<std::uint32_t> ks;
  if (in.fixed_k_flag) {
    ks.push_back(in.fixed_k);
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
        Find_coms(ks[i], network.cliques, network.overlaps, network.n_exact, in.com_flag,
                  in.alap_szoveg, in.out_dir, network.names, network.vertex_count,
                  in.intensity_flag, in.intensity, network.index_links, largest, tables);
      });
}

void Run_stages(int argc, char** argv, const unsigned& threads, RunStage& stage) {
  RunInput in;
  Read_input(argc, argv, in, stage);

  Network network;
  NetworkSettings settings;
  settings.directed = in.directed;
  settings.time_limited = in.time_flag;
  settings.max_time = in.max_time;
  settings.min_shared = Min_shared_for_run(in.fixed_k_flag, in.fixed_k);
  settings.threads = threads;
  Run_network_stages(in.links, settings, Console_hooks(stage), network);
  // Nothing after the search reads the graph: its memory goes to the community stages.
  network.vertices.clear();
  network.directed_vertices.clear();

  Print_underscores(27);
  Print_line(" Writing cliques to disk...");
  stage = {"writing the cliques", true};
  Kiir_cliques_VN(in.out_dir, network.cliques, network.names, network.n_exact, in.com_flag,
                  in.alap_szoveg);
  Print_line(" done.");

  Run_communities(in, network, threads, stage);
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
