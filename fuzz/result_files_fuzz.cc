// Fuzz target: the result-file readers of varnel-export. The first byte chooses a reader of one
// file, or (7) a whole results directory whose graph file, clique file and k=3 files are the
// input's pieces between "\n@@\n". Each reader either reads the file or stops with Xerror_msg
// naming it.
#include <filesystem>

#include "core/xerror_msg.h"
#include "fuzz/fuzz_files.h"
#include "results/clique_file_reader.h"
#include "results/community_files_reader.h"
#include "results/graph_file_reader.h"
#include "results/k_cliques_file_reader.h"
#include "results/run_results.h"
#include "results/stats_files_reader.h"

namespace {

using namespace kcp;

// The pieces of the input split at "\n@@\n", at most `limit` of them.
std::vector<std::string_view> Pieces(std::string_view bytes, const std::size_t& limit) {
  std::vector<std::string_view> pieces;
  static const std::string_view kSeparator = "\n@@\n";
  while (pieces.size() + 1 < limit) {
    const std::size_t at = bytes.find(kSeparator);
    if (at == std::string_view::npos) break;
    pieces.push_back(bytes.substr(0, at));
    bytes.remove_prefix(at + kSeparator.size());
  }
  pieces.push_back(bytes);
  return pieces;
}

void Read_directory(std::string_view bytes, const bool& allow_incomplete) {
  namespace fs = std::filesystem;
  const std::string dir = fuzz::Scratch_dir() + "/results";
  fs::remove_all(dir);
  fs::create_directories(dir + "/k=3");
  static const char* const kNames[] = {"graph",
                                       "cliques",
                                       "k=3/communities",
                                       "k=3/communities_links",
                                       "k=3/communities_cliques",
                                       "k=3/graph_of_communities",
                                       "k=3/size_distribution",
                                       "k=3/degree_distribution"};
  const std::vector<std::string_view> pieces = Pieces(bytes, std::size(kNames));
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    fuzz::Write_scratch(std::string("results/") + kNames[i], pieces[i]);
  }
  Read_results_dir(dir, std::nullopt, allow_incomplete);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 1) return 0;
  const std::uint8_t mode = data[0] % 9;
  const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
  try {
    NodeNumbering numbering;
    if (mode >= 7) {
      Read_directory(bytes, mode == 8);
      return 0;
    }
    const std::string path = fuzz::Write_scratch("file", bytes);
    switch (mode) {
      case 0:
        Read_graph_file(path, numbering);
        break;
      case 1:
        Read_clique_file(path, numbering);
        break;
      case 2:
        Read_communities_file(path, numbering);
        break;
      case 3:
        Read_community_links_file(path, numbering);
        break;
      case 4:
        Read_community_cliques_file(path);
        break;
      case 5:
        Read_k_cliques_file(path, numbering);
        break;
      default:
        Read_community_graph_file(path);
        Read_distribution_file(path);
        break;
    }
  } catch (const Xerror_msg&) {
  }
  return 0;
}
