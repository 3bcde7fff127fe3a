#include "communities/community_stage.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <set>
#include <sstream>

#include "core/xerror_msg.h"
#include "tests/cli/cout_capture.h"
#include "tests/support/brute_communities.h"
#include "tests/support/test_dir.h"

namespace kcp {
namespace {

using testing::Read_file;

TEST(CommunityStage, ProgressReportAppendsUnderscoresAndThePercentageOfWrappedDifferences) {
  const struct {
    std::uint32_t k;
    std::uint32_t largest;
    std::string percent;
  } cases[] = {
      {3, 5, "83.33"},
      {5, 5, "16.67"},
      {12, 12, "5.00"},
      {3, 4, "75.00"},
      // (4294967295 + 0.5) * 100 / 3; (4294967293 + 0.5) * 100 / 4294967294; 2.5 * 100 / 0.
      {6, 5, "143165576516.67"},
      {3, 0, "100.00"},
      {3, 2, "inf"},
  };
  for (const auto& c : cases) {
    std::ostringstream out;
    out << "kept ";
    Coms_report_sub::Report_com_export(c.k, c.largest, out);
    EXPECT_EQ(out.str(), "kept " + std::string(c.k < 10 ? 49 : 50, '_') +
                             "\n Extracting communities at k=" + std::to_string(c.k) +
                             " (completed " + c.percent + "%)\n");
  }
}

std::set<std::string> Files_in(const std::string& path) {
  std::set<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(path)) {
    names.insert(entry.path().filename().string());
  }
  return names;
}

// Cliques {1,2,3,4}, {3,4,5}, {5,6,7} of an 8-node graph (node 8 alone): at k = 3 the first two
// form one community, the third another; the two share node 5. Every weight is 2.
struct StageCase {
  CliqueList cliques{{1, 2, 3, 4}, {3, 4, 5}, {5, 6, 7}};
  NameMap names{{1, "n1"}, {2, "n2"}, {3, "n3"}, {4, "n4"}, {5, "n5"}, {6, "n6"}, {7, "n7"}};
  IndexLinkMap links{{{1, 2}, 2}, {{1, 3}, 2}, {{1, 4}, 2}, {{2, 3}, 2}, {{2, 4}, 2}, {{3, 4}, 2},
                     {{3, 5}, 2}, {{4, 5}, 2}, {{5, 6}, 2}, {{5, 7}, 2}, {{6, 7}, 2}};
  testing::TestDir dir;
  std::string printed;

  std::string Run(const std::uint32_t& n_exact, const std::uint32_t& node_count,
                  const bool& intensity = false) {
    testing::CoutCapture capture;
    try {
      Find_coms(3, cliques, testing::Brute_overlap_matrix(cliques, 2), n_exact,
                intensity ? "intensity" : "", " from net.txt\n# undirected\n", dir.path(), names,
                node_count, intensity, 1.0, links, 4);
    } catch (...) {
      printed = capture.text();
      throw;
    }
    printed = capture.text();
    return dir / "k=3";
  }
};

const std::string kHead = "# from net.txt\n# undirected\n";
const std::string kCommunityFiles[] = {"communities", "communities_cliques", "communities_links",
                                       "graph_of_communities"};

TEST(CommunityStage, ApproximateCommunityBringsTwelveSuffixedDistributionFiles) {
  StageCase c;
  // Clique 2 is approximate, so is the community it forms.
  const std::string k3 = c.Run(2, 8);
  EXPECT_EQ(c.printed, std::string(49, '_') +
                           "\n Extracting communities at k=3 (completed 75.00%)\n done.\n Writing "
                           "commmunities to disk...\n done.\n Calculating statistics...\n done.\n");
  std::set<std::string> expected(std::begin(kCommunityFiles), std::end(kCommunityFiles));
  for (const char* stem : {"membership", "size", "overlap", "degree"}) {
    for (const char* suffix : {"_merged", "_exact", "_appr"}) {
      expected.insert(std::string(stem) + "_distribution" + suffix);
    }
  }
  EXPECT_EQ(Files_in(k3), expected);
  EXPECT_EQ(Read_file(k3 + "/communities_cliques"),
            "# The contained cliques in the communities at k=3\n" + kHead + "\n0: 0 1 \n-1: -2 \n");
  EXPECT_EQ(Read_file(k3 + "/membership_distribution_merged"),
            "# The node membership distr. in the _merged communities at k=3\n" + kHead +
                "\n0 1\n1 6\n2 1\n\n");
}

TEST(CommunityStage, TooFewGraphNodesStopsAfterTheCommunityFiles) {
  StageCase c;
  try {
    c.Run(3, 6);
    FAIL() << "no exception";
  } catch (const Xerror_msg& e) {
    EXPECT_STREQ(e.what(),
                 "ERROR: Community_statistics() : More vertex in the communities than in the "
                 "graph.");
  }
  EXPECT_EQ(c.printed,
            std::string(49, '_') +
                "\n Extracting communities at k=3 (completed 75.00%)\n done.\n"
                " Writing commmunities to disk...\n done.\n Calculating statistics...\n");
  EXPECT_EQ(Files_in(c.dir / "k=3"),
            std::set<std::string>(std::begin(kCommunityFiles), std::end(kCommunityFiles)));
}

TEST(CommunityStage, IntensityRunWritesKCliquesAndNoCliqueLists) {
  // Every weight is 2 > 1: every 3-subset of a clique qualifies and the communities are those
  // of plain percolation.
  StageCase c;
  const std::string k3 = c.Run(3, 8, true);
  EXPECT_EQ(c.printed.find("(completed "), std::string::npos);
  const std::size_t k_cliques_at =
      c.printed.find(std::string(26, '_') + "\n Writing k-clques to disk.\n");
  EXPECT_LT(k_cliques_at, c.printed.find(" Writing commmunities to disk...\n"));
  const std::string tail =
      " Writing commmunities to disk...\n done.\n Calculating statistics...\n done.\n";
  EXPECT_EQ(c.printed.substr(c.printed.size() - std::min(tail.size(), c.printed.size())), tail);
  EXPECT_EQ(Files_in(k3), (std::set<std::string>{
                              "k-cliques", "intensity_communities", "intensity_communities_links",
                              "graph_of_intensity_communities", "intensity_membership_distribution",
                              "intensity_size_distribution", "intensity_overlap_distribution",
                              "intensity_degree_distribution"}));
  EXPECT_EQ(
      Read_file(k3 + "/intensity_communities"),
      "# The intensity communities at k=3\n" + kHead + "\n0: n1 n2 n3 n4 n5 \n1: n5 n6 n7 \n");
}

}  // namespace
}  // namespace kcp
