#include "cliques/clique_find_dir.h"

#include <algorithm>
#include <iterator>
#include <span>
#include <sstream>
#include <string>
#include <unordered_map>

#include "cliques/search_report.h"
#include "core/xerror_msg.h"
#include "graph/adjacency.h"
#include "text/console.h"

namespace kcp {

namespace Clique_find_dir_sub_routines {

namespace {

const Vtxd& Working_record(const VtxdMap& working, const NodeIndex& x) {
  const auto record = working.find(x);
  if (record == working.end()) {
    throw Xerror_msg("ERROR: Clique_find_dir() : node " + std::to_string(x) +
                     " is missing from the working graph.");
  }
  return record->second;
}

NodeList Intersection(const NodeList& candidates, const NodeSet& neighs) {
  NodeList result;
  for (const NodeIndex n : candidates) {
    if (neighs.count(n) != 0) result.push_back(n);
  }
  return result;
}

// The same against an ascending array: merged when the two are of like length, else searched.
NodeList Intersection(const NodeList& candidates, std::span<const NodeIndex> neighs) {
  NodeList result;
  if (candidates.size() * 8 < neighs.size()) {
    auto from = neighs.begin();
    for (const NodeIndex n : candidates) {
      from = std::lower_bound(from, neighs.end(), n);
      if (from == neighs.end()) break;
      if (*from == n) result.push_back(n);
    }
    return result;
  }
  std::set_intersection(candidates.begin(), candidates.end(), neighs.begin(), neighs.end(),
                        std::back_inserter(result));
  return result;
}

bool Holds(std::span<const NodeIndex> sorted, const NodeIndex& n) {
  return std::binary_search(sorted.begin(), sorted.end(), n);
}

// The in- and out-neighbours of every node of a directed vertex map, as ascending arrays.
struct Dir_arrays {
  explicit Dir_arrays(const VtxdMap& map)
      : ins(map, [](const Vtxd& record) -> const NodeSet& { return record.Ineighs_c(); }),
        outs(map, [](const Vtxd& record) -> const NodeSet& { return record.Oneighs_c(); }) {}
  Adjacency ins;
  Adjacency outs;
};

// S ⊆ K for ascending S and K.
bool Is_subset(const NodeList& S, const NodeList& K) {
  return S.size() <= K.size() && std::includes(K.begin(), K.end(), S.begin(), S.end());
}

const Vtxd& Full_record(const VtxdMap& vertices, const NodeIndex& z) {
  const auto record = vertices.find(z);
  if (record == vertices.end()) {
    throw Xerror_msg("ERROR: Clique_find_dir() : node " + std::to_string(z) +
                     " has no vertex record.");
  }
  return record->second;
}

// Nodes that link to every member (to_all) and nodes every member links to (from_all), in the
// caller's graph, which still holds the nodes processed earlier.
struct Bounds {
  NodeList to_all;
  NodeList from_all;
};

Bounds Add_member(const Bounds& bounds, const NodeIndex& y, const Dir_arrays& full) {
  return Bounds{Intersection(bounds.to_all, full.ins.Of(y)),
                Intersection(bounds.from_all, full.outs.Of(y))};
}

Bounds Bounds_of(const GapList& gaps, const VtxdMap& vertices, const Dir_arrays& full) {
  if (gaps.size() < 2) return Bounds{};
  const NodeIndex first = gaps.front().label;
  Full_record(vertices, first);
  const std::span<const NodeIndex> ins = full.ins.Of(first);
  const std::span<const NodeIndex> outs = full.outs.Of(first);
  Bounds bounds{NodeList(ins.begin(), ins.end()), NodeList(outs.begin(), outs.end())};
  for (std::size_t i = 1; i + 1 < gaps.size(); ++i) {
    bounds = Add_member(bounds, gaps[i].label, full);
  }
  return bounds;
}

// True when some node outside S (every member and candidate) could join every clique the list
// can still become, at its front or at its back: none of them is maximal then.
bool Dominated(const GapList& gaps, const NodeList& S, const Bounds& bounds,
               const Dir_arrays& full) {
  if (bounds.to_all.empty() && bounds.from_all.empty()) return false;
  NodeList candidates;
  for (const Gap& gap : gaps) {
    candidates.insert(candidates.end(), gap.candidates.begin(), gap.candidates.end());
  }
  std::sort(candidates.begin(), candidates.end());
  candidates.erase(std::unique(candidates.begin(), candidates.end()), candidates.end());
  const auto joins_all = [&](const NodeIndex& z, std::span<const NodeIndex> linked) {
    return !std::binary_search(S.begin(), S.end(), z) && linked.size() >= candidates.size() &&
           std::all_of(candidates.begin(), candidates.end(),
                       [&](const NodeIndex& c) { return Holds(linked, c); });
  };
  for (const NodeIndex z : bounds.to_all) {
    if (joins_all(z, full.outs.Of(z))) return true;
  }
  for (const NodeIndex z : bounds.from_all) {
    if (joins_all(z, full.ins.Of(z))) return true;
  }
  return false;
}

// The cliques a node must end with are found on bit rows over its neighbourhood.

using Bits = std::vector<std::uint64_t>;

bool Test(const Bits& bits, const std::size_t& i) {
  return (bits[i >> 6] >> (i & 63)) & 1u;
}
void Set(Bits& bits, const std::size_t& i) {
  bits[i >> 6] |= std::uint64_t{1} << (i & 63);
}

// v (local 0) and its neighbours (local 1.., ascending) with the links among them.
struct Local_graph {
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

Local_graph Local_graph_of(const NodeIndex& v, const VtxdMap& vertices) {
  Local_graph graph;
  const NodeSet& neighs = Full_record(vertices, v).Neighs_c();
  graph.nodes.push_back(v);
  graph.nodes.insert(graph.nodes.end(), neighs.begin(), neighs.end());
  const std::size_t n = graph.nodes.size();
  graph.words = (n + 63) / 64;
  graph.out.assign(n, Bits(graph.words, 0));
  graph.in.assign(n, Bits(graph.words, 0));
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
      Set(graph.out[i], j);
      Set(graph.in[j], i);
    }
  }
  graph.from_only.assign(n, Bits(graph.words, 0));
  graph.to_only.assign(n, Bits(graph.words, 0));
  for (std::size_t i = 0; i < n; ++i) {
    for (std::size_t w = 0; w < graph.words; ++w) {
      graph.from_only[i][w] = graph.out[i][w] & ~graph.in[i][w];
      graph.to_only[i][w] = graph.in[i][w] & ~graph.out[i][w];
    }
  }
  return graph;
}

bool Meets(const Bits& a, const Bits& b) {
  for (std::size_t w = 0; w < a.size(); ++w) {
    if ((a[w] & b[w]) != 0) return true;
  }
  return false;
}

bool Within(const Bits& part, const Bits& whole) {
  for (std::size_t w = 0; w < part.size(); ++w) {
    if ((part[w] & ~whole[w]) != 0) return false;
  }
  return true;
}

// The members of `members` reached from u along one-way links, forwards or backwards, u
// included.
Bits Reached(const Local_graph& graph, const std::size_t& u, const Bits& members,
             const bool& forwards) {
  Bits reached(graph.words, 0);
  Set(reached, u);
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
bool Is_directed_clique(const Local_graph& graph, const Bits& set) {
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

struct Bk_frame {
  std::vector<std::size_t> R;
  Bits R_bits;
  std::vector<std::size_t> P;
  std::vector<std::size_t> X;
  std::size_t next = 0;
};

// True when a node of X could join every clique R can grow into within P: it is linked both
// ways with all of R ∪ P, or links to all of them, or all of them link to it.
bool Bk_dominated(const Local_graph& graph, const Bk_frame& frame) {
  Bits reach = frame.R_bits;
  for (const std::size_t z : frame.P) Set(reach, z);
  for (const std::size_t x : frame.X) {
    if (Within(reach, graph.out[x]) || Within(reach, graph.in[x])) return true;
  }
  return false;
}

// Settles a frame whose R ∪ P is itself a directed clique: it is the only maximal set of the
// branch, reported unless a node of X could join it. Returns false for any other frame.
bool Settled_whole(const Local_graph& graph, const Bk_frame& frame, CliqueList& result) {
  Bits whole = frame.R_bits;
  for (const std::size_t z : frame.P) Set(whole, z);
  if (!Is_directed_clique(graph, whole)) return false;
  Bits more = whole;
  for (const std::size_t x : frame.X) {
    // Only a node linked with every member can make a larger clique.
    bool linked = true;
    for (std::size_t w = 0; w < graph.words && linked; ++w) {
      linked = (whole[w] & ~(graph.out[x][w] | graph.in[x][w])) == 0;
    }
    if (!linked) continue;
    Set(more, x);
    if (Is_directed_clique(graph, more)) return true;
    more[x >> 6] &= ~(std::uint64_t{1} << (x & 63));
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
  const Local_graph graph = Local_graph_of(v, vertices);
  CliqueList result;
  // Maximal node sets holding v whose one-way links leave no cycle, found by extending R with
  // the candidates P while X keeps the nodes that must stay out (processed before v, or tried
  // already); R is maximal when neither has a node left that could join it.
  std::vector<Bk_frame> stack(1);
  Bk_frame& root = stack.back();
  root.R.push_back(0);
  root.R_bits.assign(graph.words, 0);
  Set(root.R_bits, 0);
  for (std::size_t i = 1; i < graph.nodes.size(); ++i) {
    (working.count(graph.nodes[i]) != 0 ? root.P : root.X).push_back(i);
  }
  if (root.P.empty() || Settled_whole(graph, root, result) || Bk_dominated(graph, root)) {
    return result;
  }
  while (!stack.empty()) {
    Bk_frame& top = stack.back();
    if (top.next == top.P.size()) {
      stack.pop_back();
      continue;
    }
    const std::size_t i = top.next++;
    const std::size_t u = top.P[i];
    Bk_frame child;
    child.R = top.R;
    child.R.push_back(u);
    child.R_bits = top.R_bits;
    Set(child.R_bits, u);
    const Bits before_u = Reached(graph, u, child.R_bits, false);
    const Bits after_u = Reached(graph, u, child.R_bits, true);
    // z may join R + u when it is linked with u and closes no cycle of one-way links through u.
    const auto may_join = [&](const std::size_t& z) {
      if (!Test(graph.out[u], z) && !Test(graph.in[u], z)) return false;
      return !(Meets(graph.One_way_from(z), before_u) && Meets(graph.One_way_to(z), after_u));
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

namespace {

// Known, with for every node the positions of the known cliques holding it, so that a subset test
// reads only the cliques holding the rarest member of the set. Cliques appended to Known since the
// last test are taken in first.
class Known_index {
 public:
  explicit Known_index(const KnownCliques& known) : known_(known) {}

  // Mehet_tovabb(known, S): false when a known clique holds S.
  bool Mehet_tovabb(const NodeList& S) {
    for (; indexed_ < known_.size(); ++indexed_) {
      for (const NodeIndex m : known_[indexed_]) {
        holding_[m].push_back(static_cast<std::uint32_t>(indexed_));
      }
    }
    const std::vector<std::uint32_t>* rarest = nullptr;
    for (const NodeIndex n : S) {
      const auto at = holding_.find(n);
      if (at == holding_.end()) return true;
      if (rarest == nullptr || at->second.size() < rarest->size()) rarest = &at->second;
    }
    if (rarest == nullptr) return known_.empty();
    for (const std::uint32_t k : *rarest) {
      if (Is_subset(S, known_[k])) return false;
    }
    return true;
  }

 private:
  const KnownCliques& known_;
  std::unordered_map<NodeIndex, std::vector<std::uint32_t>> holding_;
  std::size_t indexed_ = 0;
};

// A level of the walk: its gap list (the caller's own list at the root), the gap whose
// candidates it is trying, and the link bounds of its members.
struct Frame {
  GapList owned;
  bool root = false;
  std::size_t gap = 0;
  std::size_t known_checked = 0;  // size of Known when the list was last tested against it
  Bounds bounds;
};

// The state of one node's walk: the known and found cliques and a limit on its steps. The
// working graph is read from `work` less the `processed` nodes (the whole graph and the flags
// of the processed nodes in a run, whose working graph is the whole graph less those nodes);
// the candidates of a list are unprocessed, so intersecting them with a node's neighbours in
// `work` is intersecting them with its neighbours in the working graph.
struct Dir_search {
  Dir_search(const VtxdMap& working_map, const VtxdMap& vertex_map, const Dir_arrays& work_arrays,
             const Dir_arrays& full_arrays, const std::vector<char>& processed_flags,
             KnownCliques& known_cliques, FoundCliques& found_cliques, const std::size_t& limit)
      : working(working_map),
        vertices(vertex_map),
        work(work_arrays),
        full(full_arrays),
        processed(processed_flags),
        known(known_cliques),
        found(found_cliques),
        step_limit(limit),
        index(known_cliques) {}

  const VtxdMap& working;
  const VtxdMap& vertices;
  const Dir_arrays& work;
  const Dir_arrays& full;
  const std::vector<char>& processed;
  KnownCliques& known;
  FoundCliques& found;
  std::size_t step_limit;
  std::size_t steps = 0;
  bool over = false;
  NodeList S;
  Known_index index;

  bool Stopped() const { return over; }
};

// Tighten_dir with x's in- and out-neighbours given, as sets or as ascending arrays.
template <typename Neighbours>
GapList Tighten_with(const GapList& gaps, GapList::const_iterator position, const NodeIndex& x,
                     const Neighbours& ins, const Neighbours& outs) {
  GapList result;
  result.reserve(gaps.size() + 1);
  for (auto gap = gaps.begin(); gap != position; ++gap) {
    result.push_back(Gap{gap->label, Intersection(gap->candidates, ins)});
  }
  result.push_back(Gap{x, Intersection(position->candidates, ins)});
  for (auto gap = position; gap != gaps.end(); ++gap) {
    result.push_back(Gap{gap->label, Intersection(gap->candidates, outs)});
  }
  return result;
}

// Tighten_dir over the arrays of a graph that links the candidates as the working graph does.
GapList Tightened(const GapList& gaps, GapList::const_iterator position, const NodeIndex& x,
                  const Dir_arrays& work) {
  return Tighten_with(gaps, position, x, work.ins.Of(x), work.outs.Of(x));
}

// The start of one call of the walk: returns true when the list goes on to be extended, and
// records it when it is finished. A list none of whose completions could be maximal is not
// extended: it could only record cliques that a later, larger find drops again.
bool Enter(GapList& gaps, const Bounds& bounds, Dir_search& search) {
  if (++search.steps > search.step_limit) {
    search.over = true;
    return false;
  }
  Merge_already_full_and_possibs(search.S, gaps);
  if (!search.index.Mehet_tovabb(search.S)) return false;
  if (No_more_possible_member(gaps)) {
    Iktatjuk_az_uj_vert_clt(gaps, search.found, search.known);
    return false;
  }
  return !Dominated(gaps, search.S, bounds, search.full);
}

// Recurrent_inc_inv_dir with the link bounds of the list's members given.
void Extend(GapList& gaps, const Bounds& bounds, Dir_search& search) {
  if (!Enter(gaps, bounds, search)) return;
  // The recursion, one frame per member inserted, walked in the same order as the nested calls
  // would be; the root frame works on the caller's list, as the call by reference does.
  std::vector<Frame> stack(1);
  stack.back().root = true;
  stack.back().known_checked = search.known.size();
  stack.back().bounds = bounds;
  while (!stack.empty() && !search.Stopped()) {
    Frame& top = stack.back();
    GapList& list = top.root ? gaps : top.owned;
    while (top.gap < list.size() && list[top.gap].candidates.empty()) ++top.gap;
    if (top.gap == list.size()) {
      stack.pop_back();
      continue;
    }
    // Every later call from this frame starts from a subset of what the list can still reach;
    // once a known clique holds all of it they would all return at once, so the frame ends here.
    if (search.known.size() != top.known_checked) {
      top.known_checked = search.known.size();
      Merge_already_full_and_possibs(search.S, list);
      if (!search.index.Mehet_tovabb(search.S)) {
        stack.pop_back();
        continue;
      }
    }
    const auto position = list.begin() + static_cast<std::ptrdiff_t>(top.gap);
    const NodeIndex y = position->candidates.front();
    GapList next = Tightened(list, position, y, search.work);
    Take_first_candidate(list[top.gap]);
    Bounds next_bounds = Add_member(top.bounds, y, search.full);
    if (Enter(next, next_bounds, search)) {
      Frame child;
      child.owned = std::move(next);
      child.known_checked = search.known.size();
      child.bounds = std::move(next_bounds);
      stack.push_back(std::move(child));
    }
  }
}

// The steps of a walk: at each list, the gap tried and the node put into it. The walk takes the
// steps of a list in ascending (gap, node) order, so paths compare as the walk meets them.
using Walk_path = std::vector<std::pair<std::size_t, NodeIndex>>;

// The links among the members of a clique M (ascending), as bit rows over their positions in
// M; a set of members is a row too, and ascending positions are ascending nodes.
class Member_links {
 public:
  Member_links(const NodeList& M, const Dir_arrays& work)
      : words_((M.size() + 63) / 64), rows_(3 * M.size() * words_, 0) {
    for (std::size_t i = 0; i < M.size(); ++i) {
      Mark(M, work.ins.Of(M[i]), Row(kIns, i));
      Mark(M, work.outs.Of(M[i]), Row(kOuts, i));
      std::uint64_t* one_way = Row(kOneWay, i);
      for (std::size_t w = 0; w < words_; ++w) one_way[w] = Outs(i)[w] & ~Ins(i)[w];
    }
  }

  std::size_t Words() const { return words_; }
  // Members linking to member i, members i links to, and members i links to one way only.
  const std::uint64_t* Ins(const std::size_t& i) const { return Row(kIns, i); }
  const std::uint64_t* Outs(const std::size_t& i) const { return Row(kOuts, i); }
  const std::uint64_t* One_way(const std::size_t& i) const { return Row(kOneWay, i); }

 private:
  enum Kind : std::size_t { kIns = 0, kOuts = 1, kOneWay = 2 };
  std::uint64_t* Row(const Kind& kind, const std::size_t& i) {
    return rows_.data() + (3 * i + kind) * words_;
  }
  const std::uint64_t* Row(const Kind& kind, const std::size_t& i) const {
    return rows_.data() + (3 * i + kind) * words_;
  }
  static void Mark(const NodeList& M, std::span<const NodeIndex> linked, std::uint64_t* row) {
    auto from = linked.begin();
    for (std::size_t j = 0; j < M.size(); ++j) {
      from = std::lower_bound(from, linked.end(), M[j]);
      if (from == linked.end()) return;
      if (*from == M[j]) row[j >> 6] |= std::uint64_t{1} << (j & 63);
    }
  }

  std::size_t words_;
  std::vector<std::uint64_t> rows_;
};

// A gap list restricted to the members of M: the candidates of gap g are the bits
// [g * words, (g + 1) * words). Labels are not kept: which members can still be placed depends
// only on the candidates.
struct Member_gaps {
  std::size_t words = 0;
  std::vector<std::uint64_t> bits;

  std::size_t Size() const { return bits.size() / words; }
  std::uint64_t* Gap(const std::size_t& g) { return bits.data() + g * words; }
  const std::uint64_t* Gap(const std::size_t& g) const { return bits.data() + g * words; }
  bool Holds(const std::size_t& g, const std::size_t& i) const {
    return (Gap(g)[i >> 6] >> (i & 63)) & 1u;
  }
  // The smallest candidate of gap g, or `none` when it has none.
  std::size_t First(const std::size_t& g, const std::size_t& none) const {
    for (std::size_t w = 0; w < words; ++w) {
      if (Gap(g)[w] != 0) return w * 64 + static_cast<std::size_t>(__builtin_ctzll(Gap(g)[w]));
    }
    return none;
  }
};

// Tighten_dir on member gaps: member y goes into gap f.
void Tighten_members(const Member_gaps& gaps, const std::size_t& f, const std::size_t& y,
                     const Member_links& links, Member_gaps& result) {
  const std::size_t words = gaps.words;
  result.words = words;
  result.bits.resize(gaps.bits.size() + words);
  for (std::size_t g = 0; g < gaps.Size(); ++g) {
    const std::uint64_t* side = g < f ? links.Ins(y) : links.Outs(y);
    std::uint64_t* into = result.Gap(g < f ? g : g + 1);
    for (std::size_t w = 0; w < words; ++w) into[w] = gaps.Gap(g)[w] & side[w];
  }
  for (std::size_t w = 0; w < words; ++w) result.Gap(f)[w] = gaps.Gap(f)[w] & links.Ins(y)[w];
}

// Whether the members `rest` can all still be put into the list: each into a gap that holds it
// as a candidate, a node linked one way only to another into the same or an earlier gap (within
// a gap any order the links allow can still be built). Taking every node, in an order where
// those links run forwards, into the first gap that is no earlier than the gaps of the nodes
// linking to it, finds such a placement whenever there is one.
bool Can_take_all(const Member_gaps& gaps, const std::vector<std::uint64_t>& rest,
                  const std::size_t& members, const Member_links& links) {
  std::vector<std::size_t> waiting(members, 0);
  std::vector<std::size_t> lowest(members, 0);
  std::vector<std::size_t> ready;
  std::size_t count = 0;
  const auto each = [&](const std::uint64_t* row, const auto& visit) {
    for (std::size_t w = 0; w < links.Words(); ++w) {
      for (std::uint64_t bits = row[w] & rest[w]; bits != 0; bits &= bits - 1) {
        visit(w * 64 + static_cast<std::size_t>(__builtin_ctzll(bits)));
      }
    }
  };
  each(rest.data(), [&](const std::size_t& i) {
    ++count;
    each(links.One_way(i), [&](const std::size_t& j) { ++waiting[j]; });
  });
  each(rest.data(), [&](const std::size_t& i) {
    if (waiting[i] == 0) ready.push_back(i);
  });
  std::size_t placed = 0;
  while (!ready.empty()) {
    const std::size_t i = ready.back();
    ready.pop_back();
    std::size_t gap = lowest[i];
    while (gap < gaps.Size() && !gaps.Holds(gap, i)) ++gap;
    if (gap == gaps.Size()) return false;
    ++placed;
    each(links.One_way(i), [&](const std::size_t& j) {
      lowest[j] = std::max(lowest[j], gap);
      if (--waiting[j] == 0) ready.push_back(j);
    });
  }
  return placed == count;
}

// The first path of v's walk that ends with the members M (ascending), a clique v must end
// with. Every order of M is reached by exactly one path, so the walk records M at the first path
// that can still take in all of M; it is followed step by step, trying the steps in the walk's
// order.
Walk_path First_path_to(const NodeIndex& v, const NodeList& M, const Dir_arrays& work) {
  const Member_links links(M, work);
  const std::size_t words = links.Words();
  const auto at_v = std::lower_bound(M.begin(), M.end(), v);
  if (at_v == M.end() || *at_v != v) {
    throw Xerror_msg("ERROR: Clique_find_dir() : node " + std::to_string(v) +
                     " is not in a clique it must end with.");
  }
  const auto v_at = static_cast<std::size_t>(at_v - M.begin());
  Member_gaps list{words, std::vector<std::uint64_t>(2 * words, 0)};
  for (std::size_t w = 0; w < words; ++w) {
    list.Gap(0)[w] = links.Ins(v_at)[w];
    list.Gap(1)[w] = links.Outs(v_at)[w];
  }
  std::vector<std::uint64_t> rest(words, 0);
  for (std::size_t i = 0; i < M.size(); ++i) {
    if (i != v_at) rest[i >> 6] |= std::uint64_t{1} << (i & 63);
  }
  Walk_path path;
  Member_gaps base;
  Member_gaps next;
  std::vector<std::uint64_t> rest_after;
  for (std::size_t left = M.size() - 1; left > 0; --left) {
    bool moved = false;
    for (std::size_t f = 0; f < list.Size() && !moved; ++f) {
      // The walk reaches the gap f only with the earlier gaps used up, and tries its candidates
      // in ascending order, each with the smaller ones gone.
      base = list;
      std::fill(base.bits.begin(), base.bits.begin() + static_cast<std::ptrdiff_t>(f * words), 0);
      for (std::size_t y = base.First(f, M.size()); y != M.size() && !moved;
           y = base.First(f, M.size())) {
        Tighten_members(base, f, y, links, next);
        base.Gap(f)[y >> 6] &= ~(std::uint64_t{1} << (y & 63));
        rest_after = rest;
        rest_after[y >> 6] &= ~(std::uint64_t{1} << (y & 63));
        if (Can_take_all(next, rest_after, M.size(), links)) {
          path.emplace_back(f, M[y]);
          std::swap(list, next);
          std::swap(rest, rest_after);
          moved = true;
        }
      }
    }
    if (!moved) {
      // M is a maximal directed clique holding v, so some order of it always remains open.
      throw Xerror_msg("ERROR: Clique_find_dir() : no walk of node " + std::to_string(v) +
                       " reaches one of its cliques.");
    }
  }
  return path;
}

// The walk of Main_inc_dir_investigator for node v, up to the registration.
void Walk_node(const NodeIndex& v, Dir_search& search) {
  Working_record(search.working, v);
  Full_record(search.vertices, v);
  const auto unprocessed = [&](std::span<const NodeIndex> nodes) {
    NodeList kept;
    for (const NodeIndex n : nodes) {
      if (n >= search.processed.size() || !search.processed[n]) kept.push_back(n);
    }
    return kept;
  };
  GapList L{Gap{v, unprocessed(search.work.ins.Of(v))},
            Gap{v, unprocessed(search.work.outs.Of(v))}};
  const std::span<const NodeIndex> v_ins = search.full.ins.Of(v);
  const std::span<const NodeIndex> v_outs = search.full.outs.Of(v);
  const Bounds v_bounds{NodeList(v_ins.begin(), v_ins.end()),
                        NodeList(v_outs.begin(), v_outs.end())};
  NodeList& S = search.S;
  std::size_t known_checked = 0;
  for (std::size_t e = 0; e < L.size(); ++e) {
    while (!L[e].candidates.empty() && !search.Stopped()) {
      // What L can still reach bounds every later branch; once a known clique holds it, every
      // later w would be skipped.
      if (search.known.size() != known_checked) {
        known_checked = search.known.size();
        Merge_already_full_and_possibs(S, L);
        if (!search.index.Mehet_tovabb(S)) return;
      }
      const auto at_e = L.cbegin() + static_cast<std::ptrdiff_t>(e);
      const NodeIndex w = at_e->candidates.front();
      GapList R = Tightened(L, at_e, w, search.work);
      Take_first_candidate(L[e]);
      Merge_already_full_and_possibs(S, R);
      if (!search.index.Mehet_tovabb(S)) continue;
      const Bounds R_bounds = Add_member(v_bounds, w, search.full);
      if (Dominated(R, S, R_bounds, search.full)) continue;
      std::size_t checked = search.known.size();
      for (std::size_t f = 0; f < R.size() && !search.Stopped(); ++f) {
        bool done = false;
        while (!R[f].candidates.empty() && !search.Stopped()) {
          if (search.known.size() != checked) {
            checked = search.known.size();
            Merge_already_full_and_possibs(S, R);
            if (!search.index.Mehet_tovabb(S)) {
              done = true;
              break;
            }
          }
          const auto at_f = R.cbegin() + static_cast<std::ptrdiff_t>(f);
          const NodeIndex y = at_f->candidates.front();
          GapList R2 = Tightened(R, at_f, y, search.work);
          Take_first_candidate(R[f]);
          Extend(R2, Add_member(R_bounds, y, search.full), search);
        }
        if (done) break;
      }
    }
  }
}

}  // namespace

GapList Tighten_dir(const GapList& gaps, GapList::const_iterator position, const NodeIndex& x,
                    const VtxdMap& working) {
  if (position == gaps.end()) {
    throw Xerror_msg("ERROR: Tighten_dir() : the gap to insert into is past the end of the list.");
  }
  const Vtxd& record = Working_record(working, x);
  return Tighten_with(gaps, position, x, record.Ineighs_c(), record.Oneighs_c());
}

void Merge_already_full_and_possibs(NodeList& S, const GapList& gaps) {
  S.clear();
  for (const Gap& gap : gaps) {
    S.push_back(gap.label);
    S.insert(S.end(), gap.candidates.begin(), gap.candidates.end());
  }
  std::sort(S.begin(), S.end());
  S.erase(std::unique(S.begin(), S.end()), S.end());
}

bool No_more_possible_member(const GapList& gaps) {
  return std::all_of(gaps.begin(), gaps.end(),
                     [](const Gap& gap) { return gap.candidates.empty(); });
}

NodeIndex Take_first_candidate(Gap& gap) {
  if (gap.candidates.empty()) {
    throw Xerror_msg("ERROR: Take_first_candidate() : the gap has no candidate.");
  }
  const NodeIndex first = gap.candidates.front();
  gap.candidates.erase(gap.candidates.begin());
  return first;
}

void Iktatjuk_az_uj_vert_clt(GapList gaps, FoundCliques& found, KnownCliques& known) {
  // The last gap repeats the first member; an empty list (never given) holds no member.
  if (!gaps.empty()) gaps.pop_back();
  NodeList K;
  K.reserve(gaps.size());
  for (const Gap& gap : gaps) K.push_back(gap.label);
  std::sort(K.begin(), K.end());
  K.erase(std::unique(K.begin(), K.end()), K.end());
  known.push_back(K);

  std::uint32_t last_key = 0;
  std::vector<std::uint32_t> inside;
  for (const auto& [key, clique] : found) {
    last_key = key;
    if (Is_subset(clique, K)) inside.push_back(key);
  }
  for (const std::uint32_t key : inside) found.erase(key);
  found.emplace(last_key + 1, std::move(K));
}

void Recurrent_inc_inv_dir(GapList& gaps, const VtxdMap& working, const VtxdMap& vertices,
                           KnownCliques& known, FoundCliques& found) {
  const Dir_arrays work(working);
  const Dir_arrays full(vertices);
  const std::vector<char> none;
  Dir_search search{working, vertices, work,  full,
                    none,    known,    found, static_cast<std::size_t>(-1)};
  Extend(gaps, Bounds_of(gaps, vertices, full), search);
}

namespace {

// Main_inc_dir_investigator over arrays built once for the whole search (see Dir_search).
void Investigate_node(const NodeIndex& v, VtxdMap& working, VtxdMap& vertices,
                      const Dir_arrays& work, const Dir_arrays& full,
                      const std::vector<char>& processed, CliqueList& cliques,
                      OverlapMatrix& overlaps, NodeCliqueMap& node_cliques,
                      const std::size_t& plain_steps) {
  const NodeSet& neighs = Working_record(working, v).Neighs_c();
  const NodeList N(neighs.begin(), neighs.end());
  KnownCliques known = Clique_find_sub_routines::Known_cliques_of(v, cliques, node_cliques);
  FoundCliques found;
  Dir_search plain{working, vertices, work, full, processed, known, found, plain_steps};
  Walk_node(v, plain);
  CliqueList in_order;
  if (!plain.over) {
    for (auto& [key, clique] : found) in_order.push_back(std::move(clique));
  } else {
    // The walk spends its steps on member orders that lead to no new maximal clique. What it
    // registers is known without it: the cliques v must end with, each in the place of the
    // first path of the walk that records it (a path never recorded again, since a recorded
    // clique joins Known; and whatever else the walk records, a later, larger find drops).
    const CliqueList targets = Maximal_dir_cliques_of(v, working, vertices);
    std::vector<std::pair<Walk_path, std::size_t>> keyed;
    keyed.reserve(targets.size());
    for (std::size_t t = 0; t < targets.size(); ++t) {
      keyed.emplace_back(First_path_to(v, targets[t], work), t);
    }
    std::sort(keyed.begin(), keyed.end());
    for (const auto& [path, t] : keyed) in_order.push_back(targets[t]);
  }
  for (const Clique& clique : in_order) {
    Clique_find_sub_routines::Iktatjuk_az_uj_math_cliquet(cliques, clique, vertices, overlaps,
                                                          node_cliques, false);
  }

  Vtxd& unlinked = working.find(v)->second;
  for (const NodeIndex n : N) {
    unlinked.Remove_neigh(n);
    working.find(n)->second.Remove_neigh(v);
  }
}

}  // namespace

void Main_inc_dir_investigator(const NodeIndex& v, VtxdMap& working, VtxdMap& vertices,
                               CliqueList& cliques, OverlapMatrix& overlaps,
                               NodeCliqueMap& node_cliques, const std::size_t& plain_steps) {
  const Dir_arrays work(working);
  const Dir_arrays full(vertices);
  Investigate_node(v, working, vertices, work, full, {}, cliques, overlaps, node_cliques,
                   plain_steps);
}

}  // namespace Clique_find_dir_sub_routines

void Clique_find_dir(CliqueList& cliques, OverlapMatrix& overlaps, VtxdMap& vertices) {
  using namespace Clique_find_dir_sub_routines;
  using namespace Clique_find_report_sub_routines;
  cliques.clear();
  overlaps.rows.clear();
  VtxdMap working = vertices;

  NodeOrder order;
  Sort_dir_vtx_map(order, vertices, "Neighs");

  NodeCliqueMap node_cliques;
  // The working graph is the whole graph less the processed nodes (see Dir_search).
  const Dir_arrays full(vertices);
  std::vector<char> processed(full.ins.Node_bound(), 0);
  const auto total = static_cast<std::uint32_t>(working.size());
  for (const NodeIndex v : order) {
    std::ostringstream block;
    Report_progress(" Locating dir. cliques:", "nodes", static_cast<std::uint32_t>(working.size()),
                    total, block);
    Print_text(block.str());
    Investigate_node(v, working, vertices, full, full, processed, cliques, overlaps, node_cliques,
                     kPlainDirSteps);
    processed[v] = 1;
    working.erase(v);
  }
  std::ostringstream closing;
  Report_clique_search_end("directed cliques", cliques.size(), closing);
  Print_text(closing.str());
}

}  // namespace kcp
