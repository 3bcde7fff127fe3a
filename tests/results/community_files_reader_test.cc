#include "results/community_files_reader.h"

#include <gtest/gtest.h>

#include "tests/results/results_fixtures.h"

// Well-formed files of every flavour are read back byte for byte in round_trip_test.cc.
namespace kcp {
namespace {

using testing::Test_dir;

const std::string kAlap = " from /d/net.txt\n# at no lower link weight threshold,\n";
const std::string kHead = "#" + kAlap;

TEST(CommunityFilesReader, BadRecordsAreReportedWithFileAndLine) {
  Test_dir dir;
  const std::string path = dir / "f";
  const std::string communities = "# The communities at k=3\n" + kHead;
  const std::string links = "# The links inside the communities at k=3\n" + kHead + "\n";
  const std::string cliques = "# The contained cliques in the communities at k=3\n" + kHead + "\n";
  const std::string no_number = "expected a community number followed by \":\"";
  testing::Expect_errors(
      path,
      [&] {
        Node_numbering numbering;
        Read_communities_file(path, numbering);
      },
      {{communities + "\na b c \n", ", line 5: " + no_number + ", found \"a\""},
       {communities + "\n0: a b \n0: c d \n",
        ", line 6: expected community number 1 (or -1), found \"0:\""},
       {"# The communities at k=-3\n" + kHead + "\n",
        ", line 1: expected \"# The [flag ]communities at k=<k>\" as the first line"},
       {communities + "0: a b \n", ", line 4: expected the empty line that closes the header"},
       {"# The communities at k=3\n from x\n\n",
        ", line 2: expected \"#\" and the run description"}});
  testing::Expect_errors(
      path,
      [&] {
        Node_numbering numbering;
        Read_community_links_file(path, numbering);
      },
      {{links + "a b\n", ", line 5: " + no_number + " before the first link"},
       {links + "0:\na b c\n",
        ", line 6: " + no_number + ", or a link of two node names; found 3 fields"},
       {links + "0:\na a\n", ", line 6: a link from a node to itself"},
       {links + "0: a\n", ", line 5: " + no_number + " before the first link"},
       {links + "x:\n", ", line 5: " + no_number + ", found \"x:\""}});
  testing::Expect_errors(
      path, [&] { Read_community_cliques_file(path); },
      {{cliques + "0: 1 -2 \n",
        ", line 5: a negative clique number (\"-2\") in an exact community, where none is "
        "allowed"},
       {cliques + "-0: 1 -2 \n-1: 3 \n",
        ", line 6: exact clique 3 is not below approximate clique -2"},
       {cliques + "0: 1 x \n", ", line 5: expected a clique number, found \"x\""},
       {cliques + "0: 1 +2 \n", ", line 5: expected a clique number, found \"+2\""}});
}

}  // namespace
}  // namespace kcp
