#include "graph/vtx.h"

#include <gtest/gtest.h>

#include <algorithm>
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

void Expect_same(const Vtx& a, const Vtx& b) {
  EXPECT_EQ(a.Index(), b.Index());
  EXPECT_EQ(a.Neighs_c(), b.Neighs_c());
  EXPECT_EQ(a.Inc_neighs_c(), b.Inc_neighs_c());
  EXPECT_EQ(a.Name(), b.Name());
}

void Expect_same(const Vtxd& a, const Vtxd& b) {
  Expect_same(static_cast<const Vtx&>(a), static_cast<const Vtx&>(b));
  EXPECT_EQ(a.Oneighs_c(), b.Oneighs_c());
  EXPECT_EQ(a.Ineighs_c(), b.Ineighs_c());
}

NodeSet Union(const NodeSet& a, const NodeSet& b) {
  NodeSet u = a;
  u.insert(b.begin(), b.end());
  return u;
}

TEST(Vtx, DefaultsAndConstructors) {
  const Vtx d;
  EXPECT_EQ(d.Index(), 0u);
  EXPECT_TRUE(d.Neighs().empty());
  EXPECT_TRUE(d.Inc_neighs().empty());
  EXPECT_EQ(d.Name(), "0");

  const Vtx i(7);
  EXPECT_EQ(i.Index(), 7u);
  EXPECT_TRUE(i.Neighs_c().empty());
  EXPECT_EQ(i.Name(), "0");

  const Vtx n(3, NodeSet{1, 5});
  EXPECT_EQ(n.Index(), 3u);
  EXPECT_EQ(n.Neighs(), (NodeSet{1, 5}));
  EXPECT_EQ(n.Name(), "0");

  const Vtx named(4, NodeSet{2}, "alpha");
  EXPECT_EQ(named.Name(), "alpha");
  EXPECT_EQ(named.Neighs(), NodeSet{2});
  EXPECT_TRUE(named.Inc_neighs_c().empty());
}

TEST(Vtx, SettersReplaceFieldsAndSetDefaultsResetsAll) {
  Vtx v(1, NodeSet{2, 3}, "x");
  v.Add_inc_neigh(0, 2);
  v.Set_index(9);
  v.Set_neighs(NodeSet{4});
  v.Set_inc_neighs({NodeSet{8}, NodeSet{}});
  v.Set_name("y");
  EXPECT_EQ(v.Index(), 9u);
  EXPECT_EQ(v.Neighs(), NodeSet{4});
  EXPECT_EQ(v.Inc_neighs(), (std::vector<NodeSet>{NodeSet{8}, NodeSet{}}));
  EXPECT_EQ(v.Name(), "y");
  v.Set_defaults();
  Expect_same(v, Vtx());
}

TEST(Vtx, ReferenceAccessorsFollowTheRecordAndCopiesDoNot) {
  Vtx v(1, NodeSet{2});
  const NodeSet& live = v.Neighs_c();
  const NodeSet copy = v.Neighs();
  const std::vector<NodeSet>& live_inc = v.Inc_neighs_c();
  v.Add_neigh(3);
  v.Add_inc_neigh(0, 3);
  EXPECT_EQ(&live, &v.Neighs_c());
  EXPECT_EQ(live, (NodeSet{2, 3}));
  EXPECT_EQ(copy, NodeSet{2});
  EXPECT_EQ(live_inc.size(), 1u);
}

TEST(Vtx, AddNeighRefusesARepeatedNeighbour) {
  Vtx v(1);
  v.Add_neigh(5);
  v.Add_neigh(2);
  EXPECT_EQ(v.Neighs_c(), (NodeSet{2, 5}));
  Expect_error("ERROR: Vtx::Add_neigh() : attempt to add already exisiting neigh. ",
               [&] { v.Add_neigh(5); });
  EXPECT_EQ(v.Neighs_c(), (NodeSet{2, 5}));
}

TEST(Vtx, AddIncNeighAppendsAtTheNextPositionOnly) {
  Vtx v(1, NodeSet{2, 3, 4});
  v.Add_inc_neigh(0, 3);
  EXPECT_EQ(v.Inc_neighs_c(), std::vector<NodeSet>{NodeSet{3}});
  v.Add_inc_neigh(0, 2);
  v.Add_inc_neigh(1, 4);
  EXPECT_EQ(v.Inc_neighs_c(), (std::vector<NodeSet>{NodeSet{2, 3}, NodeSet{4}}));
  // Adding a member again to an existing set is not an error.
  v.Add_inc_neigh(1, 4);
  EXPECT_EQ(v.Inc_neighs_c()[1], NodeSet{4});

  const Vtx before = v;
  Expect_error("ERROR: Vtx::Add_inc_neigh() : vec_ind too large", [&] { v.Add_inc_neigh(3, 2); });
  Expect_error("ERROR: Vtx::Add_inc_neigh() : new ind. neigh. is not a neigh.",
               [&] { v.Add_inc_neigh(2, 9); });
  Expect_error("ERROR: Vtx::Add_inc_neigh() : new ind. neigh. is not a neigh.",
               [&] { v.Add_inc_neigh(0, 9); });
  // The index check comes first.
  Expect_error("ERROR: Vtx::Add_inc_neigh() : vec_ind too large", [&] { v.Add_inc_neigh(5, 9); });
  Expect_same(v, before);

  Vtx one_set(1, NodeSet{2});
  one_set.Add_inc_neigh(0, 2);
  Expect_error("ERROR: Vtx::Add_inc_neigh() : vec_ind too large",
               [&] { one_set.Add_inc_neigh(2, 2); });
}

TEST(Vtx, RemoveNeighClearsItFromEveryIncSetAndKeepsEmptySets) {
  Vtx v(1, NodeSet{2, 3, 4});
  v.Add_inc_neigh(0, 2);
  v.Add_inc_neigh(1, 2);
  v.Add_inc_neigh(1, 3);
  v.Add_inc_neigh(2, 4);
  v.Remove_neigh(2);
  EXPECT_EQ(v.Neighs_c(), (NodeSet{3, 4}));
  EXPECT_EQ(v.Inc_neighs_c(), (std::vector<NodeSet>{NodeSet{}, NodeSet{3}, NodeSet{4}}));

  const Vtx before = v;
  Expect_error("ERROR: Vtx::Remove_neigh() : attempt to remove a non-existing neigh.",
               [&] { v.Remove_neigh(2); });
  Expect_same(v, before);
}

TEST(Vtx, RemoveIncNeighKeepsTheSetAndChecksItsArguments) {
  Vtx v(1, NodeSet{2, 3});
  v.Add_inc_neigh(0, 2);
  v.Add_inc_neigh(1, 3);
  v.Remove_inc_neigh(0, 2);
  EXPECT_EQ(v.Inc_neighs_c(), (std::vector<NodeSet>{NodeSet{}, NodeSet{3}}));
  EXPECT_EQ(v.Neighs_c(), (NodeSet{2, 3}));

  const Vtx before = v;
  Expect_error("ERROR: Vtx::Remove_inc_neigh() : vec_ind too large",
               [&] { v.Remove_inc_neigh(2, 3); });
  Expect_error("ERROR: Vtx::Remove_inc_neigh() : attempt to remove a non-existing inc. neigh.",
               [&] { v.Remove_inc_neigh(0, 2); });
  Expect_error("ERROR: Vtx::Remove_inc_neigh() : vec_ind too large",
               [&] { Vtx().Remove_inc_neigh(0, 1); });
  Expect_same(v, before);
}

TEST(Vtx, CopiesAndAssignmentsTakeEveryField) {
  Vtx a(3, NodeSet{1, 2}, "a");
  a.Add_inc_neigh(0, 1);
  const Vtx copy(a);
  Expect_same(copy, a);

  Vtx b(8, NodeSet{9}, "b");
  b.Add_inc_neigh(0, 9);
  b.Add_inc_neigh(1, 9);
  b = a;
  Expect_same(b, a);

  Vtx c(5);
  c.Copy(a);
  Expect_same(c, a);

  Vtx& self = a;
  a = self;
  Expect_same(a, copy);
}

TEST(Vtx, OrderComparesIndicesOnly) {
  const Vtx low(2, NodeSet{7, 8, 9}, "zzz");
  const Vtx high(5, NodeSet{}, "aaa");
  EXPECT_TRUE(low < high);
  EXPECT_FALSE(high < low);
  EXPECT_FALSE(low < Vtx(2, NodeSet{1}, "b"));

  std::vector<Vtx> records{Vtx(4, {}, "a"), Vtx(1, {2, 3}, "z"), Vtx(3, {1}, "m"), Vtx(2)};
  std::sort(records.begin(), records.end());
  std::vector<NodeIndex> indices;
  for (const Vtx& v : records) indices.push_back(v.Index());
  EXPECT_EQ(indices, (std::vector<NodeIndex>{1, 2, 3, 4}));
}

TEST(Vtxd, ConstructorsKeepNeighsTheUnionOfInAndOut) {
  const Vtxd d;
  EXPECT_EQ(d.Index(), 0u);
  EXPECT_EQ(d.Name(), "0");
  EXPECT_TRUE(d.Neighs_c().empty());
  EXPECT_TRUE(d.Oneighs_c().empty());
  EXPECT_TRUE(d.Ineighs_c().empty());

  const Vtxd i(6);
  EXPECT_EQ(i.Index(), 6u);
  EXPECT_TRUE(i.Neighs_c().empty());

  const Vtxd sets(2, NodeSet{1, 3}, NodeSet{3, 4});
  EXPECT_EQ(sets.Oneighs(), (NodeSet{1, 3}));
  EXPECT_EQ(sets.Ineighs(), (NodeSet{3, 4}));
  EXPECT_EQ(sets.Neighs(), (NodeSet{1, 3, 4}));
  EXPECT_EQ(sets.Name(), "0");

  const Vtxd named(2, NodeSet{1}, NodeSet{}, "n");
  EXPECT_EQ(named.Name(), "n");
  EXPECT_EQ(named.Neighs(), NodeSet{1});

  const Vtxd copy(sets);
  Expect_same(copy, sets);
}

TEST(Vtxd, ConversionFromVtxMakesEveryNeighbourBothInAndOut) {
  Vtx u(4, NodeSet{1, 2}, "u");
  u.Add_inc_neigh(0, 2);
  const Vtxd d(u);
  EXPECT_EQ(d.Index(), 4u);
  EXPECT_EQ(d.Oneighs_c(), (NodeSet{1, 2}));
  EXPECT_EQ(d.Ineighs_c(), (NodeSet{1, 2}));
  EXPECT_EQ(d.Neighs_c(), (NodeSet{1, 2}));
  EXPECT_EQ(d.Inc_neighs_c(), std::vector<NodeSet>{NodeSet{2}});
  EXPECT_EQ(d.Name(), "u");
}

TEST(Vtxd, AssigningAVtxKeepsTheOldNeighsOnPurpose) {
  Vtxd d(1, NodeSet{7}, NodeSet{8}, "d");
  d.Add_inc_neigh(0, 7);
  const Vtx u(3, NodeSet{2}, "u");
  d = u;
  EXPECT_EQ(d.Index(), 3u);
  EXPECT_EQ(d.Oneighs_c(), NodeSet{2});
  EXPECT_EQ(d.Ineighs_c(), NodeSet{2});
  EXPECT_EQ(d.Neighs_c(), (NodeSet{2, 7, 8}));
  EXPECT_TRUE(d.Inc_neighs_c().empty());
  EXPECT_EQ(d.Name(), "u");
}

TEST(Vtxd, CopyFromVtxdReplacesEveryField) {
  Vtxd a(5, NodeSet{1}, NodeSet{2}, "a");
  a.Add_inc_neigh(0, 2);
  Vtxd b(9, NodeSet{3, 4}, NodeSet{6}, "b");
  b.Add_inc_neigh(0, 3);
  b.Add_inc_neigh(1, 4);
  b = a;
  Expect_same(b, a);

  Vtxd c;
  c.Copy(a);
  Expect_same(c, a);

  Vtxd& self = a;
  a = self;
  EXPECT_EQ(a.Neighs_c(), (NodeSet{1, 2}));
  EXPECT_EQ(a.Name(), "a");
}

TEST(Vtxd, SetDefaultsEmptiesOnlyTheDirectedSets) {
  Vtxd d(5, NodeSet{1}, NodeSet{2}, "d");
  d.Add_inc_neigh(0, 1);
  d.Set_defaults();
  EXPECT_TRUE(d.Oneighs_c().empty());
  EXPECT_TRUE(d.Ineighs_c().empty());
  EXPECT_EQ(d.Index(), 5u);
  EXPECT_EQ(d.Name(), "d");
  EXPECT_EQ(d.Neighs_c(), (NodeSet{1, 2}));
  EXPECT_EQ(d.Inc_neighs_c().size(), 1u);

  // Through the base the directed version runs too.
  Vtxd e(6, NodeSet{1}, NodeSet{});
  Vtx& base = e;
  base.Set_defaults();
  EXPECT_EQ(e.Index(), 6u);
  EXPECT_TRUE(e.Oneighs_c().empty());
}

TEST(Vtxd, SetInAndOutNeighsOnlyAddToNeighs) {
  Vtxd d(1, NodeSet{2, 3}, NodeSet{});
  d.Set_oneighs(NodeSet{4});
  EXPECT_EQ(d.Oneighs_c(), NodeSet{4});
  EXPECT_EQ(d.Neighs_c(), (NodeSet{2, 3, 4}));
  d.Set_ineighs(NodeSet{5});
  EXPECT_EQ(d.Ineighs_c(), NodeSet{5});
  EXPECT_EQ(d.Neighs_c(), (NodeSet{2, 3, 4, 5}));
}

TEST(Vtxd, AddAndRemoveInOutNeighs) {
  Vtxd d(1);
  d.Add_oneigh(2);
  d.Add_ineigh(2);
  d.Add_ineigh(3);
  EXPECT_EQ(d.Neighs_c(), (NodeSet{2, 3}));
  Expect_error("ERROR: Vtxd::Add_oneigh() : attempt to add already exisiting neigh. ",
               [&] { d.Add_oneigh(2); });
  Expect_error("ERROR: Vtxd::Add_ineigh() : attempt to add already exisiting neigh. ",
               [&] { d.Add_ineigh(3); });

  // Linked both ways: removing one direction keeps the neighbour.
  d.Remove_ineigh(2);
  EXPECT_EQ(d.Neighs_c(), (NodeSet{2, 3}));
  d.Remove_oneigh(2);
  EXPECT_EQ(d.Neighs_c(), NodeSet{3});
  d.Remove_ineigh(3);
  EXPECT_TRUE(d.Neighs_c().empty());

  d.Add_oneigh(4);
  const Vtxd before = d;
  Expect_error("ERROR: Vtxd::Remove_ineigh() : attempt to remove a non-existing ineigh.",
               [&] { d.Remove_ineigh(4); });
  Expect_error("ERROR: Vtxd::Remove_oneigh() : attempt to remove a non-existing oneigh.",
               [&] { d.Remove_oneigh(5); });
  Expect_same(d, before);
}

TEST(Vtxd, RemoveNeighClearsEverySetAndHasItsOwnMessage) {
  Vtxd d(1, NodeSet{2, 3}, NodeSet{2, 4});
  d.Add_inc_neigh(0, 2);
  d.Add_inc_neigh(0, 3);
  d.Add_inc_neigh(1, 2);
  Vtx& base = d;
  base.Remove_neigh(2);
  EXPECT_EQ(d.Oneighs_c(), NodeSet{3});
  EXPECT_EQ(d.Ineighs_c(), NodeSet{4});
  EXPECT_EQ(d.Neighs_c(), (NodeSet{3, 4}));
  EXPECT_EQ(d.Inc_neighs_c(), (std::vector<NodeSet>{NodeSet{3}, NodeSet{}}));

  const Vtxd before = d;
  Expect_error("ERROR: Vtxd::Remove_neigh() : attempt to remove a non-existing neigh.",
               [&] { base.Remove_neigh(2); });
  Expect_same(d, before);
}

TEST(Vtxd, OrderComparesIndicesOnly) {
  const Vtxd a(1, NodeSet{5, 6}, NodeSet{7});
  const Vtxd b(2);
  const Vtx u(2, NodeSet{1});
  EXPECT_TRUE(a < b);
  EXPECT_FALSE(b < a);
  EXPECT_TRUE(a < u);
  EXPECT_FALSE(b < u);
  const Vtx& base_b = b;
  EXPECT_FALSE(base_b < a);
  EXPECT_TRUE(static_cast<const Vtx&>(a) < base_b);
}

// Random mixes of the adders and removers keep neighs the union of the in- and out-neighbours
// (Set_oneighs and Set_ineighs only add to neighs, see above).
TEST(Vtxd, MutatorsKeepNeighsTheUnionOfInAndOut) {
  std::mt19937 random(12345);
  Vtxd d(1);
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
    }
    ASSERT_EQ(d.Neighs_c(), Union(d.Ineighs_c(), d.Oneighs_c())) << "step " << step;
  }
}

class VtxText : public ::testing::Test {
 protected:
  VtxText() : v_(5, NodeSet{1, 2, 3}, "e"), d_(7, NodeSet{1, 2}, NodeSet{2, 3}, "g") {
    v_.Add_inc_neigh(0, 1);
    v_.Add_inc_neigh(0, 2);
    v_.Add_inc_neigh(1, 3);
    d_.Add_inc_neigh(0, 3);
  }
  Vtx v_;
  Vtxd d_;
};

TEST_F(VtxText, SetForms) {
  using g_hor::operator<<;
  std::ostringstream hor;
  hor << NodeSet{3, 1, 20} << "|" << NodeSet{};
  EXPECT_EQ(hor.str(), "1 3 20|");

  std::ostringstream ver;
  g_ver::operator<<(ver, NodeSet{4, 2});
  g_ver::operator<<(ver, NodeSet{});
  EXPECT_EQ(ver.str(), "2\n4\n");

  std::ostringstream exported;
  export_data(exported, NodeSet{4, 2, 9}, ", ", "<", ">");
  export_data(exported, NodeSet{}, ", ", "<", ">");
  EXPECT_EQ(exported.str(), "<2, 4, 9><>");
}

TEST_F(VtxText, HorizontalRecordForms) {
  using g_hor::operator<<;
  std::ostringstream out;
  out << v_;
  EXPECT_EQ(out.str(), "{5 'e' : neighs. :1 2 3  inc_neighs. :   1 2 , 3}");

  std::ostringstream no_sets;
  no_sets << Vtx(2, NodeSet{4});
  EXPECT_EQ(no_sets.str(), "{2 '0' : neighs. :4  inc_neighs. : }");

  std::ostringstream directed;
  directed << d_;
  EXPECT_EQ(directed.str(), "{7 'g' : oneighs. : 1 2  ineighs. : 2 3  inc_neighs. : 3}");
}

TEST_F(VtxText, VerticalRecordForms) {
  using g_ver::operator<<;
  std::ostringstream out;
  out << v_;
  EXPECT_EQ(out.str(), "5 'e' :\n neighs. :\n1\n2\n3\n  inc_neighs. : \n1\n2\n3\n");

  std::ostringstream directed;
  directed << d_;
  EXPECT_EQ(directed.str(),
            "7 'g' :\n oneighs. :\n1\n2\n ineighs. : \n2\n3\n  inc_neighs. : \n3\n");
}

TEST_F(VtxText, ExportedRecordForms) {
  std::ostringstream out;
  export_data(out, v_, ",", "[", "]");
  EXPECT_EQ(out.str(), "5 (e) : neighs. :[1,2,3], inc_neighs. :[1,2],[3]");

  std::ostringstream no_sets;
  export_data(no_sets, Vtx(2), ";", "(", ")");
  EXPECT_EQ(no_sets.str(), "2 (0) : neighs. :(); inc_neighs. :");

  std::ostringstream directed;
  export_data(directed, d_, ",", "[", "]");
  EXPECT_EQ(directed.str(), "7 (g) :  oneighs. :[1,2], ineighs. :[2,3], inc_neighs. :[3]");
}

}  // namespace
}  // namespace kcp
