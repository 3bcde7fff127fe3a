#include "cliques/clique_find_time.h"

#include <algorithm>
#include <iomanip>
#include <sstream>
#include <utility>

#include "cliques/search_report.h"
#include "cliques/time_limited_loop.h"
#include "core/xerror_msg.h"
#include "text/console.h"

namespace kcp {

namespace Clique_find_time_sub_routines {

namespace {

using Clique_find_sub_routines::Tighten;

const NodeSet& Working_neighs(const VtxMap& working, const NodeIndex& x) {
  return Record_of(working, x, "Clique_find_part_time", "working graph").Neighs_c();
}

struct Frame {
  NodeList C;
  NodeList T;
  std::size_t next = 0;           // T[next, end) are the candidates not tried yet
  std::size_t known_checked = 0;  // size of Known when it was last tested against C ∪ T
};

// One call of the recursion up to its loop: returns true, with the frame holding C + x and the
// candidates to try, when the call goes on to extend; keeps C + x when it is a new clique.
bool Enter(const NodeIndex& x, const VtxMap& working, NodeList C, std::span<const NodeIndex> P,
           IndexedKnown& known, NodeResult& node_result, Frame& frame) {
  NodeList T = Tighten(Working_neighs(working, x), P, C);
  C.insert(std::upper_bound(C.begin(), C.end(), x), x);
  if (T.empty()) {
    if (known.Mehet_tovabb(C)) {
      node_result.push_back(C);
      known.Add(std::move(C));
    }
    return false;
  }
  if (!known.Mehet_tovabb(C, T)) return false;
  frame.C = std::move(C);
  frame.T = std::move(T);
  frame.next = 0;
  frame.known_checked = known.size();
  return true;
}

template <typename VertexMap>
void Register_pending_in(const PendingCliques& pending, CliqueList& cliques, VertexMap& vertices,
                         OverlapMatrix& overlaps, NodeCliqueMap& node_cliques) {
  const MemberIndex& index = node_cliques.index;
  // Only the registered cliques holding the rarest member of S can hold S.
  const auto held = [&](const NodeList& S) {
    if (S.empty()) return !cliques.empty();
    std::span<const std::uint32_t> rarest;
    for (std::size_t i = 0; i < S.size(); ++i) {
      const std::span<const std::uint32_t> holders = index.Holders(S[i]);
      if (holders.empty()) return false;
      if (i == 0 || holders.size() < rarest.size()) rarest = holders;
    }
    for (const std::uint32_t c : rarest) {
      const Clique& K = cliques[c];
      if (S.size() <= K.size() && std::includes(K.begin(), K.end(), S.begin(), S.end())) {
        return true;
      }
    }
    return false;
  };
  for (const NodeList& S : pending) {
    if (!held(S)) {
      Clique_find_sub_routines::Iktatjuk_az_uj_math_cliquet(cliques, S, vertices, overlaps,
                                                            node_cliques, false);
    }
  }
}

}  // namespace

IndexedKnown::IndexedKnown(KnownCliques known) : cliques(std::move(known)) {}

void IndexedKnown::Add(NodeList clique) {
  cliques.push_back(std::move(clique));
}

void IndexedKnown::Index_new_cliques() {
  for (; indexed_ < cliques.size(); ++indexed_) {
    for (const NodeIndex n : cliques[indexed_]) {
      holders_[n].push_back(static_cast<std::uint32_t>(indexed_));
    }
  }
}

bool IndexedKnown::Mehet_tovabb(std::span<const NodeIndex> A, std::span<const NodeIndex> B) {
  if (A.empty() && B.empty()) return cliques.empty();
  Index_new_cliques();
  const std::vector<std::uint32_t>* rarest = nullptr;
  for (const std::span<const NodeIndex> part : {A, B}) {
    for (const NodeIndex n : part) {
      const auto listed = holders_.find(n);
      if (listed == holders_.end()) return true;
      if (rarest == nullptr || listed->second.size() < rarest->size()) rarest = &listed->second;
    }
  }
  const std::size_t size = A.size() + B.size();
  for (const std::uint32_t id : *rarest) {
    const NodeList& K = cliques[id];
    if (size <= K.size() && std::includes(K.begin(), K.end(), A.begin(), A.end()) &&
        std::includes(K.begin(), K.end(), B.begin(), B.end())) {
      return false;
    }
  }
  return true;
}

std::string Time_limited_header(const std::string& start, const double& max_time) {
  std::ostringstream header;
  header << start << std::fixed << std::setprecision(3) << max_time << ':';
  return header.str();
}

void Recurrent_tp_investigator(const NodeIndex& x, const VtxMap& working,
                               const VtxMap& /*vertices*/, NodeList C, std::span<const NodeIndex> P,
                               IndexedKnown& known, const NodeIndex& /*v*/, const long double& t0,
                               NodeResult& node_result, const double& max_time, bool& exceeded,
                               AttemptTimer& timer) {
  // The recursion, one frame per member added, walked in the order of the nested calls.
  std::vector<Frame> stack(1);
  if (!Enter(x, working, std::move(C), P, known, node_result, stack.back())) return;
  while (!stack.empty()) {
    Frame& top = stack.back();
    if (top.next == top.T.size()) {
      stack.pop_back();
      continue;
    }
    // Once a known clique holds C and every candidate left, each further call would return at
    // once; only the clock readings in front of those calls remain, and they are kept.
    bool covered = false;
    if (top.next > 0 && known.size() != top.known_checked) {
      top.known_checked = known.size();
      covered = !known.Mehet_tovabb(top.C, std::span<const NodeIndex>(top.T).subspan(top.next));
    }
    exceeded = timer.Exceeded_in(t0, max_time, covered ? top.T.size() - top.next : 1);
    if (exceeded) return;
    if (covered) {
      stack.pop_back();
      continue;
    }
    const NodeIndex y = top.T[top.next++];
    Frame child;
    if (Enter(y, working, top.C, std::span<const NodeIndex>(top.T).subspan(top.next), known,
              node_result, child)) {
      stack.push_back(std::move(child));
    }
  }
}

void Clique_find_main_time_part(const NodeIndex& v, VtxMap& working, const VtxMap& vertices,
                                const long double& t0, const double& max_time, bool& exceeded,
                                NodeResult& node_result, AttemptTimer& timer,
                                KnownCliques known_cliques) {
  const NodeSet& neighs = Working_neighs(working, v);
  const NodeList N(neighs.begin(), neighs.end());
  Record_of(vertices, v, "Clique_find_part_time", "vertex map");
  IndexedKnown known(std::move(known_cliques));

  const NodeIndex only_v[1] = {v};
  std::span<const NodeIndex> P(N);
  std::size_t known_checked = 0;
  // A last candidate alone could only give a two-node clique.
  while (P.size() > 1 && !exceeded) {
    // Once a known clique holds v and every candidate left, each later w would be skipped
    // without any clock reading.
    if (known.size() != known_checked) {
      known_checked = known.size();
      if (!known.Mehet_tovabb(only_v, P)) break;
    }
    const NodeIndex w = P.front();
    const NodeList C = v < w ? NodeList{v, w} : NodeList{w, v};
    const NodeList T = Tighten(Working_neighs(working, w), P, C);
    P = P.subspan(1);
    if (!known.Mehet_tovabb(C, T)) continue;
    const std::span<const NodeIndex> candidates(T);
    std::size_t checked = known.size();
    for (std::size_t i = 0; i < T.size() && !exceeded; ++i) {
      if (i > 0 && known.size() != checked) {
        checked = known.size();
        if (!known.Mehet_tovabb(C, candidates.subspan(i))) break;
      }
      Recurrent_tp_investigator(T[i], working, vertices, C, candidates.subspan(i + 1), known, v, t0,
                                node_result, max_time, exceeded, timer);
    }
  }
  // A node given up keeps its links for its next attempt.
  if (exceeded) return;
  Unlink_node(working, v);
}

bool Requeue_hard_node(const NodeIndex& v, std::uint32_t& skipped, const std::size_t& remaining,
                       std::deque<NodeIndex>& queue, const std::string& word) {
  using namespace Clique_find_report_sub_routines;
  ++skipped;
  std::ostringstream report;
  Report_hard_node(v, skipped, static_cast<std::uint32_t>(remaining), report);
  Print_text(report.str());
  queue.push_back(v);
  if (queue.size() > skipped) return true;
  std::ostringstream too_slow;
  Report_all_rem_nodes_to_hard(word, too_slow);
  Print_text(too_slow.str());
  return false;
}

void Register_pending(const PendingCliques& pending, CliqueList& cliques, VtxMap& vertices,
                      OverlapMatrix& overlaps, NodeCliqueMap& node_cliques) {
  Register_pending_in(pending, cliques, vertices, overlaps, node_cliques);
}

void Register_pending(const PendingCliques& pending, CliqueList& cliques, VtxdMap& vertices,
                      OverlapMatrix& overlaps, NodeCliqueMap& node_cliques) {
  Register_pending_in(pending, cliques, vertices, overlaps, node_cliques);
}

}  // namespace Clique_find_time_sub_routines

void Clique_find_part_time(CliqueList& cliques, OverlapMatrix& overlaps, VtxMap& vertices,
                           VtxMap& core, const double& max_time, const SearchClock& search_clock,
                           const StopRequest* stop) {
  using namespace Clique_find_time_sub_routines;
  NodeOrder order;
  Sort_Vtx_map(order, vertices);
  Time_limited_loop(
      cliques, overlaps, vertices, core, vertices, order, max_time, search_clock,
      {" Locating cliques, max. allowed time/node=", "cliques", " no approximation was needed"},
      stop,
      [&](const NodeIndex& v, VtxMap& working, const long double& t0, bool& exceeded,
          AttemptTimer& timer, KnownCliques known, NodeResult& node_result) {
        Clique_find_main_time_part(v, working, vertices, t0, max_time, exceeded, node_result, timer,
                                   std::move(known));
      });
}

}  // namespace kcp
