// The direct search of the directed cliques: the maximal directed cliques holding a node v
// among the nodes not processed before it, found by a pivot-free branch and bound over bit rows
// of v's neighbourhood. It fixes no order of its own: the walk (clique_find_dir.cc) fixes the
// order in which a node's cliques are registered, and dir_walk_path.cc places each clique found
// here where the walk would first have recorded it.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "cliques/clique_find_dir.h"
#include "cliques/dir_arrays.h"
#include "cliques/node_bits.h"

namespace kcp {

namespace Clique_find_dir_sub_routines {

namespace {

// The cliques a node must end with are found on bit rows over its neighbourhood.

using Bits = NodeBits;

// v (local 0) and its neighbours (local 1.., ascending) with the links among them.
struct LocalGraph {
  NodeList nodes;
  std::size_t words = 0;
  std::vector<Bits> out;  // out[i] holds j when i links to j
  std::vector<Bits> in;   // in[i] holds j when j links to i

  std::vector<Bits> from_only;  // from_only[i] holds j when i links to j one way only
  std::vector<Bits> to_only;    // to_only[i] holds j when j links to i one way only

  // Nodes that i links to one way only (from_i) or that link one way only to i (to_i).
  const Bits& One_way_from(const std::size_t& i) const { return from_only[i]; }
  const Bits& One_way_to(const std::size_t& i) const { return to_only[i]; }

  // Scratch of Is_directed_clique, kept between its calls.
  mutable std::vector<std::size_t> members;
  mutable std::vector<std::size_t> waiting;
  mutable std::vector<std::size_t> ready;
};

LocalGraph Local_graph_of(const NodeIndex& v, const VtxdMap& vertices) {
  LocalGraph graph;
  const NodeSet& neighs = Full_record(vertices, v).Neighs_c();
  graph.nodes.push_back(v);
  graph.nodes.insert(graph.nodes.end(), neighs.begin(), neighs.end());
  const std::size_t n = graph.nodes.size();
  graph.words = (n + 63) / 64;
  graph.out.assign(n, Bits(graph.words));
  graph.in.assign(n, Bits(graph.words));
  const auto local = [&](const NodeIndex& node) -> std::size_t {
    if (node == v) return 0;
    const auto at = std::lower_bound(graph.nodes.begin() + 1, graph.nodes.end(), node);
    return at != graph.nodes.end() && *at == node
               ? static_cast<std::size_t>(at - graph.nodes.begin())
               : n;
  };
  for (std::size_t i = 0; i < n; ++i) {
    for (const NodeIndex target : Full_record(vertices, graph.nodes[i]).Oneighs_c()) {
      const std::size_t j = local(target);
      if (j == n) continue;
      graph.out[i].Set(j);
      graph.in[j].Set(i);
    }
  }
  graph.from_only.assign(n, Bits(graph.words));
  graph.to_only.assign(n, Bits(graph.words));
  for (std::size_t i = 0; i < n; ++i) {
    for (std::size_t w = 0; w < graph.words; ++w) {
      graph.from_only[i][w] = graph.out[i][w] & ~graph.in[i][w];
      graph.to_only[i][w] = graph.in[i][w] & ~graph.out[i][w];
    }
  }
  return graph;
}

// The members of `members` reached from u along one-way links, forwards or backwards, u
// included.
Bits Reached(const LocalGraph& graph, const std::size_t& u, const Bits& members,
             const bool& forwards) {
  Bits reached(graph.words);
  reached.Set(u);
  std::vector<std::size_t> open{u};
  while (!open.empty()) {
    const std::size_t f = open.back();
    open.pop_back();
    const Bits& next = forwards ? graph.One_way_from(f) : graph.One_way_to(f);
    for (std::size_t w = 0; w < graph.words; ++w) {
      std::uint64_t fresh = next[w] & members[w] & ~reached[w];
      reached[w] |= fresh;
      while (fresh != 0) {
        const std::size_t bit = static_cast<std::size_t>(__builtin_ctzll(fresh));
        open.push_back(w * 64 + bit);
        fresh &= fresh - 1;
      }
    }
  }
  return reached;
}

// True when the nodes of `set` are linked pairwise and their one-way links leave no cycle.
bool Is_directed_clique(const LocalGraph& graph, const Bits& set) {
  std::vector<std::size_t>& members = graph.members;
  members.clear();
  for (std::size_t w = 0; w < graph.words; ++w) {
    for (std::uint64_t bits = set[w]; bits != 0; bits &= bits - 1) {
      members.push_back(w * 64 + static_cast<std::size_t>(__builtin_ctzll(bits)));
    }
  }
  for (const std::size_t z : members) {
    for (std::size_t w = 0; w < graph.words; ++w) {
      std::uint64_t linked = graph.out[z][w] | graph.in[z][w];
      if (z / 64 == w) linked |= std::uint64_t{1} << (z % 64);
      if ((set[w] & ~linked) != 0) return false;
    }
  }
  // Take away, again and again, the members no remaining member links to one way only. Only the
  // members' counts are read, and each is set before it is.
  std::vector<std::size_t>& waiting = graph.waiting;
  if (waiting.size() < graph.nodes.size()) waiting.resize(graph.nodes.size());
  std::vector<std::size_t>& ready = graph.ready;
  ready.clear();
  for (const std::size_t z : members) {
    const Bits& before = graph.One_way_to(z);
    waiting[z] = 0;
    for (std::size_t w = 0; w < graph.words; ++w) {
      waiting[z] += static_cast<std::size_t>(__builtin_popcountll(before[w] & set[w]));
    }
    if (waiting[z] == 0) ready.push_back(z);
  }
  std::size_t taken = 0;
  while (!ready.empty()) {
    const std::size_t z = ready.back();
    ready.pop_back();
    ++taken;
    const Bits& after = graph.One_way_from(z);
    for (std::size_t w = 0; w < graph.words; ++w) {
      for (std::uint64_t bits = after[w] & set[w]; bits != 0; bits &= bits - 1) {
        const std::size_t next = w * 64 + static_cast<std::size_t>(__builtin_ctzll(bits));
        if (--waiting[next] == 0) ready.push_back(next);
      }
    }
  }
  return taken == members.size();
}

struct BkFrame {
  std::vector<std::size_t> R;
  Bits R_bits;
  std::vector<std::size_t> P;
  std::vector<std::size_t> X;
  std::size_t next = 0;
};

// True when a node of X could join every clique R can grow into within P: it is linked both
// ways with all of R ∪ P, or links to all of them, or all of them link to it.
bool Bk_dominated(const LocalGraph& graph, const BkFrame& frame) {
  Bits reach = frame.R_bits;
  for (const std::size_t z : frame.P) reach.Set(z);
  for (const std::size_t x : frame.X) {
    if (reach.Within(graph.out[x]) || reach.Within(graph.in[x])) return true;
  }
  return false;
}

// Settles a frame whose R ∪ P is itself a directed clique: it is the only maximal set of the
// branch, reported unless a node of X could join it. Returns false for any other frame.
bool Settled_whole(const LocalGraph& graph, const BkFrame& frame, CliqueList& result) {
  Bits whole = frame.R_bits;
  for (const std::size_t z : frame.P) whole.Set(z);
  if (!Is_directed_clique(graph, whole)) return false;
  Bits more = whole;
  for (const std::size_t x : frame.X) {
    // Only a node linked with every member can make a larger clique.
    bool linked = true;
    for (std::size_t w = 0; w < graph.words && linked; ++w) {
      linked = (whole[w] & ~(graph.out[x][w] | graph.in[x][w])) == 0;
    }
    if (!linked) continue;
    more.Set(x);
    if (Is_directed_clique(graph, more)) return true;
    more.Reset(x);
  }
  if (frame.R.size() + frame.P.size() >= 3) {
    Clique clique;
    for (std::size_t w = 0; w < graph.words; ++w) {
      for (std::uint64_t bits = whole[w]; bits != 0; bits &= bits - 1) {
        clique.push_back(graph.nodes[w * 64 + static_cast<std::size_t>(__builtin_ctzll(bits))]);
      }
    }
    std::sort(clique.begin(), clique.end());
    result.push_back(std::move(clique));
  }
  return true;
}

}  // namespace

CliqueList Maximal_dir_cliques_of(const NodeIndex& v, const VtxdMap& working,
                                  const VtxdMap& vertices) {
  const LocalGraph graph = Local_graph_of(v, vertices);
  CliqueList result;
  // Maximal node sets holding v whose one-way links leave no cycle, found by extending R with
  // the candidates P while X keeps the nodes that must stay out (processed before v, or tried
  // already); R is maximal when neither has a node left that could join it.
  std::vector<BkFrame> stack(1);
  BkFrame& root = stack.back();
  root.R.push_back(0);
  root.R_bits = Bits(graph.words);
  root.R_bits.Set(0);
  for (std::size_t i = 1; i < graph.nodes.size(); ++i) {
    (working.count(graph.nodes[i]) != 0 ? root.P : root.X).push_back(i);
  }
  if (root.P.empty() || Settled_whole(graph, root, result) || Bk_dominated(graph, root)) {
    return result;
  }
  while (!stack.empty()) {
    BkFrame& top = stack.back();
    if (top.next == top.P.size()) {
      stack.pop_back();
      continue;
    }
    const std::size_t i = top.next++;
    const std::size_t u = top.P[i];
    BkFrame child;
    child.R = top.R;
    child.R.push_back(u);
    child.R_bits = top.R_bits;
    child.R_bits.Set(u);
    const Bits before_u = Reached(graph, u, child.R_bits, false);
    const Bits after_u = Reached(graph, u, child.R_bits, true);
    // z may join R + u when it is linked with u and closes no cycle of one-way links through u.
    const auto may_join = [&](const std::size_t& z) {
      if (!graph.out[u].Test(z) && !graph.in[u].Test(z)) return false;
      return !(graph.One_way_from(z).Meets(before_u) && graph.One_way_to(z).Meets(after_u));
    };
    for (std::size_t j = i + 1; j < top.P.size(); ++j) {
      if (may_join(top.P[j])) child.P.push_back(top.P[j]);
    }
    for (const std::size_t x : top.X) {
      if (may_join(x)) child.X.push_back(x);
    }
    for (std::size_t j = 0; j < i; ++j) {
      if (may_join(top.P[j])) child.X.push_back(top.P[j]);
    }
    if (child.P.empty()) {
      if (child.X.empty() && child.R.size() >= 3) {
        Clique clique;
        for (const std::size_t m : child.R) clique.push_back(graph.nodes[m]);
        std::sort(clique.begin(), clique.end());
        result.push_back(std::move(clique));
      }
      continue;
    }
    if (Settled_whole(graph, child, result) || Bk_dominated(graph, child)) continue;
    stack.push_back(std::move(child));
  }
  std::sort(result.begin(), result.end());
  return result;
}

}  // namespace Clique_find_dir_sub_routines

}  // namespace kcp
