#include "results/k_cliques_file_reader.h"

#include <gtest/gtest.h>

#include "driver/xerror_msg.h"
#include "tests/support/test_dir.h"

namespace kcp {
namespace {

using testing::Test_dir;
using testing::Write_file;

const std::string kAlap =
    " from /d/w.txt\n# A lower link weight intensity threshold of 0.500000 was set.\n";

std::string Error_of(const std::string& path, Node_numbering& numbering) {
  try {
    Read_k_cliques_file(path, numbering);
  } catch (const Xerror_msg& e) {
    return e.what();
  }
  return "no error";
}

Node_numbering Graph_nodes() {
  Node_numbering numbering;
  for (const char* name : {"a", "b", "c", "d", "e"}) numbering.Index(name);
  numbering.Lock();
  return numbering;
}

TEST(KCliquesFileReader, ReadsTheNumberedKCliques) {
  Test_dir dir;
  const std::string fixed_k = kAlap + "# The communities were extracted solely at k=3\n.";
  Write_file(dir / "k-cliques", "# The k-cliques at k=3" + fixed_k +
                                    "\n0: a b c \n1: a b d \n2: "
                                    "b d e \n");
  Node_numbering numbering = Graph_nodes();
  const KCliquesFile file = Read_k_cliques_file(dir / "k-cliques", numbering);
  EXPECT_EQ(file.k, 3u);
  EXPECT_EQ(file.alap_szoveg, fixed_k);
  EXPECT_EQ(file.k_cliques, (KCliqueSet{{1, 2, 3}, {1, 2, 4}, {2, 4, 5}}));
}

TEST(KCliquesFileReader, BadRecordsAreReportedWithFileAndLine) {
  Test_dir dir;
  const std::string path = dir / "k-cliques";
  const std::string head = "# The k-cliques at k=3" + kAlap + "\n";
  Node_numbering numbering = Graph_nodes();
  const auto error = [&](const std::string& records) {
    Write_file(path, head + records);
    return Error_of(path, numbering);
  };
  const std::string at5 = "ERROR: " + path + ", line 5: ";
  EXPECT_EQ(error("0: a b c \n-1: a b d \n"),
            at5 + "a negative k-clique number (\"-1:\") where none is allowed");
  EXPECT_EQ(error("0: a b d \n1: a b c \n"),
            at5 +
                "this k-clique comes before an earlier one in the order of the node indices "
                "of the graph file, in which the run lists them");
  EXPECT_EQ(error("0: a b c \n1: a b c \n"), at5 + "this k-clique was listed before");
  Write_file(path, "# The k-cliques at k=x" + kAlap + "\n");
  EXPECT_EQ(Error_of(path, numbering),
            "ERROR: " + path +
                ", line 1: expected \"# The k-cliques at k=<k> from <input "
                "file>\" as the first line");
}

}  // namespace
}  // namespace kcp
