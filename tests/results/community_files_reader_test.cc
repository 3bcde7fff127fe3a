#include "results/community_files_reader.h"

#include <gtest/gtest.h>

#include <functional>

#include "driver/xerror_msg.h"
#include "tests/support/test_dir.h"

namespace kcp {
namespace {

using testing::Test_dir;
using testing::Write_file;

const std::string kAlap = " from /d/net.txt\n# at no lower link weight threshold,\n";
const std::string kHead = "#" + kAlap;
const std::string kFixedKAlap = kAlap + "# The communities were extracted solely at k=4\n.";

std::string Error_of(const std::function<void()>& read) {
  try {
    read();
  } catch (const Xerror_msg& e) {
    return e.what();
  }
  return "no error";
}

TEST(CommunityFilesReader, ReadsCommunitiesOfEveryFlavour) {
  Test_dir dir;
  Write_file(dir / "communities", "# The communities at k=3\n" + kHead +
                                      "# Negative indices indicate approximate communities.\n"
                                      "\n0: a b c \n1: c #d \n-2: e a \n");
  Node_numbering numbering;
  const CommunitiesFile plain = Read_communities_file(dir / "communities", numbering);
  EXPECT_EQ(plain.flag, "");
  EXPECT_EQ(plain.k, 3u);
  EXPECT_EQ(plain.alap_szoveg, kAlap);
  EXPECT_EQ(plain.n_exact_coms, 2u);
  EXPECT_EQ(plain.communities, (CommunityList{{1, 2, 3}, {3, 4}, {5, 1}}));

  // A fixed-k run without approximate communities: the "." closes the header.
  Write_file(dir / "intensity_communities",
             "# The intensity communities at k=4\n#" + kFixedKAlap + "\n0: a b c d \n");
  const CommunitiesFile intensity = Read_communities_file(dir / "intensity_communities", numbering);
  EXPECT_EQ(intensity.flag, "intensity");
  EXPECT_EQ(intensity.k, 4u);
  EXPECT_EQ(intensity.alap_szoveg, kFixedKAlap);
  EXPECT_EQ(intensity.n_exact_coms, 1u);

  // Every community approximate: the first is "-0".
  Write_file(dir / "directed_communities",
             "# The directed communities at k=27\n#" + kFixedKAlap +
                 "# Negative indices indicate approximate communities.\n\n-0: a b \n-1: c d \n");
  const CommunitiesFile directed = Read_communities_file(dir / "directed_communities", numbering);
  EXPECT_EQ(directed.flag, "directed");
  EXPECT_EQ(directed.n_exact_coms, 0u);
  EXPECT_EQ(directed.communities.size(), 2u);
}

TEST(CommunityFilesReader, LinksKeepTheDirectionTheyAreWrittenIn) {
  Test_dir dir;
  Write_file(dir / "communities_links",
             "# The links inside the communities at k=3\n" + kHead + "\n0:\na b\nc a\n-1:\nb c\n");
  Node_numbering numbering;
  const CommunityLinksFile file = Read_community_links_file(dir / "communities_links", numbering);
  EXPECT_EQ(file.k, 3u);
  EXPECT_EQ(file.n_exact_coms, 1u);
  // a = 1, b = 2, c = 3.
  EXPECT_EQ(file.community_links, (CommunityLinkLists{{{1, 2}, {3, 1}}, {{2, 3}}}));
  EXPECT_EQ(Written_link_map(file), (IndexLinkMap{{{1, 2}, 0.0}, {{2, 3}, 0.0}, {{3, 1}, 0.0}}));
}

TEST(CommunityFilesReader, CliquesOfApproximateCommunitiesTellTheExactCliqueCount) {
  Test_dir dir;
  Write_file(dir / "directed_communities_cliques",
             "# The contained directed cliques in the directed communities at k=5\n" + kHead +
                 "\n0: 0 2 \n1: 1 \n-2: 3 -9 -7 \n-3: -8 \n");
  const CommunityCliquesFile file =
      Read_community_cliques_file(dir / "directed_communities_cliques");
  EXPECT_EQ(file.flag, "directed");
  EXPECT_EQ(file.k, 5u);
  EXPECT_EQ(file.n_exact_coms, 2u);
  EXPECT_EQ(file.n_exact, 7u);
  EXPECT_EQ(file.community_cliques, (CommunityCliqueLists{{0, 2}, {1}, {3, 9, 7}, {8}}));
}

TEST(CommunityFilesReader, BadRecordsAreReportedWithFileAndLine) {
  Test_dir dir;
  const std::string path = dir / "f";
  Node_numbering numbering;
  const auto communities = [&](const std::string& records) {
    Write_file(path, "# The communities at k=3\n" + kHead + "\n" + records);
    return Error_of([&] { Read_communities_file(path, numbering); });
  };
  const auto links = [&](const std::string& records) {
    Write_file(path, "# The links inside the communities at k=3\n" + kHead + "\n" + records);
    return Error_of([&] { Read_community_links_file(path, numbering); });
  };
  const auto cliques = [&](const std::string& records) {
    Write_file(path,
               "# The contained cliques in the communities at k=3\n" + kHead + "\n" + records);
    return Error_of([&] { Read_community_cliques_file(path); });
  };
  const std::string at5 = "ERROR: " + path + ", line 5: ";
  const std::string at6 = "ERROR: " + path + ", line 6: ";
  EXPECT_EQ(communities("a b c \n"),
            at5 + "expected a community number followed by \":\", found \"a\"");
  EXPECT_EQ(communities("0: a b \n0: c d \n"),
            at6 + "expected community number 1 (or -1), found \"0:\"");
  EXPECT_EQ(links("a b\n"),
            at5 + "expected a community number followed by \":\" before the first link");
  EXPECT_EQ(links("0:\na b c\n"),
            at6 +
                "expected a community number followed by \":\", or a link of two node names; "
                "found 3 fields");
  EXPECT_EQ(links("0:\na a\n"), at6 + "a link from a node to itself");
  EXPECT_EQ(links("0: a\n"),
            at5 + "expected a community number followed by \":\" before the first link");
  EXPECT_EQ(links("x:\n"), at5 + "expected a community number followed by \":\", found \"x:\"");
  EXPECT_EQ(cliques("0: 1 -2 \n"),
            at5 +
                "a negative clique number (\"-2\") in an exact community, where none is "
                "allowed");
  EXPECT_EQ(cliques("-0: 1 -2 \n-1: 3 \n"),
            at6 + "exact clique 3 is not below approximate clique -2");
  EXPECT_EQ(cliques("0: 1 x \n"), at5 + "expected a clique number, found \"x\"");
  EXPECT_EQ(cliques("0: 1 +2 \n"), at5 + "expected a clique number, found \"+2\"");
  // Header faults.
  Write_file(path, "# The communities at k=-3\n" + kHead + "\n");
  EXPECT_EQ(Error_of([&] { Read_communities_file(path, numbering); }),
            "ERROR: " + path +
                ", line 1: expected \"# The [flag ]communities at k=<k>\" as the "
                "first line");
  Write_file(path, "# The communities at k=3\n" + kHead + "0: a b \n");
  EXPECT_EQ(Error_of([&] { Read_communities_file(path, numbering); }),
            "ERROR: " + path + ", line 4: expected the empty line that closes the header");
  Write_file(path, "# The communities at k=3\n from x\n\n");
  EXPECT_EQ(Error_of([&] { Read_communities_file(path, numbering); }),
            "ERROR: " + path + ", line 2: expected \"#\" and the run description");
}

}  // namespace
}  // namespace kcp
