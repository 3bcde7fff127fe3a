#include "graph/node_index.h"

#include <gtest/gtest.h>

#include <string>

#include "graph/link_reader.h"
#include "tests/support/test_dir.h"

namespace kcp {
namespace {

TEST(NodeIndex, EmptyLinksClearBothOutputs) {
  IndexLinkMap out{{{4, 5}, 1.0}};
  NameMap names{{1, "old"}};
  Convert_s_links(out, names, LinkMap{}, false);
  EXPECT_TRUE(out.empty());
  EXPECT_TRUE(names.empty());
}

TEST(NodeIndex, NumbersNamesByFirstAppearanceInKeyOrder) {
  // Key order: (b, a), (c, b): b first as a source, then a as its target, then c.
  const LinkMap links{{{"c", "b"}, 0.0}, {{"b", "a"}, 0.0}};
  IndexLinkMap out;
  NameMap names;
  Convert_s_links(out, names, links, true);
  EXPECT_EQ(names, (NameMap{{1, "b"}, {2, "a"}, {3, "c"}}));
  EXPECT_EQ(out, (IndexLinkMap{{{1, 2}, 0.0}, {{3, 1}, 0.0}}));

  Convert_s_links(out, names, links, false);
  EXPECT_EQ(names, (NameMap{{1, "b"}, {2, "a"}, {3, "c"}}));
  EXPECT_EQ(out, (IndexLinkMap{{{1, 2}, 0.0}, {{1, 3}, 0.0}}));
}

TEST(NodeIndex, ReciprocalLinksFoldOnlyWhenUndirected) {
  const LinkMap links{{{"a", "b"}, 1.0}, {{"b", "a"}, 2.0}};
  IndexLinkMap out;
  NameMap names;
  Convert_s_links(out, names, links, false);
  EXPECT_EQ(out, (IndexLinkMap{{{1, 2}, 3.0}}));
  EXPECT_EQ(names, (NameMap{{1, "a"}, {2, "b"}}));

  Convert_s_links(out, names, links, true);
  EXPECT_EQ(out, (IndexLinkMap{{{1, 2}, 1.0}, {{2, 1}, 2.0}}));

  // Unweighted input folds to 0.0.
  Convert_s_links(out, names, LinkMap{{{"a", "b"}, 0.0}, {{"b", "a"}, 0.0}}, false);
  EXPECT_EQ(out, (IndexLinkMap{{{1, 2}, 0.0}}));
}

TEST(NodeIndex, IndicesAreDenseAndUndirectedKeysAscend) {
  LinkMap links;
  const std::string names_in[] = {"k", "B", "z", "a", "#", "m", "\xc3\xa9"};
  for (const std::string& s : names_in) {
    for (const std::string& t : names_in) {
      if (s != t && (s.size() + t.size() + s[0] + t[0]) % 3 != 0) links[{s, t}] = 1.0;
    }
  }
  IndexLinkMap out;
  NameMap names;
  Convert_s_links(out, names, links, false);
  ASSERT_EQ(names.size(), 7u);
  NodeIndex expected = 1;
  for (const auto& [index, name] : names) EXPECT_EQ(index, expected++);
  for (const auto& [key, weight] : out) {
    EXPECT_LT(key.first, key.second);
    EXPECT_GE(key.first, 1u);
    EXPECT_LE(key.second, 7u);
  }
  // The first key of the LinkMap gives indices 1 and 2.
  EXPECT_EQ(names.at(1), links.begin()->first.first);
  EXPECT_EQ(names.at(2), links.begin()->first.second);
}

TEST(NodeIndex, IndicesDependOnlyOnTheSortedLinks) {
  testing::Test_dir dir;
  testing::Write_file(dir / "one", "x y 1\nb a 2\ny b 3\n");
  testing::Write_file(dir / "two", "y b 3\nx y 1\nb a 2\n");
  LinkMap first;
  LinkMap second;
  Read_weighted_links(dir / "one", first, false, 0, false, 0);
  Read_weighted_links(dir / "two", second, false, 0, false, 0);
  IndexLinkMap out1;
  IndexLinkMap out2;
  NameMap names1;
  NameMap names2;
  Convert_s_links(out1, names1, first, false);
  Convert_s_links(out2, names2, second, false);
  EXPECT_EQ(names1, (NameMap{{1, "b"}, {2, "a"}, {3, "x"}, {4, "y"}}));
  EXPECT_EQ(names1, names2);
  EXPECT_EQ(out1, (IndexLinkMap{{{1, 2}, 2.0}, {{1, 4}, 3.0}, {{3, 4}, 1.0}}));
  EXPECT_EQ(out1, out2);
}

}  // namespace
}  // namespace kcp
