#include "graph/node_index.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

namespace kcp {
namespace {

// Names numbered from 1 by first appearance over the links in key order (source, then target);
// undirected, a link and its reverse fold into one, smaller index first, weights added.
void Reference(const LinkMap& links, const bool directed, IndexLinkMap& out, NameMap& names) {
  std::map<std::string, NodeIndex> index;
  const auto number = [&](const std::string& name) {
    const auto [at, inserted] = index.emplace(name, static_cast<NodeIndex>(index.size() + 1));
    if (inserted) names[at->second] = name;
    return at->second;
  };
  for (const auto& [key, weight] : links) {
    NodeIndex s = number(key.first);
    NodeIndex t = number(key.second);
    if (!directed && t < s) std::swap(s, t);
    out[{s, t}] += weight;
  }
}

TEST(NodeIndex, NumbersByFirstAppearanceAndFoldsReciprocalLinksWhenUndirected) {
  const std::string pool[] = {"k", "B", "z", "a", "#", "m", "\xc3\xa9", "b"};
  std::mt19937 random(99);
  for (int round = 0; round < 300; ++round) {
    LinkMap links;
    for (int l = random() % 15; l > 0; --l) {
      const std::string& s = pool[random() % 8];
      const std::string& t = pool[random() % 8];
      if (s != t) links[{s, t}] = random() % 2 == 0 ? 0.0 : 0.5 * (1 + random() % 4);
    }
    for (const bool directed : {false, true}) {
      IndexLinkMap out{{{40, 50}, 1.0}}, expected_out;  // stale content is cleared
      NameMap names{{1, "old"}}, expected_names;
      Convert_s_links(out, names, links, directed);
      Reference(links, directed, expected_out, expected_names);
      ASSERT_EQ(names, expected_names) << "round " << round;
      ASSERT_EQ(out, expected_out) << "round " << round << " directed " << directed;
    }
  }
}

}  // namespace
}  // namespace kcp
