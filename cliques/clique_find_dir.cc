#include "cliques/clique_find_dir.h"

#include <algorithm>
#include <sstream>
#include <string>

#include "cliques/search_report.h"
#include "driver/xerror_msg.h"
#include "text/console.h"

namespace kcp {

namespace Clique_find_dir_sub_routines {

namespace {

using Clique_find_sub_routines::Mehet_tovabb;

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

NodeList Sorted(const NodeSet& set) {
  return NodeList(set.begin(), set.end());
}

// Nodes that link to every member (to_all) and nodes every member links to (from_all), in the
// caller's graph, which still holds the nodes processed earlier.
struct Bounds {
  NodeList to_all;
  NodeList from_all;
};

Bounds Add_member(const Bounds& bounds, const NodeIndex& y, const VtxdMap& vertices) {
  const Vtxd& record = Full_record(vertices, y);
  return Bounds{Intersection(bounds.to_all, record.Ineighs_c()),
                Intersection(bounds.from_all, record.Oneighs_c())};
}

Bounds Bounds_of(const GapList& gaps, const VtxdMap& vertices) {
  if (gaps.size() < 2) return Bounds{};
  const Vtxd& first = Full_record(vertices, gaps.front().label);
  Bounds bounds{Sorted(first.Ineighs_c()), Sorted(first.Oneighs_c())};
  for (std::size_t i = 1; i + 1 < gaps.size(); ++i) {
    bounds = Add_member(bounds, gaps[i].label, vertices);
  }
  return bounds;
}

// True when some node outside S (every member and candidate) could join every clique the list
// can still become, at its front or at its back: none of them is maximal then.
bool Dominated(const GapList& gaps, const NodeList& S, const Bounds& bounds,
               const VtxdMap& vertices) {
  if (bounds.to_all.empty() && bounds.from_all.empty()) return false;
  NodeList candidates;
  for (const Gap& gap : gaps) {
    candidates.insert(candidates.end(), gap.candidates.begin(), gap.candidates.end());
  }
  std::sort(candidates.begin(), candidates.end());
  candidates.erase(std::unique(candidates.begin(), candidates.end()), candidates.end());
  const auto joins_all = [&](const NodeIndex& z, const NodeSet& linked) {
    return !std::binary_search(S.begin(), S.end(), z) && linked.size() >= candidates.size() &&
           std::all_of(candidates.begin(), candidates.end(),
                       [&](const NodeIndex& c) { return linked.count(c) != 0; });
  };
  for (const NodeIndex z : bounds.to_all) {
    if (joins_all(z, Full_record(vertices, z).Oneighs_c())) return true;
  }
  for (const NodeIndex z : bounds.from_all) {
    if (joins_all(z, Full_record(vertices, z).Ineighs_c())) return true;
  }
  return false;
}

// A level of the recursion: its gap list (the caller's own list at the root), the gap whose
// candidates it is trying, and the link bounds of its members.
struct Frame {
  GapList owned;
  bool root = false;
  std::size_t gap = 0;
  std::size_t known_checked = 0;  // size of Known when the list was last tested against it
  Bounds bounds;
};

// The start of one call: returns true when the list goes on to be extended, and records it when
// it is finished. A list none of whose completions could be maximal is not extended.
bool Enter(GapList& gaps, const Bounds& bounds, const VtxdMap& vertices, KnownCliques& known,
           FoundCliques& found, NodeList& S) {
  Merge_already_full_and_possibs(S, gaps);
  if (!Mehet_tovabb(known, S)) return false;
  if (No_more_possible_member(gaps)) {
    Iktatjuk_az_uj_vert_clt(gaps, found, known);
    return false;
  }
  return !Dominated(gaps, S, bounds, vertices);
}

// Recurrent_inc_inv_dir with the link bounds of the list's members given.
void Extend(GapList& gaps, const Bounds& bounds, const VtxdMap& working, const VtxdMap& vertices,
            KnownCliques& known, FoundCliques& found) {
  NodeList S;
  if (!Enter(gaps, bounds, vertices, known, found, S)) return;
  // The recursion, one frame per member inserted, walked in the same order as the nested calls
  // would be; the root frame works on the caller's list, as the call by reference does.
  std::vector<Frame> stack(1);
  stack.back().root = true;
  stack.back().known_checked = known.size();
  stack.back().bounds = bounds;
  while (!stack.empty()) {
    Frame& top = stack.back();
    GapList& list = top.root ? gaps : top.owned;
    while (top.gap < list.size() && list[top.gap].candidates.empty()) ++top.gap;
    if (top.gap == list.size()) {
      stack.pop_back();
      continue;
    }
    // Every later call from this frame starts from a subset of what the list can still reach;
    // once a known clique holds all of it they would all return at once, so the frame ends here.
    if (known.size() != top.known_checked) {
      top.known_checked = known.size();
      Merge_already_full_and_possibs(S, list);
      if (!Mehet_tovabb(known, S)) {
        stack.pop_back();
        continue;
      }
    }
    const auto position = list.begin() + static_cast<std::ptrdiff_t>(top.gap);
    const NodeIndex y = position->candidates.front();
    GapList next = Tighten_dir(list, position, y, working);
    Take_first_candidate(list[top.gap]);
    Bounds next_bounds = Add_member(top.bounds, y, vertices);
    if (Enter(next, next_bounds, vertices, known, found, S)) {
      Frame child;
      child.owned = std::move(next);
      child.known_checked = known.size();
      child.bounds = std::move(next_bounds);
      stack.push_back(std::move(child));
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
  const NodeSet& outs = record.Oneighs_c();
  const NodeSet& ins = record.Ineighs_c();
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
  Extend(gaps, Bounds_of(gaps, vertices), working, vertices, known, found);
}

void Main_inc_dir_investigator(const NodeIndex& v, VtxdMap& working, VtxdMap& vertices,
                               CliqueList& cliques, OverlapMatrix& overlaps,
                               NodeCliqueMap& node_cliques) {
  const Vtxd& own = Working_record(working, v);
  const NodeList N(own.Neighs_c().begin(), own.Neighs_c().end());
  const auto record = vertices.find(v);
  if (record == vertices.end()) {
    throw Xerror_msg("ERROR: Clique_find_dir() : node " + std::to_string(v) +
                     " has no vertex record.");
  }
  KnownCliques known = Clique_find_sub_routines::Known_cliques_of(record->second);
  FoundCliques found;

  GapList L{Gap{v, Sorted(own.Ineighs_c())}, Gap{v, Sorted(own.Oneighs_c())}};
  const Bounds v_bounds{Sorted(record->second.Ineighs_c()), Sorted(record->second.Oneighs_c())};
  NodeList S;
  std::size_t known_checked = 0;
  bool covered = false;
  for (std::size_t e = 0; e < L.size() && !covered; ++e) {
    while (!L[e].candidates.empty()) {
      // What L can still reach bounds every later branch; once a known clique holds it, every
      // later w would be skipped.
      if (known.size() != known_checked) {
        known_checked = known.size();
        Merge_already_full_and_possibs(S, L);
        if (!Mehet_tovabb(known, S)) {
          covered = true;
          break;
        }
      }
      const auto at_e = L.cbegin() + static_cast<std::ptrdiff_t>(e);
      const NodeIndex w = at_e->candidates.front();
      GapList R = Tighten_dir(L, at_e, w, working);
      Take_first_candidate(L[e]);
      Merge_already_full_and_possibs(S, R);
      if (!Mehet_tovabb(known, S)) continue;
      const Bounds R_bounds = Add_member(v_bounds, w, vertices);
      if (Dominated(R, S, R_bounds, vertices)) continue;
      std::size_t checked = known.size();
      for (std::size_t f = 0; f < R.size(); ++f) {
        bool done = false;
        while (!R[f].candidates.empty()) {
          if (known.size() != checked) {
            checked = known.size();
            Merge_already_full_and_possibs(S, R);
            if (!Mehet_tovabb(known, S)) {
              done = true;
              break;
            }
          }
          const auto at_f = R.cbegin() + static_cast<std::ptrdiff_t>(f);
          const NodeIndex y = at_f->candidates.front();
          GapList R2 = Tighten_dir(R, at_f, y, working);
          Take_first_candidate(R[f]);
          Extend(R2, Add_member(R_bounds, y, vertices), working, vertices, known, found);
        }
        if (done) break;
      }
    }
  }

  for (const auto& [key, clique] : found) {
    Clique_find_sub_routines::Iktatjuk_az_uj_math_cliquet(cliques, clique, vertices, overlaps,
                                                          node_cliques);
  }

  Vtxd& unlinked = working.find(v)->second;
  for (const NodeIndex n : N) {
    unlinked.Remove_neigh(n);
    working.find(n)->second.Remove_neigh(v);
  }
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
  const auto total = static_cast<std::uint32_t>(working.size());
  for (const NodeIndex v : order) {
    std::ostringstream block;
    Report_progress(" Locating dir. cliques:", "nodes", static_cast<std::uint32_t>(working.size()),
                    total, block);
    Print_text(block.str());
    Main_inc_dir_investigator(v, working, vertices, cliques, overlaps, node_cliques);
    working.erase(v);
  }
  std::ostringstream closing;
  Report_clique_search_end("directed cliques", cliques.size(), closing);
  Print_text(closing.str());
}

}  // namespace kcp
