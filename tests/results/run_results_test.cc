#include "results/run_results.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <set>

#include "tests/results/results_fixtures.h"
#include "tests/support/test_dir.h"

namespace kcp {
namespace {

namespace fs = std::filesystem;
using testing::Error_of;
using testing::Read_file;
using testing::Run_varnel;
using testing::Test_dir;
using testing::Write_file;

using Names = std::vector<std::string>;
using Pairs = std::vector<std::pair<std::string, std::string>>;

// A four-clique a b c d, a triangle d e f sharing d with it, and y hanging on a.
const std::string kLinks = "a b\nb c\na c\nc d\nb d\na d\nd e\ne f\nd f\ny a\n";
const std::string kWeightedLinks =
    "a b 0.9\nb c 0.8\na c 0.7\nc d 0.6\nb d 1\na d 2\nd e 0.1\ne f 0.3\nd f 0.4\n";

const CommunityRecord* Community_with(const KResults& k, const Names& nodes) {
  for (const CommunityRecord& c : k.communities) {
    if (c.nodes == nodes) return &c;
  }
  return nullptr;
}

TEST(RunResults, ReadsEveryFileOfAPlainRun) {
  Test_dir dir;
  Write_file(dir / "net.links", kLinks);
  ASSERT_EQ(Run_varnel(dir.path(), {"-i", "net.links", "-o", "out"}), 0);
  const RunResults run = Read_results_dir(dir / "out", std::nullopt);
  EXPECT_EQ(run.flavour, "");
  EXPECT_FALSE(run.directed);
  EXPECT_FALSE(run.weighted);
  EXPECT_TRUE(run.alap_szoveg.starts_with(" from " + (dir / "net.links") + "\n"));
  // The run numbers the nodes by first appearance in the name-sorted links.
  EXPECT_EQ(run.nodes, (Names{"a", "b", "c", "d", "e", "f", "y"}));
  ASSERT_EQ(run.links.size(), 10u);
  EXPECT_EQ(run.links.back().source, "y");
  EXPECT_EQ(run.links.back().target, "a");
  ASSERT_EQ(run.cliques.size(), 2u);
  std::set<Names> cliques;
  for (const CliqueRecord& c : run.cliques) {
    EXPECT_FALSE(c.approximate);
    cliques.insert(c.nodes);
  }
  EXPECT_EQ(cliques, (std::set<Names>{{"a", "b", "c", "d"}, {"d", "e", "f"}}));

  ASSERT_EQ(run.per_k.size(), 2u);
  const KResults& three = run.per_k[0];
  EXPECT_EQ(three.k, 3u);
  ASSERT_EQ(three.communities.size(), 2u);
  const CommunityRecord* square = Community_with(three, {"a", "b", "c", "d"});
  const CommunityRecord* triangle = Community_with(three, {"d", "e", "f"});
  ASSERT_TRUE(square != nullptr && triangle != nullptr);
  EXPECT_EQ(square->links,
            (Pairs{{"a", "b"}, {"a", "c"}, {"a", "d"}, {"b", "c"}, {"b", "d"}, {"c", "d"}}));
  EXPECT_EQ(triangle->links, (Pairs{{"d", "e"}, {"d", "f"}, {"e", "f"}}));
  ASSERT_EQ(square->cliques.size(), 1u);
  EXPECT_EQ(run.cliques.at(square->cliques[0]).nodes, square->nodes);
  ASSERT_EQ(three.community_graph.size(), 1u);
  EXPECT_EQ(three.community_graph[0].first, 0);
  EXPECT_EQ(three.community_graph[0].second, 1);
  EXPECT_EQ(three.community_graph[0].shared, 1u);
  EXPECT_EQ(three.distributions, (std::map<std::string, DistributionTable>{
                                     {"size_distribution", {{3, 1}, {4, 1}}},
                                     {"overlap_distribution", {{1, 1}}},
                                     {"degree_distribution", {{1, 2}}},
                                     {"membership_distribution", {{0, 1}, {1, 5}, {2, 1}}}}));

  const KResults& four = run.per_k[1];
  EXPECT_EQ(four.k, 4u);
  ASSERT_EQ(four.communities.size(), 1u);
  EXPECT_EQ(four.communities[0].number, 0);
  EXPECT_FALSE(four.communities[0].approximate);
  EXPECT_TRUE(four.community_graph.empty());
  EXPECT_EQ(four.distributions.at("membership_distribution"), (DistributionTable{{0, 3}, {1, 4}}));
  EXPECT_TRUE(four.distributions.at("overlap_distribution").empty());

  const RunResults only_four = Read_results_dir(dir / "out", 4);
  ASSERT_EQ(only_four.per_k.size(), 1u);
  EXPECT_EQ(only_four.per_k[0].k, 4u);
}

TEST(RunResults, TellsDirectedAndIntensityRuns) {
  Test_dir dir;
  Write_file(dir / "net.links", kLinks);
  Write_file(dir / "w.links", kWeightedLinks);
  ASSERT_EQ(Run_varnel(dir.path(), {"-i", "net.links", "-o", "directed", "-D"}), 0);
  ASSERT_EQ(Run_varnel(dir.path(), {"-i", "w.links", "-o", "intensity", "-I", "0.5"}), 0);

  const RunResults directed = Read_results_dir(dir / "directed", std::nullopt);
  EXPECT_EQ(directed.flavour, "directed");
  EXPECT_TRUE(directed.directed);

  const RunResults intensity = Read_results_dir(dir / "intensity-w-th0.500000", std::nullopt);
  EXPECT_EQ(intensity.flavour, "intensity");
  EXPECT_TRUE(intensity.weighted);
  EXPECT_EQ(intensity.links.front().weight_text, "0.9");
  ASSERT_EQ(intensity.per_k.size(), 2u);
  // Every triangle of a b c d passes 0.5; d e f (geometric mean about 0.23) does not.
  EXPECT_EQ(
      intensity.per_k[0].k_cliques,
      (std::vector<Names>{{"a", "b", "c"}, {"a", "b", "d"}, {"a", "c", "d"}, {"b", "c", "d"}}));
  ASSERT_EQ(intensity.per_k[0].communities.size(), 1u);
  EXPECT_EQ(intensity.per_k[0].communities[0].nodes, (Names{"a", "b", "c", "d"}));
  EXPECT_TRUE(intensity.per_k[0].communities[0].cliques.empty());
}

TEST(RunResults, ApproximateCliquesAndCommunitiesKeepTheirSign) {
  Test_dir dir;
  testing::Make_approximate_results(dir / "made");
  const RunResults run = Read_results_dir(dir / "made", std::nullopt);
  ASSERT_EQ(run.cliques.size(), 4u);
  EXPECT_EQ(run.cliques[1].number, 1);
  EXPECT_FALSE(run.cliques[1].approximate);
  EXPECT_EQ(run.cliques[2].number, -2);
  EXPECT_TRUE(run.cliques[2].approximate);
  ASSERT_EQ(run.per_k.size(), 2u);
  const KResults& three = run.per_k[0];
  ASSERT_EQ(three.communities.size(), 4u);
  EXPECT_EQ(three.communities[3].number, -3);
  EXPECT_TRUE(three.communities[3].approximate);
  EXPECT_EQ(three.communities[3].cliques, (std::vector<std::uint32_t>{0, 3}));
  // Links come in the direction the file writes them: e d was read that way.
  EXPECT_EQ(three.communities[2].links, (Pairs{{"e", "d"}, {"e", "f"}}));
  ASSERT_EQ(three.community_graph.size(), 4u);
  EXPECT_EQ(three.community_graph[1].first, 1);
  EXPECT_FALSE(three.community_graph[1].first_approximate);
  EXPECT_EQ(three.community_graph[1].second, -2);
  EXPECT_TRUE(three.community_graph[1].second_approximate);
  EXPECT_EQ(three.distributions.size(), 12u);
  EXPECT_EQ(three.distributions.at("size_distribution_appr"), (DistributionTable{{2, 1}, {4, 3}}));

  // At k=4 no community is exact: the first is "-0", number 0 and approximate.
  const KResults& four = run.per_k[1];
  ASSERT_EQ(four.communities.size(), 2u);
  EXPECT_EQ(four.communities[0].number, 0);
  EXPECT_TRUE(four.communities[0].approximate);
  EXPECT_EQ(four.communities[0].nodes, (Names{"c", "d", "e", "f"}));
  ASSERT_EQ(four.community_graph.size(), 1u);
  EXPECT_TRUE(four.community_graph[0].first_approximate);
  EXPECT_EQ(four.community_graph[0].second, -1);

  // Signs that contradict the other files.
  const std::string cliques = dir / "made/k=3/communities_cliques";
  Write_file(cliques, Read_file(cliques).substr(0, Read_file(cliques).find("-2: ")) +
                          "-2: -1 -2 \n-3: 0 -3 \n");
  EXPECT_EQ(Error_of([&] { Read_results_dir(dir / "made", 3); }),
            "ERROR: " + cliques +
                ": community -2 lists clique 1 as approximate, but the clique "
                "file says otherwise");
  const std::string graph = dir / "made/k=4/graph_of_communities";
  Write_file(graph, Read_file(graph).substr(0, Read_file(graph).find("-0 -1 2")) + "0 -1 2\n");
  EXPECT_EQ(Error_of([&] { Read_results_dir(dir / "made", 4); }),
            "ERROR: " + graph +
                ": community 0 is not in the communities file, which lists 2 "
                "communities (2 of them approximate)");
}

TEST(RunResults, DirectoriesThatAreNotResultsAreRefused) {
  Test_dir dir;
  fs::create_directory(dir / "empty");
  Write_file(dir / "empty/notes.txt", "# The links\n");
  Write_file(dir / "file", "x");
  EXPECT_EQ(Error_of([&] { Read_results_dir(dir / "none", std::nullopt); }),
            "ERROR: " + (dir / "none") + ": no such results directory");
  EXPECT_EQ(Error_of([&] { Read_results_dir(dir / "file", std::nullopt); }),
            "ERROR: " + (dir / "file") + ": this is not a directory");
  EXPECT_EQ(Error_of([&] { Read_results_dir(dir / "empty", std::nullopt); }),
            "ERROR: " + (dir / "empty") +
                ": not a results directory of Varnel: it holds neither "
                "a \"graph\" nor a \"directed_graph\" file");
  Write_file(dir / "net.links", kLinks);
  ASSERT_EQ(Run_varnel(dir.path(), {"-i", "net.links", "-o", "out"}), 0);
  EXPECT_EQ(Error_of([&] { Read_results_dir(dir / "out", 7); }),
            "ERROR: " + (dir / "out") +
                ": there is no directory \"k=7\": the run wrote no "
                "communities at that k");
}

TEST(RunResults, FilesThatDoNotFitTheRunAreReported) {
  Test_dir dir;
  Write_file(dir / "net.links", kLinks);
  ASSERT_EQ(Run_varnel(dir.path(), {"-i", "net.links", "-o", "out"}), 0);
  const auto append = [](const std::string& text) {
    return [text](const std::string& path) { Write_file(path, Read_file(path) + text); };
  };
  const auto replace = [](const std::string& from, const std::string& to) {
    return [from, to](const std::string& path) {
      std::string text = Read_file(path);
      const std::size_t at = text.find(from);
      ASSERT_NE(at, std::string::npos) << path;
      Write_file(path, text.replace(at, from.size(), to));
    };
  };
  struct Case {
    std::string file;  // below the results directory
    std::function<void(const std::string&)> change;
    std::string message;  // after "ERROR: <path of the file>"
  };
  const std::vector<Case> cases = {
      {"k=4/communities", replace("0: a b c d ", "0: a b 17 d "),
       ", line 8: the node \"17\" does not occur in the graph file"},
      {"k=4/size_distribution",
       [&](const std::string& path) {
         Write_file(path, Read_file(dir / "out/k=3/size_distribution"));
       },
       ", line 1: the header names k=3, but the file lies in the directory k=4"},
      {"k=3/graph_of_communities", append("1 5 1\n"),
       ": community 5 is not in the communities file, which lists 2 communities (0 of them "
       "approximate)"},
      {"k=4/communities_links", append("a e\n"),
       ": the link \"a e\" of community 0 joins a node that the communities file does not list "
       "in it"},
      {"k=4/degree_distribution", replace("net.links", "other.links"),
       ", line 2: the run description differs from that of the graph file: this file belongs to "
       "another run"},
      {"k=4/communities_cliques", append("1: 7 \n"),
       ": it lists 2 communities (0 of them approximate), but the communities file lists 1 "
       "communities (0 of them approximate)"},
      {"k=4/overlap_distribution",
       [](const std::string& path) {
         Write_file(path, std::string("\x7f"
                                      "ELF\x02\x01\0\0",
                                      8));
       },
       ", line 1: the last line has no line end: the file seems truncated"},
  };
  int copies = 0;
  for (const Case& c : cases) {
    SCOPED_TRACE(c.file + c.message);
    // Each change applies to a fresh copy of the run.
    const std::string copy = dir / ("copy" + std::to_string(++copies));
    fs::copy(dir / "out", copy, fs::copy_options::recursive);
    c.change(copy + "/" + c.file);
    EXPECT_EQ(Error_of([&] { Read_results_dir(copy, std::nullopt); }),
              "ERROR: " + copy + "/" + c.file + c.message);
  }
}

// What an interrupted run leaves: files missing or cut to nothing, k directories never made.
TEST(RunResults, IncompleteResultsAreRefusedUnlessAllowed) {
  Test_dir dir;
  Write_file(dir / "net.links", kLinks);
  ASSERT_EQ(Run_varnel(dir.path(), {"-i", "net.links", "-o", "out"}), 0);
  testing::Make_approximate_results(dir / "made");
  const std::string intro =
      ": the results are incomplete, as an interrupted run leaves them: missing ";
  struct Case {
    std::string run;
    std::function<void(const std::string&)> change;
    std::string missing;
  };
  const std::vector<Case> cases = {
      {"out", [](const std::string& run) { fs::remove_all(run + "/k=3"); }, "k=3 (no directory)"},
      {"out",
       [](const std::string& run) {
         Write_file(run + "/k=3/communities_links", "");
         fs::remove(run + "/k=3/size_distribution");
         fs::remove(run + "/k=3/degree_distribution");
       },
       "k=3/communities_links (empty), k=3/size_distribution, k=3/degree_distribution"},
      {"out",
       [](const std::string& run) {
         fs::remove(run + "/k=4/communities");
         fs::create_directory(run + "/k=4/communities");
       },
       "k=4/communities"},
      {"out", [](const std::string& run) { fs::remove(run + "/cliques"); }, "cliques"},
      {"out", [](const std::string& run) { Write_file(run + "/cliques", ""); }, "cliques (empty)"},
      {"made", [](const std::string& run) { fs::remove(run + "/k=3/overlap_distribution_appr"); },
       "k=3/overlap_distribution_appr"},
      {"made",
       [](const std::string& run) {
         for (const char* name : {"communities_cliques", "graph_of_communities"}) {
           fs::remove(run + "/k=4/" + name);
         }
         for (const char* stem : {"membership", "size", "overlap", "degree"}) {
           for (const char* suffix : {"_merged", "_exact", "_appr"}) {
             fs::remove(run + "/k=4/" + stem + "_distribution" + suffix);
           }
         }
       },
       "k=4/communities_cliques, k=4/graph_of_communities, k=4/membership_distribution, "
       "k=4/size_distribution, k=4/overlap_distribution, k=4/degree_distribution"},
  };
  int copies = 0;
  for (const Case& c : cases) {
    SCOPED_TRACE(c.missing);
    const std::string copy = dir / ("copy" + std::to_string(++copies));
    fs::copy(dir / c.run, copy, fs::copy_options::recursive);
    c.change(copy);
    EXPECT_EQ(Error_of([&] { Read_results_dir(copy, std::nullopt); }),
              "ERROR: " + copy + intro + c.missing);
    const RunResults allowed = Read_results_dir(copy, std::nullopt, true);
    EXPECT_FALSE(allowed.missing.empty());
  }
  // Allowed, the k directories that can be read are, and the others are left out.
  const std::string cut = dir / "cut";
  fs::copy(dir / "out", cut, fs::copy_options::recursive);
  Write_file(cut + "/k=3/communities_links", "");
  Write_file(cut + "/k=4/size_distribution", "");
  const RunResults what_is_there = Read_results_dir(cut, std::nullopt, true);
  ASSERT_EQ(what_is_there.per_k.size(), 1u);
  EXPECT_EQ(what_is_there.per_k[0].k, 4u);
  EXPECT_EQ(what_is_there.per_k[0].distributions.size(), 3u);
  EXPECT_EQ(what_is_there.missing,
            (Names{"k=4/size_distribution (empty)", "k=3/communities_links (empty)"}));
  // A run at a fixed k is complete with that k alone.
  Write_file(dir / "w.links", kLinks);
  ASSERT_EQ(Run_varnel(dir.path(), {"-i", "w.links", "-o", "fixed", "-k", "4"}), 0);
  EXPECT_EQ(Read_results_dir(dir / "fixed", std::nullopt).per_k.size(), 1u);
  fs::remove(dir / "fixed/k=4/communities_cliques");
  EXPECT_EQ(Error_of([&] { Read_results_dir(dir / "fixed", std::nullopt); }),
            "ERROR: " + (dir / "fixed") + intro + "k=4/communities_cliques");
}

}  // namespace
}  // namespace kcp
