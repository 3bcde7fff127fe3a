#include "graph/vertex_map.h"

#include <gtest/gtest.h>

#include <string>

#include "core/xerror_msg.h"

namespace kcp {
namespace {

TEST(VertexMap, EmptyLinksGiveEmptyMapsAndOrders) {
  VtxMap vertices{{3, Vtx(3)}};
  Vtx_map_from_link_map(vertices, IndexLinkMap{});
  EXPECT_TRUE(vertices.empty());
  VtxdMap directed{{3, Vtxd(3)}};
  Dir_vtx_map_from_link_map(directed, IndexLinkMap{});
  EXPECT_TRUE(directed.empty());

  NodeOrder order{1, 2};
  Sort_Vtx_map(order, vertices);
  EXPECT_TRUE(order.empty());
  order = {1, 2};
  Sort_dir_vtx_map(order, directed, "Neighs");
  EXPECT_TRUE(order.empty());
}

TEST(VertexMap, UndirectedRecordsAndOrderByDegreeThenIndex) {
  const IndexLinkMap links{{{1, 2}, 0.5}, {{1, 3}, 0.0}, {{1, 4}, 0.0}, {{2, 3}, 0.0}};
  VtxMap vertices;
  Vtx_map_from_link_map(vertices, links);
  ASSERT_EQ(vertices.size(), 4u);
  EXPECT_EQ(vertices.at(1).Neighs_c(), (NodeSet{2, 3, 4}));
  EXPECT_EQ(vertices.at(2).Neighs_c(), (NodeSet{1, 3}));
  EXPECT_EQ(vertices.at(3).Neighs_c(), (NodeSet{1, 2}));
  EXPECT_EQ(vertices.at(4).Neighs_c(), NodeSet{1});
  for (const auto& [index, vtx] : vertices) {
    EXPECT_EQ(vtx.Index(), index);
    EXPECT_EQ(vtx.Name(), "0");
    EXPECT_TRUE(vtx.Inc_neighs_c().empty());
  }
  NodeOrder order{9, 9, 9, 9, 9, 9};
  Sort_Vtx_map(order, vertices);
  EXPECT_EQ(order, (NodeOrder{4, 2, 3, 1}));
}

TEST(VertexMap, OnlyLinkedNodesGetRecords) {
  VtxMap vertices;
  Vtx_map_from_link_map(vertices, IndexLinkMap{{{2, 7}, 0.0}, {{5, 7}, 0.0}});
  ASSERT_EQ(vertices.size(), 3u);
  EXPECT_EQ(vertices.count(1), 0u);
  NodeOrder order;
  Sort_Vtx_map(order, vertices);
  EXPECT_EQ(order, (NodeOrder{2, 5, 7}));
}

TEST(VertexMap, UndirectedBuilderRefusesBothDirections) {
  VtxMap vertices;
  try {
    Vtx_map_from_link_map(vertices, IndexLinkMap{{{1, 2}, 0.0}, {{2, 1}, 0.0}});
    ADD_FAILURE() << "no error";
  } catch (const Xerror_msg& e) {
    EXPECT_EQ(std::string(e.what()),
              "ERROR: Vtx::Add_neigh() : attempt to add already exisiting neigh. ");
  }
}

TEST(VertexMap, DirectedRecordsKeepBothDirections) {
  VtxdMap vertices;
  Dir_vtx_map_from_link_map(vertices, IndexLinkMap{{{1, 2}, 1.0}, {{2, 1}, 1.0}, {{3, 1}, 0.0}});
  ASSERT_EQ(vertices.size(), 3u);
  const Vtxd& one = vertices.at(1);
  EXPECT_EQ(one.Oneighs_c(), NodeSet{2});
  EXPECT_EQ(one.Ineighs_c(), (NodeSet{2, 3}));
  EXPECT_EQ(one.Neighs_c(), (NodeSet{2, 3}));
  EXPECT_EQ(vertices.at(3).Oneighs_c(), NodeSet{1});
  EXPECT_TRUE(vertices.at(3).Ineighs_c().empty());
  for (const auto& [index, vtx] : vertices) {
    EXPECT_EQ(vtx.Index(), index);
    EXPECT_EQ(vtx.Name(), "0");
    EXPECT_TRUE(vtx.Inc_neighs_c().empty());
  }

  VtxdMap pair;
  Dir_vtx_map_from_link_map(pair, IndexLinkMap{{{1, 2}, 0.0}, {{2, 1}, 0.0}});
  NodeOrder order;
  Sort_dir_vtx_map(order, pair, "Neighs");
  EXPECT_EQ(order, (NodeOrder{1, 2}));
  EXPECT_EQ(pair.at(1).Neighs_c().size(), 1u);
}

TEST(VertexMap, DirectedOrderFollowsTheChosenSet) {
  // out-degrees 1:2 2:1 3:0 4:1, in-degrees 1:1 2:1 3:2 4:0, degrees 1:3 2:2 3:2 4:1.
  VtxdMap vertices;
  Dir_vtx_map_from_link_map(
      vertices, IndexLinkMap{{{1, 2}, 0.0}, {{1, 3}, 0.0}, {{2, 3}, 0.0}, {{4, 1}, 0.0}});
  NodeOrder order;
  Sort_dir_vtx_map(order, vertices, "Oneighs");
  EXPECT_EQ(order, (NodeOrder{3, 2, 4, 1}));
  Sort_dir_vtx_map(order, vertices, "Ineighs");
  EXPECT_EQ(order, (NodeOrder{4, 1, 2, 3}));
  Sort_dir_vtx_map(order, vertices, "Neighs");
  EXPECT_EQ(order, (NodeOrder{4, 2, 3, 1}));
}

TEST(VertexMap, UnknownFlagThrowsAndLeavesTheOrder) {
  VtxdMap vertices;
  Dir_vtx_map_from_link_map(vertices, IndexLinkMap{{{1, 2}, 0.0}});
  for (const std::string flag : {"neighs", "", "Neighs ", "NEIGHS"}) {
    NodeOrder order{7, 8};
    try {
      Sort_dir_vtx_map(order, vertices, flag);
      ADD_FAILURE() << "no error for '" << flag << "'";
    } catch (const Xerror_msg& e) {
      EXPECT_EQ(std::string(e.what()), " Invalid flag '" + flag + "' given in Sort_vtxd_gmap...\n");
    }
    EXPECT_EQ(order, (NodeOrder{7, 8}));
  }
}

}  // namespace
}  // namespace kcp
