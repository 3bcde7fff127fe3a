// Reading a result file and writing it back with the run's own writer gives the same bytes, for
// every file of real runs of every flavour and for approximate results made by the writers.
#include <gtest/gtest.h>

#include <filesystem>
#include <map>

#include "cliques/clique_output.h"
#include "communities/community_files.h"
#include "communities/k_cliques_file.h"
#include "communities/stats_files.h"
#include "graph/graph_output.h"
#include "results/clique_file_reader.h"
#include "results/community_files_reader.h"
#include "results/graph_file_reader.h"
#include "results/k_cliques_file_reader.h"
#include "results/stats_files_reader.h"
#include "tests/results/results_fixtures.h"

namespace kcp {
namespace {

namespace fs = std::filesystem;
using testing::Read_file;
using testing::Run_varnel;
using testing::TestDir;
using testing::Write_file;

void Rewrite_k_dir(const fs::path& k_dir, const std::string& to, NodeNumbering& numbering,
                   NameMap& names) {
  // suffix -> stem -> file: the four distributions of one suffix, gathered for Kiir_stats_VN.
  std::map<std::string, std::map<std::string, DistributionFile>> stats;
  for (const auto& entry : fs::directory_iterator(k_dir)) {
    const std::string path = entry.path().string();
    const std::string name = entry.path().filename().string();
    if (name == "k-cliques") {
      const KCliquesFile f = Read_k_cliques_file(path, numbering);
      Kiir_k_cliques_VN(to, f.k_cliques, f.k, names, f.alap_szoveg);
    } else if (name.starts_with("graph_of_")) {
      const CommunityGraphFile f = Read_community_graph_file(path);
      Kiir_com_graph_VN(f.graph, f.n_exact_coms, to, f.k, f.flag, f.alap_szoveg);
    } else if (name.find("_distribution") != std::string::npos) {
      const DistributionFile f = Read_distribution_file(path);
      stats[f.suffix][f.stem] = f;
    } else if (name.ends_with("communities_links")) {
      const CommunityLinksFile f = Read_community_links_file(path, numbering);
      Kiir_com_links_VN(f.community_links, to, f.k, names, f.n_exact_coms, f.flag, f.alap_szoveg,
                        Written_link_map(f));
    } else if (name.ends_with("communities_cliques")) {
      const CommunityCliquesFile f = Read_community_cliques_file(path);
      Kiir_coms_cliques_VN(f.community_cliques, to, f.k, f.n_exact_coms, f.n_exact, f.flag,
                           f.alap_szoveg);
    } else if (name.ends_with("communities")) {
      const CommunitiesFile f = Read_communities_file(path, numbering);
      Kiir_coms_VN(f.communities, to, f.k, names, f.n_exact_coms, f.flag, f.alap_szoveg);
    } else {
      ADD_FAILURE() << "no reader for " << path;
    }
  }
  for (auto& [suffix, set] : stats) {
    ASSERT_EQ(set.size(), 4u) << k_dir << " suffix " << suffix;
    const DistributionFile& f = set["size_distribution"];
    Kiir_stats_VN(set["membership_distribution"].distribution, f.distribution,
                  set["overlap_distribution"].distribution, set["degree_distribution"].distribution,
                  to, f.k, f.flag, suffix, f.alap_szoveg);
  }
}

// Reads every result file below `from` and writes it with the run's writer below `to`.
void Rewrite_results(const std::string& from, const std::string& to) {
  NodeNumbering numbering;
  const bool directed = fs::exists(from + "/directed_graph");
  const GraphFile graph =
      Read_graph_file(from + (directed ? "/directed_graph" : "/graph"), numbering);
  numbering.Lock();
  Kiir_graph(graph.link_map, to, graph.directed, graph.alap_szoveg, graph.weighted);
  NameMap names = numbering.Name_map();
  for (const std::string name : {"cliques", "directed_cliques"}) {
    if (!fs::exists(from + "/" + name)) continue;
    const CliqueFile f = Read_clique_file(from + "/" + name, numbering);
    Kiir_cliques_VN(to, f.cliques, names, f.n_exact, f.flag, f.alap_szoveg);
  }
  for (const auto& entry : fs::directory_iterator(from)) {
    if (entry.is_directory()) Rewrite_k_dir(entry.path(), to, numbering, names);
  }
}

// Rewrites and compares file by file, the parameter record aside; returns the number of files.
std::size_t Expect_round_trip(const std::string& results, const std::string& copy) {
  Rewrite_results(results, copy);
  std::size_t files = 0;
  for (const auto& entry : fs::recursive_directory_iterator(results)) {
    const std::string relative = fs::relative(entry.path(), results).string();
    if (!entry.is_regular_file() || relative == "input_params.txt") continue;
    ++files;
    EXPECT_TRUE(Read_file(copy + "/" + relative) == Read_file(entry.path().string()))
        << results << "/" << relative << " differs";
  }
  std::size_t copies = 0;
  for (const auto& entry : fs::recursive_directory_iterator(copy))
    copies += entry.is_regular_file();
  EXPECT_EQ(copies, files) << results;
  return files;
}

TEST(RoundTrip, RunsOfEveryFlavourGiveTheSameBytes) {
  TestDir dir;
  // Names with "#" inside or in front, a tab, reciprocal links, a repeated weighted pair.
  Write_file(dir / "u.links",
             "a b\nb c\na\tc\nc d\nb d\na d\nd a\nd e\ne x#y\nd x#y\ny #x\n#x a\n#z z\n");
  Write_file(dir / "w.links",
             "a b 0.9\nb c 0.8\na c 0.7\nc d 0.6\nb d 1\na d 2\nd e 0.1\ne f 0.3\nd f 0.4\n"
             "f g 3e6\ng e 0.2\ny #x 1.5\na b 0.05\n");
  const std::string les = std::string(VARNEL_TEST_DATA) + "/lesmis.links";
  ASSERT_TRUE(fs::exists(les)) << les;
  // The results directory, then the switches.
  const std::vector<std::vector<std::string>> runs = {
      {"plain", "-i", "u.links"},
      {"directed", "-i", "u.links", "-D"},
      {"fixed_k", "-i", "w.links", "-w", "0.15", "-k", "4"},
      {"intensity", "-i", "w.links", "-I", "0.5"},
      {"upper", "-i", "w.links", "-W", "5", "-D"},
      {"les", "-i", les},
      {"les_directed", "-i", les, "-D"},
      {"les_intensity", "-i", les, "-I", "0.5", "-k", "4"},
      {"les_fixed_k", "-i", les, "-k", "4"},
      // So short a limit leaves slow nodes behind, and with them approximate cliques.
      {"les_time", "-i", les, "-t", "0.000001"},
  };
  for (std::vector<std::string> args : runs) {
    const std::string results =
        args[0] + (args[0].find("intensity") != std::string::npos ? "-w-th0.500000" : "");
    args.insert(args.begin(), "-o");
    ASSERT_EQ(Run_varnel(dir.path(), args), 0);
    ASSERT_TRUE(fs::exists(dir / results)) << results;
    EXPECT_GT(Expect_round_trip(dir / results, dir / ("copy_" + results)), 3u) << results;
  }
  EXPECT_TRUE(fs::exists(dir / "intensity-w-th0.500000/k=3/k-cliques"));
  EXPECT_TRUE(fs::exists(dir / "directed/k=3/directed_communities_cliques"));
}

TEST(RoundTrip, ApproximateResultsMadeByTheWritersGiveTheSameBytes) {
  TestDir dir;
  const std::string results = dir / "made";
  testing::Make_approximate_results(results);
  testing::Make_approximate_results(dir / "made_fixed_k", true);
  EXPECT_EQ(Expect_round_trip(dir / "made_fixed_k", dir / "copy_fixed_k"), 2u + 2 * (4u + 12u));
  EXPECT_EQ(Expect_round_trip(results, dir / "copy"), 2u + 2 * (4u + 12u));
  EXPECT_NE(Read_file(dir / "copy/k=4/communities").find("\n-0: c d e f \n"), std::string::npos);

  // One distribution file alone, through the header text the reader hands back.
  const DistributionFile file =
      Read_distribution_file(dir / "made_fixed_k/k=4/size_distribution_appr");
  Kiir_VN_dist(dir / "single", file.distribution, file.header);
  EXPECT_EQ(Read_file(dir / "single"), Read_file(dir / "made_fixed_k/k=4/size_distribution_appr"));
}

}  // namespace
}  // namespace kcp
