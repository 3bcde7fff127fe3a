#include "results/clique_file_reader.h"

#include <gtest/gtest.h>

#include "tests/results/results_fixtures.h"

namespace kcp {
namespace {

using testing::Test_dir;
using testing::Write_file;

const std::string kAlap =
    " from /d/net.txt\n# at no lower link weight threshold,\n# and at no upper link weight "
    "threshold.\n# Links were treated as undirected.\n# The maximal allowed time per node during "
    "clique search was 0.000001 secs.\n";
const std::string kFixedKAlap = kAlap + "# The communities were extracted solely at k=4\n.";
const std::string kNegative = "# Negative indices indicate approximate cliques.\n";

// Exact then approximate cliques are read back byte for byte in round_trip_test.cc.
TEST(CliqueFileReader, ReadsFilesWithoutExactCliques) {
  Test_dir dir;
  // A directed run of fixed k, all approximate from "-0": "Negative indices" follows the ".".
  Write_file(dir / "directed_cliques",
             "# The directed cliques" + kFixedKAlap + kNegative + "\n-0: a b c \n-1: b c d \n");
  Node_numbering numbering;
  const CliqueFile directed = Read_clique_file(dir / "directed_cliques", numbering);
  EXPECT_EQ(directed.flag, "directed");
  EXPECT_EQ(directed.alap_szoveg, kFixedKAlap);
  EXPECT_EQ(directed.n_exact, 0u);
  EXPECT_EQ(directed.cliques, (CliqueList{{1, 2, 3}, {2, 3, 4}}));

  Write_file(dir / "empty", "# The cliques" + kFixedKAlap + "\n");
  const CliqueFile empty = Read_clique_file(dir / "empty", numbering);
  EXPECT_TRUE(empty.cliques.empty());
  EXPECT_EQ(empty.alap_szoveg, kFixedKAlap);
}

TEST(CliqueFileReader, BadRecordsAreReportedWithFileAndLine) {
  Test_dir dir;
  const std::string path = dir / "cliques";
  const std::string head = "# The cliques" + kAlap + "\n";
  const std::string approximate_head = "# The cliques" + kAlap + kNegative + "\n";
  // With the nodes of the graph file known, a number in place of a name shows.
  Node_numbering graph_nodes;
  for (const char* name : {"a", "b", "c", "d"}) graph_nodes.Index(name);
  graph_nodes.Lock();
  testing::Expect_errors(
      path,
      [&] {
        Node_numbering numbering = graph_nodes;
        Read_clique_file(path, numbering);
      },
      {{head + "a: a b c \n", ", line 7: expected a clique number followed by \":\", found \"a:\""},
       {head + "0 a b c \n", ", line 7: expected a clique number followed by \":\", found \"0\""},
       {head + "0: a b c \n2: a b d \n",
        ", line 8: expected clique number 1 (or -1), found \"2:\""},
       {head + "0: a b c \n01: a b d \n",
        ", line 8: expected a clique number followed by \":\", found \"01:\""},
       {approximate_head + "-0: a b c \n1: a b d \n",
        ", line 9: exact clique 1 after approximate ones: the exact ones come first"},
       {head + "0: a b c \n-1: a b d \n",
        ", line 5: approximate cliques follow, but the header lacks the line \"# Negative "
        "indices indicate approximate cliques.\""},
       {approximate_head + "0: a b c \n",
        ", line 6: the header announces approximate cliques, but none follows"},
       {head + "0: a b c \n1: a 17 c \n",
        ", line 8: the node \"17\" does not occur in the graph file"}});
}

}  // namespace
}  // namespace kcp
