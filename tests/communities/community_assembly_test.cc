#include "communities/community_assembly.h"

#include <gtest/gtest.h>

#include <random>
#include <set>
#include <string>

namespace kcp {
namespace {

// The nodes and the distinct pairs of the members, as ordered sets.
void Expected(const CliqueIndexList& members, const CliqueList& cliques, NodeList& nodes,
              LinkList& links) {
  std::set<NodeIndex> node_set;
  std::set<Link> link_set;
  for (const std::uint32_t m : members) {
    if (m >= cliques.size()) continue;
    const Clique& clique = cliques[m];
    for (std::size_t a = 0; a < clique.size(); ++a) {
      node_set.insert(clique[a]);
      for (std::size_t b = a + 1; b < clique.size(); ++b) link_set.emplace(clique[a], clique[b]);
    }
  }
  nodes.assign(node_set.begin(), node_set.end());
  links.assign(link_set.begin(), link_set.end());
}

// Few small cliques take the pair buckets; many large overlapping ones the bit matrix. One
// object assembles every community in turn, as percolation uses it.
TEST(CommunityAssembly, NodesAndDistinctLinksOfSmallAndOfManyLargeCliques) {
  CommunityAssembly assembly;
  for (std::uint32_t seed = 1; seed <= 40; ++seed) {
    std::mt19937 random(seed);
    const bool large = seed % 2 == 0;
    const NodeIndex span = large ? 150 + seed : 30;
    CliqueList cliques;
    for (int c = 0; c < (large ? 40 : 6); ++c) {
      Clique clique;
      for (NodeIndex v = 1 + seed; v <= span + seed; ++v) {
        if (random() % 100 < (large ? 70u : 10u)) clique.push_back(v);
      }
      cliques.push_back(clique);
    }
    CliqueIndexList members;
    for (std::uint32_t m = 0; m < cliques.size() + 2; ++m) {
      if (random() % 3 != 0) members.push_back(m);  // positions past the list have no nodes
    }
    NodeList nodes;
    LinkList links;
    NodeList expected_nodes;
    LinkList expected_links;
    assembly.Assemble(members, cliques, nodes, links);
    Expected(members, cliques, expected_nodes, expected_links);
    EXPECT_EQ(nodes, expected_nodes) << "seed " << seed;
    EXPECT_EQ(links, expected_links) << "seed " << seed;
  }
}

}  // namespace
}  // namespace kcp
