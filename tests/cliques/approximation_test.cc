#include "cliques/approximation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "graph/vertex_map.h"

namespace kcp {
namespace {

VtxMap Core_of(const std::vector<std::pair<NodeIndex, NodeIndex>>& links,
               const std::vector<NodeIndex>& isolated = {}) {
  IndexLinkMap index_links;
  for (const auto& [a, b] : links) index_links[{std::min(a, b), std::max(a, b)}] = 1.0;
  VtxMap core;
  Vtx_map_from_link_map(core, index_links);
  for (const NodeIndex& n : isolated) core.try_emplace(n, n);
  return core;
}

TEST(Approximation, DirectedCoreUsesAllLinkedNodes) {
  IndexLinkMap links{{{1, 2}, 1.0}, {{2, 3}, 1.0}, {{3, 1}, 1.0}, {{4, 1}, 1.0}};
  VtxdMap core;
  Dir_vtx_map_from_link_map(core, links);
  CliqueList approximate;
  Appr_core_cliques(core, {}, approximate);
  // N(1)={2,3,4}, N(2)={1,3}, N(3)={1,2}, N(4)={1} (inside N(2)).
  EXPECT_EQ(approximate, (CliqueList{{2, 3, 4}, {1, 3}, {1, 2}}));
}

bool Subset(const Clique& a, const Clique& b) {
  return std::includes(b.begin(), b.end(), a.begin(), a.end());
}

// The steps as described, with plain quadratic scans.
CliqueList Reference_approximation(const VtxMap& core, const CliqueList& exact) {
  CliqueList candidates;
  for (const auto& [n, vertex] : core) {
    Clique s(vertex.Neighs_c().begin(), vertex.Neighs_c().end());
    bool drop = false;
    for (const Clique& c : candidates) drop = drop || Subset(s, c);
    for (const Clique& c : exact) drop = drop || Subset(s, c);
    if (!drop) candidates.push_back(s);
  }
  CliqueList out;
  for (std::size_t a = 0; a < candidates.size(); ++a) {
    bool marked = false;
    for (std::size_t b = 0; b < candidates.size(); ++b) {
      marked = marked || (a != b && Subset(candidates[a], candidates[b]));
    }
    if (!marked) out.push_back(candidates[a]);
  }
  return out;
}

TEST(Approximation, AgreesWithPlainScansOnRandomCores) {
  std::mt19937 random(7);
  for (int round = 0; round < 200; ++round) {
    const NodeIndex n = 2 + random() % 9;
    std::vector<std::pair<NodeIndex, NodeIndex>> links;
    std::vector<NodeIndex> isolated;
    for (NodeIndex a = 1; a <= n; ++a) {
      for (NodeIndex b = a + 1; b <= n; ++b) {
        if (random() % 100 < 55) links.emplace_back(a, b);
      }
      if (random() % 4 == 0) isolated.push_back(a);
    }
    const VtxMap core = Core_of(links, isolated);
    CliqueList exact;
    for (int e = random() % 4; e > 0; --e) {
      Clique c;
      for (NodeIndex a = 1; a <= n + 2; ++a) {
        if (random() % 2) c.push_back(a);
      }
      exact.push_back(c);
    }
    CliqueList approximate;
    Appr_core_cliques(core, exact, approximate);
    EXPECT_EQ(approximate, Reference_approximation(core, exact)) << "round " << round;
  }
}

TEST(ExtendCliqueVec, AgreesWithPlainScansOnRandomLists) {
  std::mt19937 random(5);
  auto random_list = [&](int most) {
    CliqueList list(random() % (most + 1));
    for (Clique& c : list) {
      for (NodeIndex n = 1; n <= 8; ++n) {
        if (random() % 3 == 0) c.push_back(n);
      }
    }
    return list;
  };
  for (int round = 0; round < 300; ++round) {
    CliqueList cliques = random_list(8);
    CliqueList approximate = random_list(5);

    CliqueList kept_approximate;
    for (const Clique& a : approximate) {
      bool inside = false;
      for (const Clique& e : cliques) inside = inside || Subset(a, e);
      if (!inside) kept_approximate.push_back(a);
    }
    CliqueList expected;
    for (const Clique& e : cliques) {
      bool inside = false;
      for (const Clique& a : kept_approximate) inside = inside || Subset(e, a);
      if (!inside) expected.push_back(e);
    }
    const std::uint32_t expected_exact = static_cast<std::uint32_t>(expected.size());
    expected.insert(expected.end(), kept_approximate.begin(), kept_approximate.end());

    std::uint32_t n_exact = 99;
    Extend_clique_vec(cliques, n_exact, approximate);
    EXPECT_EQ(cliques, expected) << "round " << round;
    EXPECT_EQ(n_exact, expected_exact) << "round " << round;
    EXPECT_EQ(approximate, kept_approximate) << "round " << round;
  }
}

}  // namespace
}  // namespace kcp
