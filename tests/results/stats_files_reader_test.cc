#include "results/stats_files_reader.h"

#include <gtest/gtest.h>

#include "tests/results/results_fixtures.h"

namespace kcp {
namespace {

using testing::Test_dir;
using testing::Write_file;

const std::string kAlap = " from /d/net.txt\n# Links were treated as directed.\n";
const std::string kFixedKAlap = kAlap + "# The communities were extracted solely at k=4\n.";

TEST(StatsFilesReader, DistributionTitlesGiveStemSuffixFlagAndK) {
  struct Case {
    std::string title;
    std::string alap;
    std::string records;
    std::string stem, suffix, flag;
    std::uint32_t k;
    Distribution distribution;
  };
  const std::vector<Case> cases = {
      // Suffix and flag word run together, and an empty flag leaves two blanks.
      {"# The size distr. of the _exactdirected  communities at k=3\n",
       kAlap,
       "3 2\n4 1\n\n",
       "size_distribution",
       "_exact",
       "directed",
       3,
       {{3, 2}, {4, 1}}},
      {"# The node membership distr. in the  communities at k=12\n",
       kAlap,
       "0 5\n\n",
       "membership_distribution",
       "",
       "",
       12,
       {{0, 5}}},
      // The bare suffix "appr" is followed by a ".".
      {"# The overlap size distr. of the appr.intensity  communities at k=4\n",
       kAlap,
       "\n",
       "overlap_distribution",
       "appr",
       "intensity",
       4,
       {}},
      // An empty distribution of a fixed-k run: the "." closes the header, the empty line the file.
      {"# The com. degree distr. of the _appr communities at k=4\n",
       kFixedKAlap,
       "\n",
       "degree_distribution",
       "_appr",
       "",
       4,
       {}},
  };
  Test_dir dir;
  for (const Case& c : cases) {
    SCOPED_TRACE(c.title);
    Write_file(dir / "f", c.title + "#" + c.alap + "\n" + c.records);
    const DistributionFile file = Read_distribution_file(dir / "f");
    EXPECT_EQ(file.stem, c.stem);
    EXPECT_EQ(file.suffix, c.suffix);
    EXPECT_EQ(file.flag, c.flag);
    EXPECT_EQ(file.k, c.k);
    EXPECT_EQ(file.alap_szoveg, c.alap);
    EXPECT_EQ(file.header, c.title + "#" + c.alap);
    EXPECT_EQ(file.distribution, c.distribution);
  }
}

TEST(StatsFilesReader, BadRecordsAreReportedWithFileAndLine) {
  Test_dir dir;
  const std::string path = dir / "f";
  const std::string distribution = "# The size distr. of the  communities at k=3\n#" + kAlap + "\n";
  const std::string graph = "# The graph of at k=3\n#" + kAlap + "\n";
  testing::Expect_errors(
      path, [&] { Read_distribution_file(path); },
      {{distribution + "3 1\n4 2\n",
        ", line 7: expected the empty line that ends a distribution file: the file seems "
        "truncated"},
       {distribution + "3 -1\n\n",
        ", line 5: a negative number (\"-1\") where a count is expected, which is never negative"},
       {distribution + "3 x\n\n", ", line 5: expected a count, found \"x\""},
       {distribution + "3 1 4\n\n", ", line 5: expected a value and its count, found 3 fields"},
       {distribution + "4 1\n3 1\n\n",
        ", line 6: the value 3 does not follow the one before it in ascending order"},
       {distribution + "3 1\n3 2\n\n",
        ", line 6: the value 3 does not follow the one before it in ascending order"},
       {"# The sizes of the  communities at k=3\n#" + kAlap + "\n\n",
        ", line 1: expected \"# The <distribution> of the <suffix>[flag ] communities at k=<k>\" "
        "as the first line"}});
  testing::Expect_errors(
      path, [&] { Read_community_graph_file(path); },
      {{graph + "0 1\n",
        ", line 5: expected two community numbers and the number of shared nodes, found 2 fields"},
       {graph + "0 a 1\n", ", line 5: expected a community number, found \"a\""},
       {graph + "0 1 -1\n",
        ", line 5: a negative number (\"-1\") where the number of shared nodes is expected, which "
        "is never negative"},
       {graph + "0 -1 1\n2 3 1\n",
        ", line 6: exact community 2 is not below approximate community -1"},
       {graph + "0 2 1\n0 1 1\n",
        ", line 6: this pair of communities does not follow the one before it in ascending "
        "order"}});
}

}  // namespace
}  // namespace kcp
