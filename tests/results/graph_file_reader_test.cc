#include "results/graph_file_reader.h"

#include <gtest/gtest.h>

#include "tests/results/results_fixtures.h"

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
const std::string kPlain =
    "# The links" + kPlainAlap + "# (mutual links and self-links were removed)\n\n";
const std::string kWeighted = "# The links" + kFixedKAlap + "# (self-links were removed)\n\n";

// Well-formed files of every flavour are read back byte for byte in round_trip_test.cc.
TEST(GraphFileReader, NumbersNamesAsTheRunAndTellsWeightedRuns) {
  Test_dir dir;
  Write_file(dir / "graph", kPlain + "b a\nb c\nc #x\n");
  Node_numbering order;
  EXPECT_FALSE(Read_graph_file(dir / "graph", order).weighted);
  EXPECT_EQ(order.Names(), (std::vector<std::string>{"", "b", "a", "c", "#x"}));
  // An intensity threshold, or an upper threshold of 0, alone makes the run weighted.
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
  const std::string path = dir / "graph";
  testing::Expect_errors(
      path,
      [&] {
        Node_numbering numbering;
        Read_graph_file(path, numbering);
      },
      {{kPlain + "a b\na b 1\n",
        ", line 9: expected two node names (the run set no weight threshold), found 3 fields"},
       {kWeighted + "a b\n",
        ", line 9: expected two node names and a weight (the run set a weight threshold), found 2 "
        "fields"},
       {kWeighted + "a b 1.5x\n",
        ", line 9: expected a weight (a number) after the two node names, found \"1.5x\""},
       {kPlain + "a b\nc d\na b\n", ", line 10: the link \"a b\" appears a second time"},
       {"# The links" + kPlainAlap + "\na b\n",
        ", line 5: expected \"# (self-links were removed)\" or \"# (mutual links and self-links "
        "were removed)\" as the last header line"},
       {"# The links" + kPlainAlap + "# (mutual links and self-links were removed)\n",
        ", line 7: expected the empty line that closes the header"},
       {"# The cliques" + kPlainAlap,
        ", line 1: expected \"# The links from <input file>\" as the first line"},
       {"# The links to x\n# (mutual links and self-links were removed)\n\n",
        ", line 1: expected \" from \" and the input file at the start of the run description"},
       {"",
        ", line 1: expected \"# The links from <input file>\" as the first line (no header "
        "line found)"}});
}

}  // namespace
}  // namespace kcp
