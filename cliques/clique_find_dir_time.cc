#include "cliques/clique_find_dir_time.h"

#include <deque>
#include <sstream>
#include <string>
#include <utility>

#include "cliques/search_report.h"
#include "core/xerror_msg.h"
#include "text/console.h"

namespace kcp {

namespace Clique_find_dir_sub_routines {

namespace {

using Clique_find_time_sub_routines::Attempt_timer;
using Clique_find_time_sub_routines::Indexed_known;

const Vtxd& Working_record(const VtxdMap& working, const NodeIndex& x) {
  return Record_of(working, x, "Clique_find_dir_time", "working graph");
}

// A level of the recursion: its gap list (the caller's own list at the root) and the gap whose
// candidates it is trying.
struct Frame {
  GapList owned;
  bool root = false;
  std::size_t gap = 0;
  std::size_t known_checked = 0;  // size of Known when the list was last tested against it
};

// The start of one call: returns true when the list goes on to be extended, and records it when
// it is finished.
bool Enter(GapList& gaps, Indexed_known& known, FoundCliques& found, NodeList& S) {
  Merge_already_full_and_possibs(S, gaps);
  if (!known.Mehet_tovabb(S)) return false;
  if (No_more_possible_member(gaps)) {
    Iktatjuk_az_uj_vert_clt(gaps, found, known.cliques);
    return false;
  }
  return true;
}

// The extensions a level would still try: one per candidate left from gap `from` on.
std::size_t Extensions_left(const GapList& gaps, const std::size_t& from) {
  std::size_t left = 0;
  for (std::size_t g = from; g < gaps.size(); ++g) left += gaps[g].candidates.size();
  return left;
}

}  // namespace

void Recurrent_inc_inv_dir_time(GapList& gaps, const VtxdMap& working, const VtxdMap& /*vertices*/,
                                Indexed_known& known, const long double& t0, FoundCliques& found,
                                const double& max_time, bool& exceeded, Attempt_timer& timer) {
  NodeList S;
  if (!Enter(gaps, known, found, S)) return;
  // The recursion, one frame per member inserted, walked in the order of the nested calls; the
  // root frame works on the caller's list, as the call by reference does.
  std::vector<Frame> stack(1);
  stack.back().root = true;
  stack.back().known_checked = known.size();
  while (!stack.empty()) {
    Frame& top = stack.back();
    GapList& list = top.root ? gaps : top.owned;
    while (top.gap < list.size() && list[top.gap].candidates.empty()) ++top.gap;
    if (top.gap == list.size()) {
      stack.pop_back();
      continue;
    }
    if (known.size() != top.known_checked) {
      top.known_checked = known.size();
      Merge_already_full_and_possibs(S, list);
      if (!known.Mehet_tovabb(S)) {
        // A known clique holds all the list can reach, so each further call would return at
        // once; only the clock readings in front of those calls remain, and they are kept.
        for (std::size_t left = Extensions_left(list, top.gap); left > 0; --left) {
          if (timer.Exceeded(t0, max_time)) {
            exceeded = true;
            return;
          }
        }
        stack.pop_back();
        continue;
      }
    }
    if (timer.Exceeded(t0, max_time)) {
      exceeded = true;
      return;
    }
    const auto position = list.begin() + static_cast<std::ptrdiff_t>(top.gap);
    GapList next = Tighten_dir(list, position, position->candidates.front(), working);
    Take_first_candidate(list[top.gap]);
    if (Enter(next, known, found, S)) {
      Frame child;
      child.owned = std::move(next);
      child.known_checked = known.size();
      stack.push_back(std::move(child));
    }
  }
}

void Main_inc_dir_inv_time(const NodeIndex& v, VtxdMap& working, const VtxdMap& vertices,
                           const long double& t0, FoundCliques& found, const double& max_time,
                           bool& exceeded, Attempt_timer& timer, KnownCliques known_cliques) {
  const Vtxd& own = Working_record(working, v);
  const NodeList N(own.Neighs_c().begin(), own.Neighs_c().end());
  Record_of(vertices, v, "Clique_find_dir_time", "vertex map");
  Indexed_known known(std::move(known_cliques));

  GapList L{Gap{v, NodeList(own.Ineighs_c().begin(), own.Ineighs_c().end())},
            Gap{v, NodeList(own.Oneighs_c().begin(), own.Oneighs_c().end())}};
  NodeList S;
  std::size_t known_checked = 0;
  bool covered = false;
  for (std::size_t e = 0; e < L.size() && !covered && !exceeded; ++e) {
    while (!L[e].candidates.empty() && !exceeded) {
      // What L can still reach bounds every later branch; once a known clique holds it, every
      // later w would be skipped without any clock reading.
      if (known.size() != known_checked) {
        known_checked = known.size();
        Merge_already_full_and_possibs(S, L);
        if (!known.Mehet_tovabb(S)) {
          covered = true;
          break;
        }
      }
      const auto at_e = L.cbegin() + static_cast<std::ptrdiff_t>(e);
      GapList R = Tighten_dir(L, at_e, at_e->candidates.front(), working);
      Take_first_candidate(L[e]);
      Merge_already_full_and_possibs(S, R);
      if (!known.Mehet_tovabb(S)) continue;
      std::size_t checked = known.size();
      for (std::size_t f = 0; f < R.size() && !exceeded; ++f) {
        bool done = false;
        while (!R[f].candidates.empty() && !exceeded) {
          if (known.size() != checked) {
            checked = known.size();
            Merge_already_full_and_possibs(S, R);
            if (!known.Mehet_tovabb(S)) {
              done = true;
              break;
            }
          }
          const auto at_f = R.cbegin() + static_cast<std::ptrdiff_t>(f);
          GapList R2 = Tighten_dir(R, at_f, at_f->candidates.front(), working);
          Take_first_candidate(R[f]);
          Recurrent_inc_inv_dir_time(R2, working, vertices, known, t0, found, max_time, exceeded,
                                     timer);
        }
        if (done) break;
      }
    }
  }
  // A node given up keeps its links for its next attempt.
  if (exceeded) return;
  Vtxd& unlinked = working.find(v)->second;
  for (const NodeIndex n : N) {
    unlinked.Remove_neigh(n);
    working.find(n)->second.Remove_neigh(v);
  }
}

}  // namespace Clique_find_dir_sub_routines

void Clique_find_dir_time(CliqueList& cliques, OverlapMatrix& overlaps, VtxdMap& vertices,
                          VtxdMap& core, const double& max_time, const SearchClock& search_clock) {
  using namespace Clique_find_dir_sub_routines;
  using namespace Clique_find_time_sub_routines;
  using namespace Clique_find_report_sub_routines;
  cliques.clear();
  overlaps.rows.clear();
  VtxdMap working = vertices;
  NodeOrder order;
  Sort_dir_vtx_map(order, working, "Neighs");
  std::deque<NodeIndex> queue(order.begin(), order.end());
  NodeCliqueMap node_cliques;
  PendingCliques pending;

  const std::string header =
      Time_limited_header(" Locating dir. cliques, max. allowed time/node=", max_time);
  const auto total = static_cast<std::uint32_t>(working.size());
  std::uint32_t skipped = 0;
  bool go_on = true;
  FoundCliques found;
  Attempt_timer timer(search_clock);
  while (!queue.empty() && go_on) {
    const NodeIndex v = queue.front();
    queue.pop_front();
    std::ostringstream block;
    Report_progress(header, "nodes", static_cast<std::uint32_t>(working.size()), total, block);
    Print_text(block.str());

    const long double t0 = timer.Start();
    found.clear();
    bool exceeded = false;
    Main_inc_dir_inv_time(v, working, vertices, t0, found, max_time, exceeded, timer,
                          Clique_find_sub_routines::Known_cliques_of(v, cliques, node_cliques));
    if (exceeded) {
      go_on = Requeue_hard_node(v, skipped, working.size(), queue, "directed cliques");
      for (const auto& [key, clique] : found) pending.insert(clique);
    } else {
      for (const auto& [key, clique] : found) {
        Clique_find_sub_routines::Iktatjuk_az_uj_math_cliquet(cliques, clique, vertices, overlaps,
                                                              node_cliques, false);
      }
      skipped = 0;
      working.erase(v);
    }
  }

  std::ostringstream closing;
  if (!working.empty()) {
    Register_pending(pending, cliques, vertices, overlaps, node_cliques);
    Report_clique_search_end("exact directed cliques", cliques.size(), closing);
  } else {
    // Every node given up was completed later and found its pending cliques again.
    Report_clique_search_end("directed cliques", cliques.size(), "no approximation was needed.",
                             closing);
  }
  Print_text(closing.str());
  core = std::move(working);
}

}  // namespace kcp
