#include "graph/vertex_map.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <string>

#include "core/xerror_msg.h"

namespace kcp {
namespace {

// The nodes by ascending size of their set, ties by index.
NodeOrder Order_by(const std::map<NodeIndex, NodeSet>& sets, const std::vector<NodeIndex>& nodes) {
  NodeOrder order(nodes.begin(), nodes.end());
  std::stable_sort(order.begin(), order.end(), [&](NodeIndex a, NodeIndex b) {
    const std::size_t sa = sets.count(a) ? sets.at(a).size() : 0;
    const std::size_t sb = sets.count(b) ? sets.at(b).size() : 0;
    return sa != sb ? sa < sb : a < b;
  });
  return order;
}

TEST(VertexMap, RecordsAndOrdersFollowTheLinksOnRandomGraphs) {
  std::mt19937 random(31);
  for (int round = 0; round < 200; ++round) {
    IndexLinkMap undirected, directed;
    std::map<NodeIndex, NodeSet> neighs, out, in, all;
    for (int l = random() % 20; l > 0; --l) {
      const NodeIndex a = 1 + random() % 9, b = 1 + random() % 9;
      if (a == b) continue;
      directed[{a, b}] = 1.0;
      out[a].insert(b), in[b].insert(a), all[a].insert(b), all[b].insert(a);
      undirected[{std::min(a, b), std::max(a, b)}] = 0.5;
      neighs[a].insert(b), neighs[b].insert(a);
    }
    std::vector<NodeIndex> nodes;
    for (const auto& [n, set] : all) nodes.push_back(n);

    VtxMap vertices{{42, Vtx(42)}};  // stale content is cleared
    Vtx_map_from_link_map(vertices, undirected);
    ASSERT_EQ(vertices.size(), nodes.size());
    for (const NodeIndex n : nodes) {
      ASSERT_EQ(vertices.at(n).Index(), n);
      ASSERT_EQ(vertices.at(n).Neighs_c(), neighs[n]) << "round " << round;
      ASSERT_TRUE(vertices.at(n).Inc_neighs_c().empty());
    }
    NodeOrder order{9, 9, 9};
    Sort_Vtx_map(order, vertices);
    ASSERT_EQ(order, Order_by(neighs, nodes)) << "round " << round;

    VtxdMap dvertices{{42, Vtxd(42)}};
    Dir_vtx_map_from_link_map(dvertices, directed);
    ASSERT_EQ(dvertices.size(), nodes.size());
    for (const NodeIndex n : nodes) {
      ASSERT_EQ(dvertices.at(n).Oneighs_c(), out[n]) << "round " << round;
      ASSERT_EQ(dvertices.at(n).Ineighs_c(), in[n]) << "round " << round;
      ASSERT_EQ(dvertices.at(n).Neighs_c(), all[n]) << "round " << round;
    }
    for (const auto& [flag, sets] :
         {std::pair{"Oneighs", &out}, {"Ineighs", &in}, {"Neighs", &all}}) {
      Sort_dir_vtx_map(order, dvertices, flag);
      ASSERT_EQ(order, Order_by(*sets, nodes)) << flag << " round " << round;
    }
  }
}

TEST(VertexMap, MisuseIsRefusedWithItsMessage) {
  VtxMap vertices;
  try {
    Vtx_map_from_link_map(vertices, IndexLinkMap{{{1, 2}, 0.0}, {{2, 1}, 0.0}});
    ADD_FAILURE() << "no error";
  } catch (const Xerror_msg& e) {
    EXPECT_EQ(std::string(e.what()),
              "ERROR: Vtx::Add_neigh() : attempt to add already exisiting neigh. ");
  }
  VtxdMap directed;
  Dir_vtx_map_from_link_map(directed, IndexLinkMap{{{1, 2}, 0.0}});
  for (const std::string flag : {"neighs", "", "Neighs ", "NEIGHS"}) {
    NodeOrder order{7, 8};
    try {
      Sort_dir_vtx_map(order, directed, flag);
      ADD_FAILURE() << "no error for '" << flag << "'";
    } catch (const Xerror_msg& e) {
      EXPECT_EQ(std::string(e.what()), " Invalid flag '" + flag + "' given in Sort_vtxd_gmap...\n");
    }
    EXPECT_EQ(order, (NodeOrder{7, 8}));
  }
}

}  // namespace
}  // namespace kcp
