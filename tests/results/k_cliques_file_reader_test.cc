#include "results/k_cliques_file_reader.h"

#include <gtest/gtest.h>

#include "tests/results/results_fixtures.h"

// Well-formed files are read back byte for byte in round_trip_test.cc.
namespace kcp {
namespace {

using testing::Test_dir;

const std::string kAlap =
    " from /d/w.txt\n# A lower link weight intensity threshold of 0.500000 was set.\n";

Node_numbering Graph_nodes() {
  Node_numbering numbering;
  for (const char* name : {"a", "b", "c", "d", "e"}) numbering.Index(name);
  numbering.Lock();
  return numbering;
}

TEST(KCliquesFileReader, BadRecordsAreReportedWithFileAndLine) {
  Test_dir dir;
  const std::string path = dir / "k-cliques";
  const std::string head = "# The k-cliques at k=3" + kAlap + "\n";
  testing::Expect_errors(
      path,
      [&] {
        Node_numbering numbering = Graph_nodes();
        Read_k_cliques_file(path, numbering);
      },
      {{head + "0: a b c \n-1: a b d \n",
        ", line 5: a negative k-clique number (\"-1:\") where none is allowed"},
       {head + "0: a b d \n1: a b c \n",
        ", line 5: this k-clique comes before an earlier one in the order of the node indices of "
        "the graph file, in which the run lists them"},
       {head + "0: a b c \n1: a b c \n", ", line 5: this k-clique was listed before"},
       {"# The k-cliques at k=x" + kAlap + "\n",
        ", line 1: expected \"# The k-cliques at k=<k> from <input file>\" as the first line"}});
}

}  // namespace
}  // namespace kcp
