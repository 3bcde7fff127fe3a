#include "graph/vtx.h"

#include <gtest/gtest.h>

#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "core/xerror_msg.h"

namespace kcp {
namespace {

// Runs `action`, expects Xerror_msg with exactly `text`.
template <typename Action>
void Expect_error(const std::string& text, Action action) {
  try {
    action();
    ADD_FAILURE() << "no error, expected: " << text;
  } catch (const Xerror_msg& e) {
    EXPECT_EQ(std::string(e.what()), text);
  }
}

NodeSet Union(const NodeSet& a, const NodeSet& b) {
  NodeSet u = a;
  u.insert(b.begin(), b.end());
  return u;
}

TEST(Vtx, MisuseIsRefusedWithItsMessageAndLeavesTheRecord) {
  Vtx v(1, NodeSet{2, 3, 4});
  v.Add_inc_neigh(0, 3);
  v.Add_inc_neigh(1, 4);
  const std::string add = "ERROR: Vtx::Add_inc_neigh() : ";
  Expect_error("ERROR: Vtx::Add_neigh() : attempt to add already exisiting neigh. ",
               [&] { v.Add_neigh(2); });
  Expect_error(add + "vec_ind too large", [&] { v.Add_inc_neigh(3, 2); });
  Expect_error(add + "new ind. neigh. is not a neigh.", [&] { v.Add_inc_neigh(0, 9); });
  Expect_error("ERROR: Vtx::Remove_inc_neigh() : vec_ind too large",
               [&] { v.Remove_inc_neigh(2, 3); });
  Expect_error("ERROR: Vtx::Remove_inc_neigh() : attempt to remove a non-existing inc. neigh.",
               [&] { v.Remove_inc_neigh(0, 2); });
  EXPECT_EQ(v.Inc_neighs_c(), (std::vector<NodeSet>{NodeSet{3}, NodeSet{4}}));
  // Removing a neighbour clears it from every set but keeps the emptied sets.
  v.Remove_neigh(3);
  EXPECT_EQ(v.Neighs_c(), (NodeSet{2, 4}));
  EXPECT_EQ(v.Inc_neighs_c(), (std::vector<NodeSet>{NodeSet{}, NodeSet{4}}));
  Expect_error("ERROR: Vtx::Remove_neigh() : attempt to remove a non-existing neigh.",
               [&] { v.Remove_neigh(3); });
}

TEST(Vtxd, AssigningAVtxMakesEveryNeighbourBothWaysAndKeepsTheOldNeighs) {
  Vtxd d(1, NodeSet{7}, NodeSet{8}, "d");
  d = Vtx(3, NodeSet{2}, "u");
  EXPECT_EQ(d.Oneighs_c(), NodeSet{2});
  EXPECT_EQ(d.Ineighs_c(), NodeSet{2});
  EXPECT_EQ(d.Neighs_c(), (NodeSet{2, 7, 8}));
  EXPECT_EQ(d.Name(), "u");
}

// Random mixes of the adders and removers keep neighs the union of the in- and out-neighbours.
TEST(Vtxd, MutatorsKeepNeighsTheUnionOfInAndOut) {
  std::mt19937 random(12345);
  Vtxd d(1);
  int refused = 0;
  for (int step = 0; step < 5000; ++step) {
    const NodeIndex n = 2 + random() % 6;
    const std::size_t j = random() % 3;
    try {
      switch (random() % 7) {
        case 0:
          d.Add_oneigh(n);
          break;
        case 1:
          d.Add_ineigh(n);
          break;
        case 2:
          d.Remove_oneigh(n);
          break;
        case 3:
          d.Remove_ineigh(n);
          break;
        case 4:
          d.Remove_neigh(n);
          break;
        case 5:
          d.Add_inc_neigh(j, n);
          break;
        default:
          d.Remove_inc_neigh(j, n);
          break;
      }
    } catch (const Xerror_msg&) {
      ++refused;
    }
    ASSERT_EQ(d.Neighs_c(), Union(d.Ineighs_c(), d.Oneighs_c())) << "step " << step;
  }
  EXPECT_GT(refused, 0);
  EXPECT_LT(refused, 5000);
}

TEST(VtxText, RecordForms) {
  Vtx v(5, NodeSet{1, 2, 3}, "e");
  v.Add_inc_neigh(0, 1);
  v.Add_inc_neigh(0, 2);
  v.Add_inc_neigh(1, 3);
  Vtxd d(7, NodeSet{1, 2}, NodeSet{2, 3}, "g");
  d.Add_inc_neigh(0, 3);
  std::ostringstream hor, ver, exported;
  g_hor::operator<<(hor, v) << "|";
  g_hor::operator<<(hor, d);
  EXPECT_EQ(hor.str(),
            "{5 'e' : neighs. :1 2 3  inc_neighs. :   1 2 , 3}|"
            "{7 'g' : oneighs. : 1 2  ineighs. : 2 3  inc_neighs. : 3}");
  g_ver::operator<<(ver, v);
  g_ver::operator<<(ver, d);
  EXPECT_EQ(ver.str(),
            "5 'e' :\n neighs. :\n1\n2\n3\n  inc_neighs. : \n1\n2\n3\n"
            "7 'g' :\n oneighs. :\n1\n2\n ineighs. : \n2\n3\n  inc_neighs. : \n3\n");
  export_data(exported, v, ",", "[", "]");
  export_data(exported, d, ",", "[", "]");
  export_data(exported, NodeSet{}, ", ", "<", ">");
  EXPECT_EQ(exported.str(),
            "5 (e) : neighs. :[1,2,3], inc_neighs. :[1,2],[3]"
            "7 (g) :  oneighs. :[1,2], ineighs. :[2,3], inc_neighs. :[3]<>");
}

}  // namespace
}  // namespace kcp
