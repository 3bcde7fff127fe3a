#include "cliques/clique_find_dir_time.h"

#include <deque>
#include <sstream>
#include <string>
#include <utility>

#include "cliques/search_report.h"
#include "cliques/time_limited_loop.h"
#include "core/xerror_msg.h"
#include "text/console.h"

namespace kcp {

namespace Clique_find_dir_sub_routines {

namespace {

using Clique_find_time_sub_routines::AttemptTimer;
using Clique_find_time_sub_routines::IndexedKnown;

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
bool Enter(GapList& gaps, IndexedKnown& known, FoundCliques& found, NodeList& S) {
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

// Takes the candidates of the gaps of `list` in order, each put into its gap in turn: step gets
// the list that leaves. What the list can still reach bounds every later step; once a known
// clique holds it (tested whenever known has grown past `checked`), the walk ends without any
// clock reading.
template <typename Step>
void Walk_gaps(GapList& list, std::size_t checked, IndexedKnown& known, NodeList& S,
               const VtxdMap& working, const bool& exceeded, Step&& step) {
  for (std::size_t g = 0; g < list.size() && !exceeded; ++g) {
    while (!list[g].candidates.empty() && !exceeded) {
      if (known.size() != checked) {
        checked = known.size();
        Merge_already_full_and_possibs(S, list);
        if (!known.Mehet_tovabb(S)) return;
      }
      const auto at = list.cbegin() + static_cast<std::ptrdiff_t>(g);
      GapList next = Tighten_dir(list, at, at->candidates.front(), working);
      Take_first_candidate(list[g]);
      step(next);
    }
  }
}

}  // namespace

void Recurrent_inc_inv_dir_time(GapList& gaps, const VtxdMap& working, const VtxdMap& /*vertices*/,
                                IndexedKnown& known, const long double& t0, FoundCliques& found,
                                const double& max_time, bool& exceeded, AttemptTimer& timer) {
  NodeList S;
  if (!Enter(gaps, known, found, S)) return;
  // The recursion, one frame per member inserted, walked in the order of the nested calls; the
  // root frame works on the caller's list, as the call by reference does.
  std::vector<Frame> stack(1);
  stack.back().root = true;
  stack.back().known_checked = known.size();
  while (GapList* const open = Open_frame(stack, gaps)) {
    Frame& top = stack.back();
    GapList& list = *open;
    // Once a known clique holds all the list can reach, each further call would return at once;
    // only the clock readings in front of those calls remain, and they are kept.
    bool covered = false;
    if (known.size() != top.known_checked) {
      top.known_checked = known.size();
      Merge_already_full_and_possibs(S, list);
      covered = !known.Mehet_tovabb(S);
    }
    exceeded = timer.Exceeded_in(t0, max_time, covered ? Extensions_left(list, top.gap) : 1);
    if (exceeded) return;
    if (covered) {
      stack.pop_back();
      continue;
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
                           bool& exceeded, AttemptTimer& timer, KnownCliques known_cliques) {
  const Vtxd& own = Working_record(working, v);
  Record_of(vertices, v, "Clique_find_dir_time", "vertex map");
  IndexedKnown known(std::move(known_cliques));

  GapList L{Gap{v, NodeList(own.Ineighs_c().begin(), own.Ineighs_c().end())},
            Gap{v, NodeList(own.Oneighs_c().begin(), own.Oneighs_c().end())}};
  NodeList S;
  // The two levels of the walk from v, unrolled as the literal search has them: a first member
  // put into L, then a second one into the list R this leaves, then the recursion.
  Walk_gaps(L, 0, known, S, working, exceeded, [&](GapList& R) {
    Merge_already_full_and_possibs(S, R);
    if (!known.Mehet_tovabb(S)) return;
    Walk_gaps(R, known.size(), known, S, working, exceeded, [&](GapList& R2) {
      Recurrent_inc_inv_dir_time(R2, working, vertices, known, t0, found, max_time, exceeded,
                                 timer);
    });
  });
  // A node given up keeps its links for its next attempt.
  if (exceeded) return;
  Unlink_node(working, v);
}

}  // namespace Clique_find_dir_sub_routines

void Clique_find_dir_time(CliqueList& cliques, OverlapMatrix& overlaps, VtxdMap& vertices,
                          VtxdMap& core, const double& max_time, const SearchClock& search_clock,
                          const StopRequest* stop) {
  using namespace Clique_find_dir_sub_routines;
  using namespace Clique_find_time_sub_routines;
  NodeOrder order;
  Sort_dir_vtx_map(order, vertices, "Neighs");
  FoundCliques found;
  Time_limited_loop(cliques, overlaps, vertices, core, vertices, order, max_time, search_clock,
                    {" Locating dir. cliques, max. allowed time/node=", "directed cliques",
                     "no approximation was needed."},
                    stop,
                    [&](const NodeIndex& v, VtxdMap& working, const long double& t0, bool& exceeded,
                        AttemptTimer& timer, KnownCliques known, NodeResult& node_result) {
                      found.clear();
                      Main_inc_dir_inv_time(v, working, vertices, t0, found, max_time, exceeded,
                                            timer, std::move(known));
                      for (auto& [key, clique] : found) node_result.push_back(std::move(clique));
                    });
}

}  // namespace kcp
