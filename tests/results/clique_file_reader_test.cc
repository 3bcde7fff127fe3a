#include "results/clique_file_reader.h"

#include <gtest/gtest.h>

#include "driver/xerror_msg.h"
#include "tests/support/test_dir.h"

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

std::string Error_of(const std::string& path, Node_numbering numbering = {}) {
  try {
    Read_clique_file(path, numbering);
  } catch (const Xerror_msg& e) {
    return e.what();
  }
  return "no error";
}

TEST(CliqueFileReader, ReadsExactThenApproximateCliques) {
  Test_dir dir;
  Write_file(dir / "cliques", "# The cliques" + kAlap + kNegative +
                                  "\n0: a b c \n1: b c #d \n-2: a #d e \n-3: c d e f \n");
  Node_numbering numbering;
  const CliqueFile file = Read_clique_file(dir / "cliques", numbering);
  EXPECT_EQ(file.flag, "");
  EXPECT_EQ(file.alap_szoveg, kAlap);
  EXPECT_EQ(file.n_exact, 2u);
  EXPECT_EQ(file.cliques, (CliqueList{{1, 2, 3}, {2, 3, 4}, {1, 4, 5}, {3, 6, 5, 7}}));
}

TEST(CliqueFileReader, AllApproximateCliquesStartAtMinusZero) {
  Test_dir dir;
  // A directed run of fixed k: the "Negative indices" line follows the "." of the description.
  Write_file(dir / "directed_cliques",
             "# The directed cliques" + kFixedKAlap + kNegative + "\n-0: a b c \n-1: b c d \n");
  Node_numbering numbering;
  const CliqueFile file = Read_clique_file(dir / "directed_cliques", numbering);
  EXPECT_EQ(file.flag, "directed");
  EXPECT_EQ(file.alap_szoveg, kFixedKAlap);
  EXPECT_EQ(file.n_exact, 0u);
  EXPECT_EQ(file.cliques.size(), 2u);

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
  const auto error = [&](const std::string& text, Node_numbering numbering = {}) {
    Write_file(path, text);
    return Error_of(path, numbering);
  };
  const std::string at7 = "ERROR: " + path + ", line 7: ";
  const std::string at8 = "ERROR: " + path + ", line 8: ";
  EXPECT_EQ(error(head + "a: a b c \n"),
            at7 + "expected a clique number followed by \":\", found \"a:\"");
  EXPECT_EQ(error(head + "0 a b c \n"),
            at7 + "expected a clique number followed by \":\", found \"0\"");
  EXPECT_EQ(error(head + "0: a b c \n2: a b d \n"),
            at8 + "expected clique number 1 (or -1), found \"2:\"");
  EXPECT_EQ(error(head + "0: a b c \n01: a b d \n"),
            at8 + "expected a clique number followed by \":\", found \"01:\"");
  EXPECT_EQ(error(approximate_head + "-0: a b c \n1: a b d \n"),
            "ERROR: " + path +
                ", line 9: exact clique 1 after approximate ones: the exact ones "
                "come first");
  EXPECT_EQ(error(head + "0: a b c \n-1: a b d \n"),
            "ERROR: " + path +
                ", line 5: approximate cliques follow, but the header lacks the "
                "line \"# Negative indices indicate approximate cliques.\"");
  EXPECT_EQ(error(approximate_head + "0: a b c \n"),
            "ERROR: " + path +
                ", line 6: the header announces approximate cliques, but none "
                "follows");
  // With the nodes of the graph file known, a number in place of a name shows.
  Node_numbering graph_nodes;
  for (const char* name : {"a", "b", "c"}) graph_nodes.Index(name);
  graph_nodes.Lock();
  EXPECT_EQ(error(head + "0: a b c \n1: a 17 c \n", graph_nodes),
            at8 + "the node \"17\" does not occur in the graph file");
}

}  // namespace
}  // namespace kcp
