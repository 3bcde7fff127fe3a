#include "cliques/approximation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "graph/vertex_map.h"

namespace kcp {
namespace {

bool Subset(const Clique& a, const Clique& b) {
  return std::includes(b.begin(), b.end(), a.begin(), a.end());
}

bool Inside_any(const Clique& a, const CliqueList& list) {
  return std::any_of(list.begin(), list.end(), [&](const Clique& b) { return Subset(a, b); });
}

// Each node's neighbourhood unless it lies in an earlier one or in an exact clique; then those
// lying in another, with plain quadratic scans.
CliqueList Reference_approximation(const VtxMap& core, const CliqueList& exact) {
  CliqueList candidates;
  for (const auto& [n, vertex] : core) {
    const Clique s(vertex.Neighs_c().begin(), vertex.Neighs_c().end());
    if (!Inside_any(s, candidates) && !Inside_any(s, exact)) candidates.push_back(s);
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

CliqueList Random_list(std::mt19937& random, const int& most, const NodeIndex& nodes) {
  CliqueList list(random() % (most + 1));
  for (Clique& c : list) {
    for (NodeIndex n = 1; n <= nodes; ++n) {
      if (random() % 3 == 0) c.push_back(n);
    }
  }
  return list;
}

TEST(Approximation, AgreesWithPlainScansOnRandomCoresOfBothKinds) {
  std::mt19937 random(7);
  for (int round = 0; round < 200; ++round) {
    const NodeIndex n = 2 + random() % 9;
    IndexLinkMap links;
    for (NodeIndex a = 1; a <= n; ++a) {
      for (NodeIndex b = a + 1; b <= n; ++b) {
        if (random() % 100 < 55) links[{a, b}] = 1.0;
      }
    }
    VtxMap core;
    Vtx_map_from_link_map(core, links);
    VtxdMap directed_core;
    Dir_vtx_map_from_link_map(directed_core, links);
    for (NodeIndex a = 1; a <= n; ++a) {
      if (random() % 4 == 0) {
        core.try_emplace(a, a);
        directed_core.try_emplace(a, a);
      }
    }
    const CliqueList exact = Random_list(random, 3, n + 2);
    const CliqueList expected = Reference_approximation(core, exact);
    CliqueList approximate{{99}};
    Appr_core_cliques(core, exact, approximate);
    EXPECT_EQ(approximate, expected) << "round " << round;
    Appr_core_cliques(directed_core, exact, approximate);
    EXPECT_EQ(approximate, expected) << "round " << round;
  }
}

TEST(Approximation, StopRequestEndsTheWork) {
  VtxMap core;
  Vtx_map_from_link_map(core, IndexLinkMap{{{1, 2}, 1.0}, {{2, 3}, 1.0}});
  StopRequest stop;
  stop.Request();
  CliqueList approximate;
  EXPECT_THROW(Appr_core_cliques(core, {}, approximate, &stop), Xstopped);
  Appr_core_cliques(core, {}, approximate, nullptr);
  EXPECT_FALSE(approximate.empty());
}

TEST(Approximation, ExtendCliqueVecAgreesWithPlainScansOnRandomLists) {
  std::mt19937 random(5);
  for (int round = 0; round < 300; ++round) {
    CliqueList cliques = Random_list(random, 8, 8);
    CliqueList approximate = Random_list(random, 5, 8);
    CliqueList kept_approximate;
    for (const Clique& a : approximate) {
      if (!Inside_any(a, cliques)) kept_approximate.push_back(a);
    }
    CliqueList expected;
    for (const Clique& e : cliques) {
      if (!Inside_any(e, kept_approximate)) expected.push_back(e);
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
