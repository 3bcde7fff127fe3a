#include "communities/stats_files.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>

#include "tests/support/test_dir.h"

namespace kcp {
namespace {

using testing::Read_file;
using testing::Test_dir;

const std::string kAlap = " from net.txt\n# undirected\n";
const std::string kHead = "# from net.txt\n# undirected\n";

std::set<std::string> Files_in(const std::string& path) {
  std::set<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(path)) {
    names.insert(entry.path().filename().string());
  }
  return names;
}

TEST(StatsFiles, GraphFileMarksApproximateCommunities) {
  Test_dir dir;
  const CommunityGraph graph{{{0, 1}, 2}, {{3, 12}, 5}, {{12, 13}, 1}};
  Kiir_com_graph_VN(graph, 12, dir.path(), 3, "", kAlap);
  EXPECT_EQ(Read_file(dir / "k=3/graph_of_communities"),
            "# The graph of at k=3\n" + kHead + "\n0 1 2\n3 -12 5\n-12 -13 1\n");
  Kiir_com_graph_VN({}, 0, dir.path(), 3, "directed", kAlap);
  EXPECT_EQ(Read_file(dir / "k=3/graph_of_directed_communities"),
            "# The graph of directed at k=3\n" + kHead + "\n");
}

TEST(StatsFiles, DistributionFilesInTheirArgumentOrderWithTwoBlankHeaders) {
  Test_dir dir;
  const Distribution membership{{0, 4}, {1, 3}};
  const Distribution size{{3, 2}};
  const Distribution overlap{{1, 1}, {2, 6}};
  const Distribution degree{};
  Kiir_stats_VN(membership, size, overlap, degree, dir.path(), 3, "", "", kAlap);
  EXPECT_EQ(Files_in(dir / "k=3"),
            (std::set<std::string>{"membership_distribution", "size_distribution",
                                   "overlap_distribution", "degree_distribution"}));
  EXPECT_EQ(Read_file(dir / "k=3/membership_distribution"),
            "# The node membership distr. in the  communities at k=3\n" + kHead + "\n0 4\n1 3\n\n");
  EXPECT_EQ(Read_file(dir / "k=3/size_distribution"),
            "# The size distr. of the  communities at k=3\n" + kHead + "\n3 2\n\n");
  EXPECT_EQ(Read_file(dir / "k=3/overlap_distribution"),
            "# The overlap size distr. of the  communities at k=3\n" + kHead + "\n1 1\n2 6\n\n");
  EXPECT_EQ(Read_file(dir / "k=3/degree_distribution"),
            "# The com. degree distr. of the  communities at k=3\n" + kHead + "\n\n");
}

TEST(StatsFiles, SuffixGoesIntoNameAndHeaderAndOnlyBareApprGetsADot) {
  Test_dir dir;
  const Distribution d{{7, 1}};
  Kiir_stats_VN(d, d, d, d, dir.path(), 4, "directed", "_merged", kAlap);
  EXPECT_EQ(Read_file(dir / "k=4/directed_size_distribution_merged"),
            "# The size distr. of the _mergeddirected  communities at k=4\n" + kHead + "\n7 1\n\n");
  Kiir_stats_VN(d, d, d, d, dir.path(), 4, "", "_appr", kAlap);
  EXPECT_EQ(Read_file(dir / "k=4/degree_distribution_appr"),
            "# The com. degree distr. of the _appr communities at k=4\n" + kHead + "\n7 1\n\n");
  Kiir_stats_VN(d, d, d, d, dir.path(), 4, "", "appr", kAlap);
  EXPECT_EQ(Read_file(dir / "k=4/overlap_distributionappr"),
            "# The overlap size distr. of the appr. communities at k=4\n" + kHead + "\n7 1\n\n");
  Kiir_stats_VN(d, d, d, d, dir.path(), 4, "intensity", "appr", kAlap);
  EXPECT_EQ(Read_file(dir / "k=4/intensity_membership_distributionappr"),
            "# The node membership distr. in the appr.intensity  communities at k=4\n" + kHead +
                "\n7 1\n\n");
}

TEST(StatsFiles, OneDistributionFileEndsWithAnEmptyLine) {
  Test_dir dir;
  Kiir_VN_dist(dir / "d", {{0, 1}, {4294967295u, 2}}, "# head\n#x\n");
  EXPECT_EQ(Read_file(dir / "d"), "# head\n#x\n\n0 1\n4294967295 2\n\n");
  Kiir_VN_dist(dir / "e", {}, "# h");
  EXPECT_EQ(Read_file(dir / "e"), "# h\n\n");
}

}  // namespace
}  // namespace kcp
