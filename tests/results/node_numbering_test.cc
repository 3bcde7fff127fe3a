#include "results/node_numbering.h"

#include <gtest/gtest.h>

#include <string>

namespace kcp {
namespace {

TEST(NodeNumbering, NumbersNamesByFirstAppearanceAndKeepsThemWhenLocked) {
  Node_numbering numbering;
  EXPECT_EQ(numbering.Index("b"), 1u);
  EXPECT_EQ(numbering.Index("a"), 2u);
  EXPECT_EQ(numbering.Index("b"), 1u);
  // Enough names to make the table grow several times; every one keeps its index.
  for (int i = 0; i < 5000; ++i) numbering.Index("n" + std::to_string(i));
  for (int i = 0; i < 5000; ++i) {
    ASSERT_EQ(numbering.Index("n" + std::to_string(i)), static_cast<NodeIndex>(i + 3));
  }
  EXPECT_EQ(numbering.Size(), 5002u);
  numbering.Lock();
  EXPECT_EQ(numbering.Index("a"), 2u);
  EXPECT_EQ(numbering.Index("17"), 0u);
  EXPECT_EQ(numbering.Size(), 5002u);
  const NameMap names = numbering.Name_map();
  EXPECT_EQ(names.size(), 5002u);
  EXPECT_EQ(names.at(1), "b");
  EXPECT_EQ(names.at(5002), "n4999");
}

}  // namespace
}  // namespace kcp
