#include "communities/stats_files.h"

#include <gtest/gtest.h>

#include "tests/support/test_dir.h"

namespace kcp {
namespace {

using testing::Read_file;

const std::string kAlap = " from net.txt\n# undirected\n";
const std::string kHead = "# from net.txt\n# undirected\n";

TEST(StatsFiles, GraphFileMarksApproximateCommunities) {
  testing::TestDir dir;
  const CommunityGraph graph{{{0, 1}, 2}, {{3, 12}, 5}, {{12, 13}, 1}};
  Kiir_com_graph_VN(graph, 12, dir.path(), 3, "", kAlap);
  EXPECT_EQ(Read_file(dir / "k=3/graph_of_communities"),
            "# The graph of at k=3\n" + kHead + "\n0 1 2\n3 -12 5\n-12 -13 1\n");
  Kiir_com_graph_VN({}, 0, dir.path(), 3, "directed", kAlap);
  EXPECT_EQ(Read_file(dir / "k=3/graph_of_directed_communities"),
            "# The graph of directed at k=3\n" + kHead + "\n");
}

TEST(StatsFiles, DistributionFilesInTheirArgumentOrderWithTheSuffixInNameAndHeader) {
  testing::TestDir dir;
  Kiir_stats_VN({{0, 4}, {1, 3}}, {{3, 2}}, {{1, 1}, {4294967295u, 6}}, {}, dir.path(), 3, "", "",
                kAlap);
  EXPECT_EQ(Read_file(dir / "k=3/membership_distribution"),
            "# The node membership distr. in the  communities at k=3\n" + kHead + "\n0 4\n1 3\n\n");
  EXPECT_EQ(Read_file(dir / "k=3/size_distribution"),
            "# The size distr. of the  communities at k=3\n" + kHead + "\n3 2\n\n");
  EXPECT_EQ(
      Read_file(dir / "k=3/overlap_distribution"),
      "# The overlap size distr. of the  communities at k=3\n" + kHead + "\n1 1\n4294967295 6\n\n");
  EXPECT_EQ(Read_file(dir / "k=3/degree_distribution"),
            "# The com. degree distr. of the  communities at k=3\n" + kHead + "\n\n");
  // Only the bare suffix "appr" gets a dot.
  const Distribution d{{7, 1}};
  Kiir_stats_VN(d, d, d, d, dir.path(), 4, "directed", "_merged", kAlap);
  EXPECT_EQ(Read_file(dir / "k=4/directed_size_distribution_merged"),
            "# The size distr. of the _mergeddirected  communities at k=4\n" + kHead + "\n7 1\n\n");
  Kiir_stats_VN(d, d, d, d, dir.path(), 4, "", "_appr", kAlap);
  EXPECT_EQ(Read_file(dir / "k=4/degree_distribution_appr"),
            "# The com. degree distr. of the _appr communities at k=4\n" + kHead + "\n7 1\n\n");
  Kiir_stats_VN(d, d, d, d, dir.path(), 4, "intensity", "appr", kAlap);
  EXPECT_EQ(Read_file(dir / "k=4/intensity_membership_distributionappr"),
            "# The node membership distr. in the appr.intensity  communities at k=4\n" + kHead +
                "\n7 1\n\n");
}

}  // namespace
}  // namespace kcp
