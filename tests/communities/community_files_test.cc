#include "communities/community_files.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "tests/support/test_dir.h"

namespace kcp {
namespace {

using testing::Read_file;

const std::string kAlap = " from net.txt\n# lower link weight threshold: 0.2\n";
const std::string kHead = "# from net.txt\n# lower link weight threshold: 0.2\n";
const std::string kNote = "# Negative indices indicate approximate communities.\n";

TEST(CommunityFiles, CommunitiesFilesListNamesWithTrailingBlanksAndMinusForApproximateOnes) {
  testing::TestDir dir;
  std::filesystem::create_directories(dir / "k=3");
  testing::Write_file(dir / "k=3/communities", "old content that is longer than the new one\n");
  testing::Write_file(dir / "k=3/other", "stays");
  NameMap names{{1, "a"}, {2, "b"}, {3, "c"}, {4, "dd"}, {5, "e"}};
  const struct {
    CommunityList communities;
    std::uint32_t n_exact;
    std::string flag;
    std::string expected;
  } cases[] = {
      {{{1, 2, 3}, {3, 4}},
       2,
       "",
       "# The communities at k=3\n" + kHead + "\n0: a b c \n1: c dd \n"},
      {{{1, 2}, {2, 3}, {4, 5}},
       2,
       "directed",
       "# The directed communities at k=3\n" + kHead + kNote + "\n0: a b \n1: b c \n-2: dd e \n"},
      {{{1, 2}}, 0, "", "# The communities at k=3\n" + kHead + kNote + "\n-0: a b \n"},
      {{{2, 9}}, 1, "", "# The communities at k=3\n" + kHead + "\n0: b  \n"},
      {{}, 0, "", "# The communities at k=3\n" + kHead + "\n"},
  };
  for (const auto& c : cases) {
    Kiir_coms_VN(c.communities, dir.path(), 3, names, c.n_exact, c.flag, kAlap);
    EXPECT_EQ(Read_file(dir / "k=3/" + (c.flag.empty() ? "" : c.flag + "_") + "communities"),
              c.expected);
  }
  EXPECT_EQ(Read_file(dir / "k=3/other"), "stays");
}

TEST(CommunityFiles, LinksAreWrittenInTheDirectionTheyWereRead) {
  testing::TestDir dir;
  NameMap names{{1, "a"}, {2, "b"}, {3, "c"}, {4, "dd"}, {5, "e"}};
  // (2,3) was read only as 3 -> 2; (1,2) as it is.
  const IndexLinkMap links{{{1, 2}, 1.0}, {{3, 2}, 1.0}, {{4, 5}, 0.5}, {{5, 4}, 0.7}};
  Kiir_com_links_VN({{{1, 2}, {2, 3}}, {{4, 5}}}, dir.path(), 3, names, 1, "intensity", kAlap,
                    links);
  EXPECT_EQ(Read_file(dir / "k=3/intensity_communities_links"),
            "# The links inside the intensity communities at k=3\n" + kHead +
                "\n0:\na b\nc b\n-1:\ndd e\n");
  Kiir_com_links_VN({}, dir.path(), 3, names, 0, "", kAlap, {});
  EXPECT_EQ(Read_file(dir / "k=3/communities_links"),
            "# The links inside the communities at k=3\n" + kHead + "\n");
}

TEST(CommunityFiles, CliquesFileMarksApproximateCliquesOnlyInApproximateCommunities) {
  testing::TestDir dir;
  // Four exact cliques; the exact community's 5 is written as it is.
  Kiir_coms_cliques_VN({{0, 2, 5}, {1, 4, 3}, {6}}, dir.path(), 5, 1, 4, "", kAlap);
  EXPECT_EQ(Read_file(dir / "k=5/communities_cliques"),
            "# The contained cliques in the communities at k=5\n" + kHead +
                "\n0: 0 2 5 \n-1: 1 -4 3 \n-2: -6 \n");
  Kiir_coms_cliques_VN({}, dir.path(), 5, 0, 4, "directed", kAlap);
  EXPECT_EQ(Read_file(dir / "k=5/directed_communities_cliques"),
            "# The contained directed cliques in the directed communities at k=5\n" + kHead + "\n");
}

}  // namespace
}  // namespace kcp
