#include "communities/community_files.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "tests/support/test_dir.h"

namespace kcp {
namespace {

using testing::Read_file;
using testing::Test_dir;

const std::string kAlap = " from net.txt\n# lower link weight threshold: 0.2\n";
const std::string kHead = "# from net.txt\n# lower link weight threshold: 0.2\n";

NameMap Names() {
  return {{1, "a"}, {2, "b"}, {3, "c"}, {4, "dd"}, {5, "e"}};
}

TEST(CommunityFiles, CommunitiesFileListsNamesWithTrailingBlanks) {
  Test_dir dir;
  NameMap names = Names();
  Kiir_coms_VN({{1, 2, 3}, {3, 4}}, dir.path(), 3, names, 2, "", kAlap);
  EXPECT_EQ(Read_file(dir / "k=3/communities"),
            "# The communities at k=3\n" + kHead + "\n0: a b c \n1: c dd \n");
}

TEST(CommunityFiles, ApproximateCommunitiesContinueTheNumberingWithAMinus) {
  Test_dir dir;
  NameMap names = Names();
  Kiir_coms_VN({{1, 2}, {2, 3}, {4, 5}}, dir.path(), 4, names, 2, "directed", kAlap);
  EXPECT_EQ(Read_file(dir / "k=4/directed_communities"),
            "# The directed communities at k=4\n" + kHead +
                "# Negative indices indicate approximate communities.\n\n0: a b \n1: b c \n"
                "-2: dd e \n");
  Kiir_coms_VN({{1, 2}}, dir.path(), 4, names, 0, "", kAlap);
  EXPECT_EQ(Read_file(dir / "k=4/communities"),
            "# The communities at k=4\n" + kHead +
                "# Negative indices indicate approximate communities.\n\n-0: a b \n");
}

TEST(CommunityFiles, MissingNameIsWrittenEmpty) {
  Test_dir dir;
  NameMap names = Names();
  Kiir_coms_VN({{2, 9}}, dir.path(), 3, names, 1, "", kAlap);
  EXPECT_EQ(Read_file(dir / "k=3/communities"),
            "# The communities at k=3\n" + kHead + "\n0: b  \n");
}

TEST(CommunityFiles, LinksAreWrittenInTheDirectionTheyWereRead) {
  Test_dir dir;
  NameMap names = Names();
  // (2,3) was read only as 3 -> 2; (1,2) as it is.
  const IndexLinkMap links{{{1, 2}, 1.0}, {{3, 2}, 1.0}, {{4, 5}, 0.5}, {{5, 4}, 0.7}};
  Kiir_com_links_VN({{{1, 2}, {2, 3}}, {{4, 5}}}, dir.path(), 3, names, 1, "intensity", kAlap,
                    links);
  EXPECT_EQ(Read_file(dir / "k=3/intensity_communities_links"),
            "# The links inside the intensity communities at k=3\n" + kHead +
                "\n0:\na b\nc b\n-1:\ndd e\n");
}

TEST(CommunityFiles, CliquesFileMarksApproximateCliquesOnlyInApproximateCommunities) {
  Test_dir dir;
  // Four exact cliques; the exact community's 5 is written as it is.
  Kiir_coms_cliques_VN({{0, 2, 5}, {1, 4, 3}, {6}}, dir.path(), 5, 1, 4, "", kAlap);
  EXPECT_EQ(Read_file(dir / "k=5/communities_cliques"),
            "# The contained cliques in the communities at k=5\n" + kHead +
                "\n0: 0 2 5 \n-1: 1 -4 3 \n-2: -6 \n");
  Kiir_coms_cliques_VN({{7}}, dir.path(), 5, 1, 4, "directed", kAlap);
  EXPECT_EQ(Read_file(dir / "k=5/directed_communities_cliques"),
            "# The contained directed cliques in the directed communities at k=5\n" + kHead +
                "\n0: 7 \n");
}

TEST(CommunityFiles, EmptyListsWriteTheHeadersOnly) {
  Test_dir dir;
  NameMap names = Names();
  Kiir_coms_VN({}, dir.path(), 3, names, 0, "", kAlap);
  Kiir_com_links_VN({}, dir.path(), 3, names, 0, "", kAlap, {});
  Kiir_coms_cliques_VN({}, dir.path(), 3, 0, 0, "", kAlap);
  EXPECT_EQ(Read_file(dir / "k=3/communities"), "# The communities at k=3\n" + kHead + "\n");
  EXPECT_EQ(Read_file(dir / "k=3/communities_links"),
            "# The links inside the communities at k=3\n" + kHead + "\n");
  EXPECT_EQ(Read_file(dir / "k=3/communities_cliques"),
            "# The contained cliques in the communities at k=3\n" + kHead + "\n");
}

TEST(CommunityFiles, ExistingFilesAreReplacedAndOtherContentKept) {
  Test_dir dir;
  std::filesystem::create_directories(dir / "k=12");
  testing::Write_file(dir / "k=12/communities", "old content that is longer than the new one\n");
  testing::Write_file(dir / "k=12/other", "stays");
  NameMap names = Names();
  Kiir_coms_VN({{5}}, dir.path(), 12, names, 1, "", "\n");
  EXPECT_EQ(Read_file(dir / "k=12/communities"), "# The communities at k=12\n#\n\n0: e \n");
  EXPECT_EQ(Read_file(dir / "k=12/other"), "stays");
}

}  // namespace
}  // namespace kcp
