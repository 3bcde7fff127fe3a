#include "cliques/clique_find.h"

#include <algorithm>
#include <sstream>

#include "cliques/exact_loop.h"
#include "cliques/node_cliques.h"
#include "cliques/search_report.h"
#include "text/console.h"

namespace kcp {

namespace Clique_find_sub_routines {

namespace {

const NodeSet& Working_neighs(const VtxMap& working, const NodeIndex& x) {
  return Record_of(working, x, "Clique_find", "working graph").Neighs_c();
}

// S ⊆ K for ascending S and K; a long K is searched rather than walked.
bool Is_subset(std::span<const NodeIndex> S, const NodeList& K) {
  if (S.size() > K.size()) return false;
  if (S.size() * 16 < K.size()) {
    auto from = K.begin();
    for (const NodeIndex n : S) {
      from = std::lower_bound(from, K.end(), n);
      if (from == K.end() || *from != n) return false;
    }
    return true;
  }
  return std::includes(K.begin(), K.end(), S.begin(), S.end());
}

const NodeSet& Full_neighs(const VtxMap& vertices, const NodeIndex& z) {
  return Record_of(vertices, z, "Clique_find", "vertex map").Neighs_c();
}

bool Contains(const NodeSet& set, const NodeIndex& n) {
  return set.find(n) != set.end();
}

// The members of `first` and of `second` (ascending, disjoint) that are in `neighs`, ascending.
NodeList Linked_of(std::span<const NodeIndex> first, std::span<const NodeIndex> second,
                   const NodeSet& neighs) {
  NodeList result;
  auto a = first.begin();
  auto b = second.begin();
  while (a != first.end() || b != second.end()) {
    const bool take_a = b == second.end() || (a != first.end() && *a < *b);
    const NodeIndex n = take_a ? *a++ : *b++;
    if (Contains(neighs, n)) result.push_back(n);
  }
  return result;
}

struct Frame {
  NodeList C;
  NodeList T;
  NodeList X;                     // linked to all of C, outside C and T
  std::size_t next = 0;           // T[next, end) are the candidates not tried yet
  std::size_t known_checked = 0;  // size of Known when it was last tested against C ∪ T
};

// One call of the recursion up to its loop: returns true, with the frame holding C + x and the
// candidates to try, when the call goes on to extend; registers C + x when it is a new clique.
// X_before and skipped are the nodes outside C ∪ {x} ∪ P linked to every member of C.
bool Enter(const NodeIndex& x, const VtxMap& working, VtxMap& vertices, NodeList C,
           std::span<const NodeIndex> P, std::span<const NodeIndex> X_before,
           std::span<const NodeIndex> skipped, CliqueList& cliques, KnownCliques& known,
           OverlapMatrix& overlaps, NodeCliqueMap& node_cliques, Frame& frame) {
  NodeList T = Tighten(Working_neighs(working, x), P, C);
  C.insert(std::upper_bound(C.begin(), C.end(), x), x);
  if (T.empty()) {
    if (Mehet_tovabb(known, C)) {
      Iktatjuk_az_uj_math_cliquet(cliques, C, vertices, overlaps, node_cliques);
      known.push_back(std::move(C));
    }
    return false;
  }
  if (!Mehet_tovabb(known, C, T)) return false;
  NodeList X = Linked_of(X_before, skipped, Full_neighs(vertices, x));
  if (Dominated(X, T, vertices)) return false;
  frame.C = std::move(C);
  frame.T = std::move(T);
  frame.X = std::move(X);
  frame.next = 0;
  frame.known_checked = known.size();
  return true;
}

}  // namespace

NodeSet Tighten(const NodeSet& A, const NodeSet& B, const NodeSet& C) {
  NodeSet result;
  for (const NodeIndex n : B) {
    if (A.count(n) != 0 && C.count(n) == 0) result.insert(result.end(), n);
  }
  return result;
}

NodeList Tighten(const NodeSet& A, std::span<const NodeIndex> B, std::span<const NodeIndex> C) {
  NodeList result;
  const auto keep = [&](const NodeIndex& n) {
    if (!std::binary_search(C.begin(), C.end(), n)) result.push_back(n);
  };
  if (B.size() * 8 < A.size()) {
    for (const NodeIndex n : B) {
      if (A.count(n) != 0) keep(n);
    }
    return result;
  }
  auto a = A.begin();
  for (const NodeIndex n : B) {
    while (a != A.end() && *a < n) ++a;
    if (a == A.end()) break;
    if (*a == n) keep(n);
  }
  return result;
}

bool Mehet_tovabb(const std::vector<NodeSet>& sets, const NodeSet& S) {
  for (const NodeSet& set : sets) {
    if (set.size() >= S.size() && std::includes(set.begin(), set.end(), S.begin(), S.end())) {
      return false;
    }
  }
  return true;
}

bool Mehet_tovabb(const KnownCliques& sets, std::span<const NodeIndex> S) {
  for (const NodeList& set : sets) {
    if (Is_subset(S, set)) return false;
  }
  return true;
}

bool Mehet_tovabb(const KnownCliques& sets, std::span<const NodeIndex> A,
                  std::span<const NodeIndex> B) {
  for (const NodeList& set : sets) {
    if (A.size() + B.size() <= set.size() && Is_subset(A, set) && Is_subset(B, set)) {
      return false;
    }
  }
  return true;
}

bool Dominated(std::span<const NodeIndex> X, std::span<const NodeIndex> T, const VtxMap& vertices) {
  for (const NodeIndex z : X) {
    const NodeSet& linked = Full_neighs(vertices, z);
    if (linked.size() < T.size()) continue;
    if (std::all_of(T.begin(), T.end(), [&](const NodeIndex& t) { return Contains(linked, t); })) {
      return true;
    }
  }
  return false;
}

KnownCliques Known_cliques_of(const Vtx& record) {
  const NodeIndex v = record.Index();
  KnownCliques known;
  known.reserve(record.Inc_neighs_c().size());
  for (const NodeSet& others : record.Inc_neighs_c()) {
    NodeList clique;
    clique.reserve(others.size() + 1);
    for (const NodeIndex n : others) {
      if (n > v && (clique.empty() || clique.back() < v)) clique.push_back(v);
      clique.push_back(n);
    }
    if (clique.empty() || clique.back() < v) clique.push_back(v);
    known.push_back(std::move(clique));
  }
  return known;
}

KnownCliques Known_cliques_of(const NodeIndex& v, const CliqueList& cliques,
                              const NodeCliqueMap& node_cliques) {
  KnownCliques known;
  const std::span<const std::uint32_t> held = node_cliques.index.Holders(v);
  known.reserve(held.size());
  for (const std::uint32_t c : held) known.push_back(cliques[c]);
  return known;
}

namespace {

// Recurrent_inc_investigator with the nodes outside C ∪ {x} ∪ P that are linked to all of C
// given in two parts.
void Investigate(const NodeIndex& x, const VtxMap& working, VtxMap& vertices, NodeList C,
                 std::span<const NodeIndex> P, std::span<const NodeIndex> X_before,
                 std::span<const NodeIndex> skipped, CliqueList& cliques, KnownCliques& known,
                 OverlapMatrix& overlaps, NodeCliqueMap& node_cliques) {
  // The recursion of the search, one frame per member added, walked in the same order as the
  // nested calls would be.
  std::vector<Frame> stack(1);
  if (!Enter(x, working, vertices, std::move(C), P, X_before, skipped, cliques, known, overlaps,
             node_cliques, stack.back())) {
    return;
  }
  while (!stack.empty()) {
    Frame& top = stack.back();
    if (top.next == top.T.size()) {
      stack.pop_back();
      continue;
    }
    const std::span<const NodeIndex> T(top.T);
    // Every later call from this frame extends a subset of C ∪ (candidates left); once a known
    // clique holds that union they would all return at once, so the frame ends here instead.
    if (top.next > 0 && known.size() != top.known_checked) {
      top.known_checked = known.size();
      if (!Mehet_tovabb(known, top.C, T.subspan(top.next))) {
        stack.pop_back();
        continue;
      }
    }
    const std::size_t i = top.next++;
    Frame child;
    if (Enter(T[i], working, vertices, top.C, T.subspan(i + 1), top.X, T.first(i), cliques, known,
              overlaps, node_cliques, child)) {
      stack.push_back(std::move(child));
    }
  }
}

}  // namespace

void Recurrent_inc_investigator(const NodeIndex& x, const VtxMap& working, VtxMap& vertices,
                                NodeList C, std::span<const NodeIndex> P,
                                std::span<const NodeIndex> X, CliqueList& cliques,
                                KnownCliques& known, const NodeIndex& /*v*/,
                                OverlapMatrix& overlaps, NodeCliqueMap& node_cliques) {
  Investigate(x, working, vertices, std::move(C), P, X, {}, cliques, known, overlaps, node_cliques);
}

void Clique_find_main_inv(const NodeIndex& v, VtxMap& working, VtxMap& vertices,
                          CliqueList& cliques, OverlapMatrix& overlaps,
                          NodeCliqueMap& node_cliques) {
  // The depth-first search of Recurrent_inc_investigator registers exactly these cliques in
  // exactly this order (node_cliques.h); finding them with a pivoting search keeps dense
  // neighbourhoods from costing exponential time.
  for (const NodeList& clique :
       Node_cliques_in_order(v, working, vertices, cliques, node_cliques)) {
    Iktatjuk_az_uj_math_cliquet(cliques, clique, vertices, overlaps, node_cliques, false);
  }
  Unlink_node(working, v);
}

}  // namespace Clique_find_sub_routines

void Clique_find(CliqueList& cliques, OverlapMatrix& overlaps, VtxMap& vertices) {
  using namespace Clique_find_sub_routines;

  Print_line(" Sorting the nodes...");
  NodeOrder order;
  Sort_Vtx_map(order, vertices);
  Print_line(" done.");

  // The working graph of the search is the whole graph less the processed nodes: it is kept as
  // processed flags over the graph's adjacency arrays rather than as a shrinking copy of the map.
  const Adjacency graph(vertices);
  NodeSearch search(graph);
  NodeCliqueMap node_cliques;
  Exact_loop(order, " Locating cliques:", "cliques", cliques, overlaps, [&](const NodeIndex& v) {
    for (const NodeList& clique : Node_cliques_in_order(v, search, cliques, node_cliques)) {
      Iktatjuk_az_uj_math_cliquet(cliques, clique, vertices, overlaps, node_cliques, false);
    }
    search.processed[v] = 1;
  });
}

}  // namespace kcp
