#include "cliques/clique_find_dir.h"

#include <algorithm>
#include <iterator>
#include <span>
#include <sstream>
#include <string>
#include <unordered_map>

#include "cliques/dir_arrays.h"
#include "cliques/dir_walk_path.h"
#include "cliques/exact_loop.h"
#include "cliques/search_report.h"
#include "core/xerror_msg.h"
#include "text/console.h"

namespace kcp {

namespace Clique_find_dir_sub_routines {

namespace {

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

// S ⊆ K for ascending S and K.
bool Is_subset(const NodeList& S, const NodeList& K) {
  return S.size() <= K.size() && std::includes(K.begin(), K.end(), S.begin(), S.end());
}

// Nodes that link to every member (to_all) and nodes every member links to (from_all), in the
// caller's graph, which still holds the nodes processed earlier.
struct Bounds {
  NodeList to_all;
  NodeList from_all;
};

Bounds Add_member(const Bounds& bounds, const NodeIndex& y, const DirArrays& full) {
  return Bounds{Intersection(bounds.to_all, full.ins.Of(y)),
                Intersection(bounds.from_all, full.outs.Of(y))};
}

Bounds Bounds_of(const GapList& gaps, const VtxdMap& vertices, const DirArrays& full) {
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
               const DirArrays& full) {
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

// Known, with for every node the positions of the known cliques holding it, so that a subset test
// reads only the cliques holding the rarest member of the set. Cliques appended to Known since the
// last test are taken in first.
class KnownIndex {
 public:
  explicit KnownIndex(const KnownCliques& known) : known_(known) {}

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
struct DirSearch {
  DirSearch(const VtxdMap& working_map, const VtxdMap& vertex_map, const DirArrays& work_arrays,
            const DirArrays& full_arrays, const std::vector<char>& processed_flags,
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
  const DirArrays& work;
  const DirArrays& full;
  const std::vector<char>& processed;
  KnownCliques& known;
  FoundCliques& found;
  std::size_t step_limit;
  std::size_t steps = 0;
  bool over = false;
  NodeList S;
  KnownIndex index;

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
                  const DirArrays& work) {
  return Tighten_with(gaps, position, x, work.ins.Of(x), work.outs.Of(x));
}

// The start of one call of the walk: returns true when the list goes on to be extended, and
// records it when it is finished. A list none of whose completions could be maximal is not
// extended: it could only record cliques that a later, larger find drops again.
bool Enter(GapList& gaps, const Bounds& bounds, DirSearch& search) {
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
void Extend(GapList& gaps, const Bounds& bounds, DirSearch& search) {
  if (!Enter(gaps, bounds, search)) return;
  // The recursion, one frame per member inserted, walked in the same order as the nested calls
  // would be; the root frame works on the caller's list, as the call by reference does.
  std::vector<Frame> stack(1);
  stack.back().root = true;
  stack.back().known_checked = search.known.size();
  stack.back().bounds = bounds;
  while (!search.Stopped()) {
    GapList* const open = Open_frame(stack, gaps);
    if (open == nullptr) break;
    Frame& top = stack.back();
    GapList& list = *open;
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

// The walk of Main_inc_dir_investigator for node v, up to the registration.
void Walk_node(const NodeIndex& v, DirSearch& search) {
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
  const DirArrays work(working);
  const DirArrays full(vertices);
  const std::vector<char> none;
  DirSearch search{working, vertices, work, full, none, known, found, static_cast<std::size_t>(-1)};
  Extend(gaps, Bounds_of(gaps, vertices, full), search);
}

namespace {

// Main_inc_dir_investigator over arrays built once for the whole search (see DirSearch).
void Investigate_node(const NodeIndex& v, VtxdMap& working, VtxdMap& vertices,
                      const DirArrays& work, const DirArrays& full,
                      const std::vector<char>& processed, CliqueList& cliques,
                      OverlapMatrix& overlaps, NodeCliqueMap& node_cliques,
                      const std::size_t& plain_steps) {
  Working_record(working, v);
  KnownCliques known = Clique_find_sub_routines::Known_cliques_of(v, cliques, node_cliques);
  FoundCliques found;
  DirSearch plain{working, vertices, work, full, processed, known, found, plain_steps};
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
    std::vector<std::pair<WalkPath, std::size_t>> keyed;
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

  Unlink_node(working, v);
}

}  // namespace

void Main_inc_dir_investigator(const NodeIndex& v, VtxdMap& working, VtxdMap& vertices,
                               CliqueList& cliques, OverlapMatrix& overlaps,
                               NodeCliqueMap& node_cliques, const std::size_t& plain_steps) {
  const DirArrays work(working);
  const DirArrays full(vertices);
  Investigate_node(v, working, vertices, work, full, {}, cliques, overlaps, node_cliques,
                   plain_steps);
}

}  // namespace Clique_find_dir_sub_routines

void Clique_find_dir(CliqueList& cliques, OverlapMatrix& overlaps, VtxdMap& vertices,
                     const StopRequest* stop) {
  using namespace Clique_find_dir_sub_routines;
  VtxdMap working = vertices;

  NodeOrder order;
  Sort_dir_vtx_map(order, vertices, "Neighs");

  NodeCliqueMap node_cliques;
  // The working graph is the whole graph less the processed nodes (see DirSearch).
  const DirArrays full(vertices);
  std::vector<char> processed(full.ins.Node_bound(), 0);
  Exact_loop(order, " Locating dir. cliques:", "directed cliques", cliques, overlaps, stop,
             [&](const NodeIndex& v) {
               Investigate_node(v, working, vertices, full, full, processed, cliques, overlaps,
                                node_cliques, kPlainDirSteps);
               processed[v] = 1;
               working.erase(v);
             });
}

}  // namespace kcp
