#include "results/stats_files_reader.h"

#include <gtest/gtest.h>

#include <functional>

#include "driver/xerror_msg.h"
#include "tests/support/test_dir.h"

namespace kcp {
namespace {

using testing::Test_dir;
using testing::Write_file;

const std::string kAlap = " from /d/net.txt\n# Links were treated as directed.\n";
const std::string kFixedKAlap = kAlap + "# The communities were extracted solely at k=4\n.";

std::string Error_of(const std::function<void()>& read) {
  try {
    read();
  } catch (const Xerror_msg& e) {
    return e.what();
  }
  return "no error";
}

TEST(StatsFilesReader, DistributionTitlesGiveStemSuffixFlagAndK) {
  Test_dir dir;
  // Suffix and flag word run together, and an empty flag leaves two blanks.
  Write_file(dir / "a", "# The size distr. of the _exactdirected  communities at k=3\n#" + kAlap +
                            "\n3 2\n4 1\n\n");
  const DistributionFile exact = Read_distribution_file(dir / "a");
  EXPECT_EQ(exact.stem, "size_distribution");
  EXPECT_EQ(exact.suffix, "_exact");
  EXPECT_EQ(exact.flag, "directed");
  EXPECT_EQ(exact.k, 3u);
  EXPECT_EQ(exact.alap_szoveg, kAlap);
  EXPECT_EQ(exact.header, "# The size distr. of the _exactdirected  communities at k=3\n#" + kAlap);
  EXPECT_EQ(exact.distribution, (Distribution{{3, 2}, {4, 1}}));

  Write_file(dir / "b",
             "# The node membership distr. in the  communities at k=12\n#" + kAlap + "\n0 5\n\n");
  const DistributionFile plain = Read_distribution_file(dir / "b");
  EXPECT_EQ(plain.stem, "membership_distribution");
  EXPECT_EQ(plain.suffix, "");
  EXPECT_EQ(plain.flag, "");
  EXPECT_EQ(plain.k, 12u);

  // The bare suffix "appr" is followed by a ".".
  Write_file(dir / "c", "# The overlap size distr. of the appr.intensity  communities at k=4\n#" +
                            kAlap + "\n\n");
  const DistributionFile appr = Read_distribution_file(dir / "c");
  EXPECT_EQ(appr.stem, "overlap_distribution");
  EXPECT_EQ(appr.suffix, "appr");
  EXPECT_EQ(appr.flag, "intensity");
  EXPECT_TRUE(appr.distribution.empty());

  // An empty distribution of a fixed-k run: the "." closes the header, the empty line the file.
  Write_file(dir / "d",
             "# The com. degree distr. of the _appr communities at k=4\n#" + kFixedKAlap + "\n\n");
  const DistributionFile fixed_k = Read_distribution_file(dir / "d");
  EXPECT_EQ(fixed_k.stem, "degree_distribution");
  EXPECT_EQ(fixed_k.suffix, "_appr");
  EXPECT_EQ(fixed_k.alap_szoveg, kFixedKAlap);
  EXPECT_TRUE(fixed_k.distribution.empty());
}

TEST(StatsFilesReader, CommunityGraphTellsApproximateCommunitiesByTheirSign) {
  Test_dir dir;
  Write_file(dir / "g", "# The graph of at k=3\n#" + kAlap + "\n0 1 2\n0 -3 1\n1 -2 4\n-2 -3 1\n");
  const CommunityGraphFile file = Read_community_graph_file(dir / "g");
  EXPECT_EQ(file.flag, "");
  EXPECT_EQ(file.k, 3u);
  EXPECT_EQ(file.n_exact_coms, 2u);
  EXPECT_EQ(file.graph, (CommunityGraph{{{0, 1}, 2}, {{0, 3}, 1}, {{1, 2}, 4}, {{2, 3}, 1}}));

  Write_file(dir / "h", "# The graph of directed at k=4\n#" + kFixedKAlap + "\n-0 -1 3\n");
  const CommunityGraphFile all_approximate = Read_community_graph_file(dir / "h");
  EXPECT_EQ(all_approximate.flag, "directed");
  EXPECT_EQ(all_approximate.n_exact_coms, 0u);
}

TEST(StatsFilesReader, BadRecordsAreReportedWithFileAndLine) {
  Test_dir dir;
  const std::string path = dir / "f";
  const auto distribution = [&](const std::string& records) {
    Write_file(path, "# The size distr. of the  communities at k=3\n#" + kAlap + "\n" + records);
    return Error_of([&] { Read_distribution_file(path); });
  };
  const auto graph = [&](const std::string& records) {
    Write_file(path, "# The graph of at k=3\n#" + kAlap + "\n" + records);
    return Error_of([&] { Read_community_graph_file(path); });
  };
  const std::string at5 = "ERROR: " + path + ", line 5: ";
  const std::string at6 = "ERROR: " + path + ", line 6: ";
  EXPECT_EQ(distribution("3 1\n4 2\n"),
            "ERROR: " + path +
                ", line 7: expected the empty line that ends a distribution file: "
                "the file seems truncated");
  EXPECT_EQ(distribution("3 -1\n\n"),
            at5 + "a negative number (\"-1\") where a count is expected, which is never negative");
  EXPECT_EQ(distribution("3 x\n\n"), at5 + "expected a count, found \"x\"");
  EXPECT_EQ(distribution("3 1 4\n\n"), at5 + "expected a value and its count, found 3 fields");
  EXPECT_EQ(distribution("4 1\n3 1\n\n"),
            at6 + "the value 3 does not follow the one before it in ascending order");
  EXPECT_EQ(graph("0 1\n"),
            at5 + "expected two community numbers and the number of shared nodes, found 2 fields");
  EXPECT_EQ(graph("0 a 1\n"), at5 + "expected a community number, found \"a\"");
  EXPECT_EQ(graph("0 1 -1\n"), at5 +
                                   "a negative number (\"-1\") where the number of shared "
                                   "nodes is expected, which is never negative");
  EXPECT_EQ(graph("0 -1 1\n2 3 1\n"),
            at6 + "exact community 2 is not below approximate community -1");
  EXPECT_EQ(graph("0 2 1\n0 1 1\n"),
            at6 + "this pair of communities does not follow the one before it in ascending order");
  Write_file(path, "# The sizes of the  communities at k=3\n#" + kAlap + "\n\n");
  EXPECT_EQ(Error_of([&] { Read_distribution_file(path); }),
            "ERROR: " + path +
                ", line 1: expected \"# The <distribution> of the <suffix>[flag ] "
                "communities at k=<k>\" as the first line");
}

}  // namespace
}  // namespace kcp
