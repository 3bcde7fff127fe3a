#include "graph/graph_output.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "tests/support/test_dir.h"

namespace kcp {
namespace {

using testing::Read_file;
using testing::Test_dir;

const std::string kBase =
    " from /data/net.txt\n"
    "# at a lower link weight threshold of 0.100000,\n"
    "# and at no upper link weight threshold.\n"
    "# Links were treated as undirected.\n"
    "# No time limit was set for the clique search.\n";

TEST(GraphOutput, EmptyLinksGiveTheHeaderOnly) {
  Test_dir dir;
  Kiir_graph(LinkMap{}, dir / "res", false, kBase, true);
  EXPECT_EQ(Read_file(dir / "res/graph"),
            "# The links from /data/net.txt\n"
            "# at a lower link weight threshold of 0.100000,\n"
            "# and at no upper link weight threshold.\n"
            "# Links were treated as undirected.\n"
            "# No time limit was set for the clique search.\n"
            "# (mutual links and self-links were removed)\n"
            "\n");
}

TEST(GraphOutput, DirectedRunWritesOnlyTheDirectedFile) {
  Test_dir dir;
  const LinkMap links{{{"b", "a"}, 1.0}, {{"a", "b"}, 2.0}};
  Kiir_graph(links, dir / "res", true, " from x\n", false);
  EXPECT_EQ(Read_file(dir / "res/directed_graph"),
            "# The links from x\n"
            "# (self-links were removed)\n"
            "\n"
            "a b\n"
            "b a\n");
  EXPECT_FALSE(std::filesystem::exists(dir / "res/graph"));

  Test_dir other;
  Kiir_graph(links, other / "res", false, " from x\n", false);
  EXPECT_EQ(Read_file(other / "res/graph"),
            "# The links from x\n"
            "# (mutual links and self-links were removed)\n"
            "\n"
            "a b\n"
            "b a\n");
  EXPECT_FALSE(std::filesystem::exists(other / "res/directed_graph"));
}

TEST(GraphOutput, WeightsInShortestSixDigitForm) {
  Test_dir dir;
  const LinkMap links{{{"a", "b"}, 0.15},      {{"a", "c"}, 2.0},      {{"a", "d"}, 2e6},
                      {{"a", "e"}, 1234567.0}, {{"a", "f"}, 0.0001},   {{"a", "g"}, 0.00001},
                      {{"a", "h"}, 123456.0},  {{"a", "i"}, -0.5},     {{"a", "j"}, 0.0},
                      {{"a", "k"}, 1.0 / 3.0}, {{"a", "l"}, 999999.5}, {{"a", "m"}, 1.5e-7}};
  Kiir_graph(links, dir.path(), false, " from y\n", true);
  EXPECT_EQ(Read_file(dir / "graph"),
            "# The links from y\n"
            "# (mutual links and self-links were removed)\n"
            "\n"
            "a b 0.15\n"
            "a c 2\n"
            "a d 2e+06\n"
            "a e 1.23457e+06\n"
            "a f 0.0001\n"
            "a g 1e-05\n"
            "a h 123456\n"
            "a i -0.5\n"
            "a j 0\n"
            "a k 0.333333\n"
            "a l 1e+06\n"
            "a m 1.5e-07\n");
}

TEST(GraphOutput, NamesAsReadInByteOrder) {
  Test_dir dir;
  const std::string accented = "\xc3\xa9";
  const LinkMap links{{{"#x", "y"}, 1.0}, {{"B", accented}, 1.0}, {{"a", "#"}, 1.0}};
  Kiir_graph(links, dir.path(), true, " from z\n", false);
  EXPECT_EQ(Read_file(dir / "directed_graph"),
            "# The links from z\n"
            "# (self-links were removed)\n"
            "\n"
            "#x y\n"
            "B " +
                accented +
                "\n"
                "a #\n");
}

TEST(GraphOutput, BaseTextEndingWithAFullStopRunsIntoTheNextLine) {
  Test_dir dir;
  Kiir_graph(LinkMap{{{"p", "q"}, 0.5}}, dir.path(), false,
             " from w\n# The communities were extracted solely at k=4\n.", true);
  EXPECT_EQ(Read_file(dir / "graph"),
            "# The links from w\n"
            "# The communities were extracted solely at k=4\n"
            ".# (mutual links and self-links were removed)\n"
            "\n"
            "p q 0.5\n");
}

TEST(GraphOutput, OverwritesAnEarlierFileAndKeepsTheDirectory) {
  Test_dir dir;
  testing::Write_file(dir / "keep.txt", "mine");
  testing::Write_file(dir / "graph", std::string(5000, 'o'));
  Kiir_graph(LinkMap{}, dir.path(), false, "", false);
  EXPECT_EQ(Read_file(dir / "graph"),
            "# The links# (mutual links and self-links were removed)\n\n");
  EXPECT_EQ(Read_file(dir / "keep.txt"), "mine");
}

}  // namespace
}  // namespace kcp
