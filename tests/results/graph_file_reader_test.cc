#include "results/graph_file_reader.h"

#include <gtest/gtest.h>

#include "driver/xerror_msg.h"
#include "tests/support/test_dir.h"

namespace kcp {
namespace {

using testing::Test_dir;
using testing::Write_file;

const std::string kPlainAlap =
    " from /d/net.txt\n# at no lower link weight threshold,\n# and at no upper link weight "
    "threshold.\n# Links were treated as undirected.\n# No time limit was set for the clique "
    "search.\n";
// A directed run with -w 0.15 -k 4: the description ends with a line end and a ".".
const std::string kFixedKAlap =
    " from /d/net.txt\n# at a lower link weight threshold of 0.150000,\n# and at no upper link "
    "weight threshold.\n# Links were treated as directed.\n# No time limit was set for the "
    "clique search.\n# The communities were extracted solely at k=4\n.";

std::string Error_of(const std::string& path) {
  try {
    Node_numbering numbering;
    Read_graph_file(path, numbering);
  } catch (const Xerror_msg& e) {
    return e.what();
  }
  return "no error";
}

TEST(GraphFileReader, ReadsAnUndirectedUnweightedFile) {
  Test_dir dir;
  Write_file(dir / "graph", "# The links" + kPlainAlap +
                                "# (mutual links and self-links were removed)\n\nb a\nb c\nc "
                                "#x\n");
  Node_numbering numbering;
  const GraphFile graph = Read_graph_file(dir / "graph", numbering);
  EXPECT_FALSE(graph.directed);
  EXPECT_FALSE(graph.weighted);
  EXPECT_EQ(graph.alap_szoveg, kPlainAlap);
  ASSERT_EQ(graph.links.size(), 3u);
  EXPECT_EQ(graph.links[2].source, "c");
  EXPECT_EQ(graph.links[2].target, "#x");
  EXPECT_FALSE(graph.links[2].weight.has_value());
  EXPECT_EQ(graph.link_map, (LinkMap{{{"b", "a"}, 0.0}, {{"b", "c"}, 0.0}, {{"c", "#x"}, 0.0}}));
  // The run numbers names by first appearance in this order.
  EXPECT_EQ(numbering.Names(), (std::vector<std::string>{"", "b", "a", "c", "#x"}));
}

TEST(GraphFileReader, ReadsADirectedWeightedFileOfAFixedKRun) {
  Test_dir dir;
  Write_file(dir / "directed_graph",
             "# The links" + kFixedKAlap + "# (self-links were removed)\n\na b 0.15\nb a 2e+06\n");
  Node_numbering numbering;
  const GraphFile graph = Read_graph_file(dir / "directed_graph", numbering);
  EXPECT_TRUE(graph.directed);
  EXPECT_TRUE(graph.weighted);
  EXPECT_EQ(graph.alap_szoveg, kFixedKAlap);
  ASSERT_EQ(graph.links.size(), 2u);
  EXPECT_EQ(graph.links[1].weight, 2e6);
  EXPECT_EQ(graph.links[1].weight_text, "2e+06");
  EXPECT_EQ(graph.link_map, (LinkMap{{{"a", "b"}, 0.15}, {{"b", "a"}, 2e6}}));
}

TEST(GraphFileReader, AnIntensityOrUpperThresholdAloneMakesTheRunWeighted) {
  Test_dir dir;
  for (const std::string line :
       {"# and at an upper link weight threshold of 0.000000.\n",
        "# A lower link weight intensity threshold of 0.500000 was set.\n"}) {
    Write_file(dir / "graph", "# The links from x\n# at no lower link weight threshold,\n" + line +
                                  "# (mutual links and self-links were removed)\n\na b 1\n");
    Node_numbering numbering;
    EXPECT_TRUE(Read_graph_file(dir / "graph", numbering).weighted) << line;
  }
}

TEST(GraphFileReader, BadFilesAreReportedWithFileAndLine) {
  Test_dir dir;
  const std::string plain =
      "# The links" + kPlainAlap + "# (mutual links and self-links were removed)\n\n";
  const std::string weighted = "# The links" + kFixedKAlap + "# (self-links were removed)\n\n";
  const std::string path = dir / "graph";
  const auto error = [&](const std::string& text) {
    Write_file(path, text);
    return Error_of(path);
  };
  EXPECT_EQ(error(plain + "a b\na b 1\n"),
            "ERROR: " + path +
                ", line 9: expected two node names (the run set no weight "
                "threshold), found 3 fields");
  EXPECT_EQ(error(weighted + "a b\n"),
            "ERROR: " + path +
                ", line 9: expected two node names and a weight (the run set a "
                "weight threshold), found 2 fields");
  EXPECT_EQ(error(weighted + "a b 1.5x\n"),
            "ERROR: " + path +
                ", line 9: expected a weight (a number) after the two node "
                "names, found \"1.5x\"");
  EXPECT_EQ(error(plain + "a b\nc d\na b\n"),
            "ERROR: " + path + ", line 10: the link \"a b\" appears a second time");
  EXPECT_EQ(error("# The links" + kPlainAlap + "\na b\n"),
            "ERROR: " + path +
                ", line 5: expected \"# (self-links were removed)\" or \"# "
                "(mutual links and self-links were removed)\" as the last header "
                "line");
  EXPECT_EQ(error("# The links" + kPlainAlap + "# (mutual links and self-links were removed)\n"),
            "ERROR: " + path + ", line 7: expected the empty line that closes the header");
  EXPECT_EQ(error("# The cliques" + kPlainAlap),
            "ERROR: " + path +
                ", line 1: expected \"# The links from <input file>\" as the "
                "first line");
  EXPECT_EQ(error("# The links to x\n# (mutual links and self-links were removed)\n\n"),
            "ERROR: " + path +
                ", line 1: expected \" from \" and the input file at the start of "
                "the run description");
  EXPECT_EQ(error(""), "ERROR: " + path +
                           ", line 1: expected \"# The links from <input file>\" "
                           "as the first line (no header line found)");
}

}  // namespace
}  // namespace kcp
