#include "results/run_results.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "tests/results/results_fixtures.h"

// Real runs are read back through their exports in tests/export/networkx_check_test.cc.
namespace kcp {
namespace {

namespace fs = std::filesystem;
using testing::Error_of;
using testing::Read_file;
using testing::TestDir;
using testing::Write_file;

// A four-clique a b c d, a triangle d e f sharing d with it, and y hanging on a.
const std::string kLinks = "a b\nb c\na c\nc d\nb d\na d\nd e\ne f\nd f\ny a\n";

// A k directory as read: "number: nodes / links / clique positions" per community, then the
// community graph; "-" in front of an approximate number, so that "-0" shows.
std::string Text_of(const KResults& k) {
  const auto label = [](std::int64_t number, bool approximate) {
    return (approximate ? "-" : "") + std::to_string(number < 0 ? -number : number);
  };
  std::string text;
  for (const CommunityRecord& c : k.communities) {
    text += label(c.number, c.approximate) + ":";
    for (const std::string& node : c.nodes) text += " " + node;
    text += " /";
    for (const auto& [source, target] : c.links) text += " " + source + "-" + target;
    text += " /";
    for (const std::uint32_t clique : c.cliques) text += " " + std::to_string(clique);
    text += "\n";
  }
  for (const CommunityEdge& e : k.community_graph) {
    text += label(e.first, e.first_approximate) + " " + label(e.second, e.second_approximate) +
            " " + std::to_string(e.shared) + "\n";
  }
  return text;
}

TEST(RunResults, ApproximateCliquesAndCommunitiesKeepTheirSign) {
  TestDir dir;
  testing::Make_approximate_results(dir / "made");
  const RunResults run = Read_results_dir(dir / "made", std::nullopt);
  ASSERT_EQ(run.cliques.size(), 4u);
  EXPECT_FALSE(run.cliques[1].approximate);
  EXPECT_TRUE(run.cliques[2].approximate);
  EXPECT_EQ(run.cliques[2].number, -2);
  ASSERT_EQ(run.per_k.size(), 2u);
  // Links come in the direction the file writes them, that of the run's link when it has one
  // and the other way when it has none: b a, c b, e d and h g were read that way.
  EXPECT_EQ(Text_of(run.per_k[0]),
            "0: a b c d / b-a c-b / 0 1\n1: f g / f-g / 1\n-2: c d e f / e-d e-f / 1 2\n"
            "-3: e f g h / e-f f-g / 0 3\n0 -2 2\n1 -2 1\n1 -3 2\n-2 -3 2\n");
  EXPECT_EQ(run.per_k[0].communities[3].number, -3);
  EXPECT_EQ(run.per_k[0].distributions.size(), 12u);
  EXPECT_EQ(run.per_k[0].distributions.at("size_distribution_appr"),
            (DistributionTable{{2, 1}, {4, 3}}));
  // At k=4 no community is exact: the first is "-0".
  EXPECT_EQ(Text_of(run.per_k[1]), "-0: c d e f / c-d / 2\n-1: e f g h / h-g / 3\n-0 -1 2\n");
}

// Each case changes a fresh copy of a finished run: a file that does not fit the others, or
// what an interrupted run leaves (files missing or cut to nothing, k directories never made).
TEST(RunResults, FilesThatDoNotFitTheRunAndIncompleteResultsAreReported) {
  TestDir dir;
  Write_file(dir / "net.links", kLinks);
  ASSERT_EQ(testing::Run_varnel(dir.path(), {"-i", "net.links", "-o", "out"}), 0);
  ASSERT_EQ(testing::Run_varnel(dir.path(), {"-i", "net.links", "-o", "fixed", "-k", "4"}), 0);
  testing::Make_approximate_results(dir / "made");
  const std::string missing =
      ": the results are incomplete, as an interrupted run leaves them: missing ";
  struct Case {
    std::string run;
    std::string file;      // below the results directory; "-" in front: removed
    std::string from, to;  // the first occurrence replaced; "" appends, "*" replaces all
    std::string message;   // after "ERROR: <path of the results directory>/"
  };
  const std::vector<Case> cases = {
      {"out", "k=4/communities", "0: a b c d ", "0: a b 17 d ",
       "k=4/communities, line 8: the node \"17\" does not occur in the graph file"},
      {"out", "k=4/size_distribution", "k=4", "k=3",
       "k=4/size_distribution, line 1: the header names k=3, but the file lies in the directory "
       "k=4"},
      {"out", "k=3/graph_of_communities", "", "1 5 1\n",
       "k=3/graph_of_communities: community 5 is not in the communities file, which lists 2 "
       "communities (0 of them approximate)"},
      {"out", "k=4/communities_links", "", "a e\n",
       "k=4/communities_links: the link \"a e\" of community 0 joins a node that the communities "
       "file does not list in it"},
      {"out", "k=4/degree_distribution", "net.links", "other.links",
       "k=4/degree_distribution, line 2: the run description differs from that of the graph "
       "file: this file belongs to another run"},
      {"out", "k=4/communities_cliques", "", "1: 7 \n",
       "k=4/communities_cliques: it lists 2 communities (0 of them approximate), but the "
       "communities file lists 1 communities (0 of them approximate)"},
      {"out", "k=4/overlap_distribution", "*", "# The",
       "k=4/overlap_distribution, line 1: the last line has no line end: the file seems "
       "truncated"},
      {"out", "-", "", "", ": no such results directory"},
      {"out", "-graph", "", "",
       ": not a results directory of Varnel: it holds neither a \"graph\" nor a "
       "\"directed_graph\" file"},
      {"out", "-k=3", "", "", missing + "k=3 (no directory)"},
      {"out", "k=3/communities_links", "*", "", missing + "k=3/communities_links (empty)"},
      {"out", "-cliques", "", "", missing + "cliques"},
      {"out", "-k=3/size_distribution", "", "", missing + "k=3/size_distribution"},
      {"made", "-k=3/overlap_distribution_appr", "", "", missing + "k=3/overlap_distribution_appr"},
      // Signs that contradict the other files.
      {"made", "k=3/communities_cliques", "-2: 1 ", "-2: -1 ",
       "k=3/communities_cliques: community -2 lists clique 1 as approximate, but the clique file "
       "says otherwise"},
      {"made", "k=4/graph_of_communities", "-0 -1 2", "0 -1 2",
       "k=4/graph_of_communities: community 0 is not in the communities file, which lists 2 "
       "communities (2 of them approximate)"},
      // A run at a fixed k is complete with that k alone.
      {"fixed", "-k=4/communities_cliques", "", "", missing + "k=4/communities_cliques"},
  };
  int copies = 0;
  for (const Case& c : cases) {
    SCOPED_TRACE(c.message);
    const std::string copy = dir / ("copy" + std::to_string(++copies));
    fs::copy(dir / c.run, copy, fs::copy_options::recursive);
    EXPECT_NO_THROW(Read_results_dir(copy, std::nullopt));
    if (c.file[0] == '-') {
      fs::remove_all(copy + "/" + c.file.substr(1));
    } else {
      std::string text = Read_file(copy + "/" + c.file);
      const std::size_t at = c.from.empty() ? text.size() : c.from == "*" ? 0 : text.find(c.from);
      ASSERT_NE(at, std::string::npos);
      text.replace(at, c.from == "*" ? text.size() : c.from.size(), c.to);
      Write_file(copy + "/" + c.file, text);
    }
    const std::string expected =
        "ERROR: " + copy + (c.message.starts_with(":") ? "" : "/") + c.message;
    EXPECT_EQ(Error_of([&] { Read_results_dir(copy, std::nullopt); }), expected);
  }
}

// What an interrupted run leaves of the file it was writing: its last line cut short, and none
// of the files after it. Allowed to read that, the reader leaves the cut line out and names the
// file; a file that then lists fewer communities holds the first ones.
TEST(RunResults, AFileCutInsideALineIsReadWithoutItWhenThatIsAllowed) {
  TestDir dir;
  Write_file(dir / "net.links", kLinks);
  ASSERT_EQ(testing::Run_varnel(dir.path(), {"-i", "net.links", "-o", "out"}), 0);
  const std::vector<std::string> after_links = {
      "k=3/graph_of_communities", "k=3/membership_distribution", "k=3/size_distribution",
      "k=3/overlap_distribution", "k=3/degree_distribution"};
  struct Case {
    std::string file;
    std::size_t cut;  // bytes cut off its end
    std::vector<std::string> removed;
    std::function<std::string(const RunResults&)> show;
    std::string read;
  };
  const auto k3 = [](const RunResults& run) { return Text_of(run.per_k.at(0)); };
  const std::vector<Case> cases = {
      // "1: a b c d \n" cut to "1: a b"
      {"cliques",
       6,
       {"k=3", "k=4"},
       [](const RunResults& run) { return std::to_string(run.cliques.size()) + run.missing.at(0); },
       "1k=3 (no directory)"},
      // "c d\n" cut to "c"
      {"k=3/communities_links", 3, after_links, k3,
       "0: d e f / d-e d-f e-f / 0\n1: a b c d / a-b a-c a-d b-c b-d / 1\n"},
      // "1:\na b\n..." cut to "1"
      {"k=3/communities_links", 26, after_links, k3,
       "0: d e f / d-e d-f e-f / 0\n1: a b c d / / 1\n"},
      // "3 1\n4 1\n\n" cut to "3 1\n4 1"
      {"k=3/size_distribution",
       2,
       {},
       [](const RunResults& run) {
         std::string text;
         for (const auto& [value, n] : run.per_k.at(0).distributions.at("size_distribution")) {
           text += std::to_string(value) + ":" + std::to_string(n) + " ";
         }
         return text;
       },
       "3:1 "},
  };
  int copies = 0;
  for (const Case& c : cases) {
    SCOPED_TRACE(c.file + " " + std::to_string(c.cut));
    const std::string copy = dir / ("copy" + std::to_string(++copies));
    fs::copy(dir / "out", copy, fs::copy_options::recursive);
    for (const std::string& removed : c.removed) fs::remove_all(copy + "/" + removed);
    fs::resize_file(copy + "/" + c.file, fs::file_size(copy + "/" + c.file) - c.cut);
    EXPECT_THROW(Read_results_dir(copy, std::nullopt), Xerror_msg);
    const RunResults run = Read_results_dir(copy, std::nullopt, true);
    EXPECT_EQ(run.cut, std::vector<std::string>{c.file});
    EXPECT_EQ(c.show(run), c.read);
  }
}

}  // namespace
}  // namespace kcp
