#include "communities/community_stage.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <sstream>

#include "core/xerror_msg.h"
#include "tests/support/brute_communities.h"
#include "tests/support/test_dir.h"

namespace kcp {
namespace {

using testing::Read_file;
using testing::Test_dir;

const std::string kAlap = " from net.txt\n# undirected\n";
const std::string kHead = "# from net.txt\n# undirected\n";

std::string Report(std::uint32_t k, std::uint32_t largest) {
  std::ostringstream out;
  out << "kept ";
  Coms_report_sub::Report_com_export(k, largest, out);
  return out.str();
}

std::set<std::string> Files_in(const std::string& path) {
  std::set<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(path)) {
    names.insert(entry.path().filename().string());
  }
  return names;
}

TEST(CommunityStage, ProgressReportAppendsUnderscoresAndThePercentage) {
  const std::string u49(49, '_');
  EXPECT_EQ(Report(3, 5), "kept " + u49 + "\n Extracting communities at k=3 (completed 83.33%)\n");
  EXPECT_EQ(Report(5, 5), "kept " + u49 + "\n Extracting communities at k=5 (completed 16.67%)\n");
  EXPECT_EQ(Report(12, 12), "kept " + std::string(50, '_') +
                                "\n Extracting communities at k=12 (completed 5.00%)\n");
  EXPECT_EQ(Report(3, 4), "kept " + u49 + "\n Extracting communities at k=3 (completed 75.00%)\n");
}

TEST(CommunityStage, PercentageWrapsWhenKExceedsTheLargestCliqueSize) {
  const std::string u49(49, '_');
  // (4294967295 + 0.5) * 100 / 3
  EXPECT_EQ(Report(6, 5),
            "kept " + u49 + "\n Extracting communities at k=6 (completed 143165576516.67%)\n");
  // largest 0: both differences wrap: (4294967293 + 0.5) * 100 / 4294967294
  EXPECT_EQ(Report(3, 0), "kept " + u49 + "\n Extracting communities at k=3 (completed 100.00%)\n");
  // largest 2: a positive number over 0 is +infinity.
  EXPECT_EQ(Report(3, 2), "kept " + u49 + "\n Extracting communities at k=3 (completed inf%)\n");
}

// Cliques {1,2,3,4}, {3,4,5}, {5,6,7} of an 8-node graph (node 8 alone): at k = 3 the first two
// form one community, the third another; the two share node 5.
struct Stage_case {
  CliqueList cliques{{1, 2, 3, 4}, {3, 4, 5}, {5, 6, 7}};
  OverlapMatrix overlaps = testing::Brute_overlap_matrix(cliques, 2);
  NameMap names{{1, "n1"}, {2, "n2"}, {3, "n3"}, {4, "n4"},
                {5, "n5"}, {6, "n6"}, {7, "n7"}, {8, "n8"}};
  // (4,5) was read as 5 -> 4.
  IndexLinkMap links{{{1, 2}, 2}, {{1, 3}, 2}, {{1, 4}, 2}, {{2, 3}, 2}, {{2, 4}, 2}, {{3, 4}, 2},
                     {{3, 5}, 2}, {{5, 4}, 2}, {{5, 6}, 2}, {{5, 7}, 2}, {{6, 7}, 2}};

  std::string Run(std::uint32_t k, std::uint32_t n_exact, const std::string& dir,
                  std::uint32_t node_count = 8) {
    ::testing::internal::CaptureStdout();
    try {
      Find_coms(k, cliques, overlaps, n_exact, "", kAlap, dir, names, node_count, false, 0.0, links,
                4);
    } catch (...) {
      ::testing::internal::GetCapturedStdout();
      throw;
    }
    return ::testing::internal::GetCapturedStdout();
  }
};

const std::string kTail =
    " done.\n Writing commmunities to disk...\n done.\n Calculating statistics...\n done.\n";

TEST(CommunityStage, ApproximateCommunityBringsTwelveSuffixedDistributionFiles) {
  Test_dir dir;
  Stage_case c;
  // Clique 2 is approximate, so is the community it forms.
  EXPECT_EQ(c.Run(3, 2, dir.path()),
            std::string(49, '_') + "\n Extracting communities at k=3 (completed 75.00%)\n" + kTail);
  const std::string k3 = dir / "k=3";
  std::set<std::string> expected{"communities", "communities_cliques", "communities_links",
                                 "graph_of_communities"};
  for (const char* stem : {"membership_distribution", "size_distribution", "overlap_distribution",
                           "degree_distribution"}) {
    for (const char* suffix : {"_merged", "_exact", "_appr"}) {
      expected.insert(std::string(stem) + suffix);
    }
  }
  EXPECT_EQ(Files_in(k3), expected);
  EXPECT_EQ(Read_file(k3 + "/communities"),
            "# The communities at k=3\n" + kHead +
                "# Negative indices indicate approximate communities.\n"
                "\n0: n1 n2 n3 n4 n5 \n-1: n5 n6 n7 \n");
  EXPECT_EQ(Read_file(k3 + "/communities_cliques"),
            "# The contained cliques in the communities at k=3\n" + kHead + "\n0: 0 1 \n-1: -2 \n");
  EXPECT_EQ(Read_file(k3 + "/graph_of_communities"),
            "# The graph of at k=3\n" + kHead + "\n0 -1 1\n");
  EXPECT_EQ(Read_file(k3 + "/membership_distribution_merged"),
            "# The node membership distr. in the _merged communities at k=3\n" + kHead +
                "\n0 1\n1 6\n2 1\n\n");
  EXPECT_EQ(
      Read_file(k3 + "/membership_distribution_exact"),
      "# The node membership distr. in the _exact communities at k=3\n" + kHead + "\n0 3\n1 5\n\n");
  EXPECT_EQ(
      Read_file(k3 + "/membership_distribution_appr"),
      "# The node membership distr. in the _appr communities at k=3\n" + kHead + "\n0 5\n1 3\n\n");
  EXPECT_EQ(Read_file(k3 + "/degree_distribution_exact"),
            "# The com. degree distr. of the _exact communities at k=3\n" + kHead + "\n0 1\n\n");
  EXPECT_EQ(Read_file(k3 + "/overlap_distribution_merged"),
            "# The overlap size distr. of the _merged communities at k=3\n" + kHead + "\n1 1\n\n");
}

TEST(CommunityStage, TooFewGraphNodesStopsAfterTheCommunityFiles) {
  Test_dir dir;
  Stage_case c;
  ::testing::internal::CaptureStdout();
  try {
    Find_coms(3, c.cliques, c.overlaps, 3, "", kAlap, dir.path(), c.names, 6, false, 0.0, c.links,
              4);
    ::testing::internal::GetCapturedStdout();
    FAIL() << "no exception";
  } catch (const Xerror_msg& e) {
    const std::string out = ::testing::internal::GetCapturedStdout();
    EXPECT_STREQ(e.what(),
                 "ERROR: Community_statistics() : More vertex in the communities than in the "
                 "graph.");
    EXPECT_EQ(out, std::string(49, '_') +
                       "\n Extracting communities at k=3 (completed 75.00%)\n done.\n"
                       " Writing commmunities to disk...\n done.\n Calculating statistics...\n");
  }
  EXPECT_EQ(Files_in(dir / "k=3"),
            (std::set<std::string>{"communities", "communities_cliques", "communities_links",
                                   "graph_of_communities"}));
}

TEST(CommunityStage, IntensityRunWritesKCliquesAndNoCliqueLists) {
  Test_dir dir;
  Stage_case c;
  // Every weight is 2 > 1: every 3-subset of a clique qualifies and the communities are those
  // of plain percolation. Undirected runs hold every link as (smaller, larger).
  c.links.erase({5, 4});
  c.links[{4, 5}] = 2;
  ::testing::internal::CaptureStdout();
  try {
    Find_coms(3, c.cliques, c.overlaps, 3, "intensity", kAlap, dir.path(), c.names, 8, true, 1.0,
              c.links, 4);
  } catch (const std::exception& e) {
    const std::string out = ::testing::internal::GetCapturedStdout();
    FAIL() << e.what() << "\n" << out;
  }
  const std::string out = ::testing::internal::GetCapturedStdout();
  EXPECT_EQ(out.find("(completed "), std::string::npos);
  const std::string write_k_cliques = "__________________________\n Writing k-clques to disk.\n";
  EXPECT_NE(out.find(write_k_cliques), std::string::npos);
  EXPECT_LT(out.find(write_k_cliques), out.find(" Writing commmunities to disk...\n"));
  const std::string tail =
      " Writing commmunities to disk...\n done.\n Calculating statistics...\n done.\n";
  ASSERT_GE(out.size(), tail.size());
  EXPECT_EQ(out.substr(out.size() - tail.size()), tail);

  const std::string k3 = dir / "k=3";
  EXPECT_EQ(Files_in(k3), (std::set<std::string>{
                              "k-cliques", "intensity_communities", "intensity_communities_links",
                              "graph_of_intensity_communities", "intensity_membership_distribution",
                              "intensity_size_distribution", "intensity_overlap_distribution",
                              "intensity_degree_distribution"}));
  EXPECT_EQ(
      Read_file(k3 + "/intensity_communities"),
      "# The intensity communities at k=3\n" + kHead + "\n0: n1 n2 n3 n4 n5 \n1: n5 n6 n7 \n");
  EXPECT_EQ(Read_file(k3 + "/graph_of_intensity_communities"),
            "# The graph of intensity at k=3\n" + kHead + "\n0 1 1\n");
  EXPECT_EQ(Read_file(k3 + "/intensity_size_distribution"),
            "# The size distr. of the intensity  communities at k=3\n" + kHead + "\n3 1\n5 1\n\n");
}

}  // namespace
}  // namespace kcp
