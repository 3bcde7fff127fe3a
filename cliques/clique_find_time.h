// The undirected clique search with a processor-time limit per node attempt. Nodes are taken in
// the order of the exact search; a node whose attempt runs over max_time seconds is sent to the
// back of the queue with its links kept, and its partial cliques wait in a pending set. The search
// ends when the queue empties or every node left was given up in a row; those nodes, with the
// links among them, are returned as the core. Cliques and overlaps are as in Clique_find, with
// the pending cliques that no found clique holds registered last when a core remains. Its
// depth-first walk is the literal search that fixes the order of the cliques; Clique_find's
// pivoting search (node_cliques.h) is the fast path that must reproduce it.
#pragma once

#include <cstdint>
#include <ctime>
#include <deque>
#include <functional>
#include <set>
#include <span>
#include <string>
#include <type_traits>
#include <unordered_map>
#include <utility>
#include <vector>

#include "cliques/clique_find.h"
#include "core/stop_request.h"
#include "core/types.h"
#include "graph/vertex_map.h"

namespace kcp {

// The processor clock of the time limit; tests substitute a scripted one.
using ProcessorClock = std::function<std::clock_t()>;
// Seconds of a clock that runs with real time and never goes back; NaN when it cannot be read.
using MonotonicClock = std::function<double()>;
// Returns clock().
std::clock_t Processor_clock();
// Returns CLOCK_MONOTONIC in seconds, read through the C library's clock_gettime.
double Monotonic_clock();

// Anything that reads like clock().
template <typename F>
concept ProcessorClockLike = std::is_invocable_r_v<std::clock_t, F&>;

// The clocks of the time limit. The limit is on processor time; the monotonic clock only spares
// readings of the processor clock (see Attempt_timer). A processor clock given alone, as tests
// script it, is read at every check: no real clock of the same process stands beside it.
struct SearchClock {
  SearchClock();  // clock() and CLOCK_MONOTONIC
  // Implicit, so that a scripted processor clock (any callable returning clock_t) is passed as
  // it is.
  template <ProcessorClockLike Processor>
  SearchClock(Processor processor_clock) : processor(std::move(processor_clock)) {}
  SearchClock(ProcessorClock processor_clock, MonotonicClock monotonic_clock);

  ProcessorClock processor;
  MonotonicClock monotonic;  // empty: no guard
};

// core is replaced by what is left of the working copy of vertices. Throws as Clique_find does.
void Clique_find_part_time(CliqueList& cliques, OverlapMatrix& overlaps, VtxMap& vertices,
                           VtxMap& core, const double& max_time,
                           const SearchClock& search_clock = SearchClock(),
                           const StopRequest* stop = nullptr);

namespace Clique_find_time_sub_routines {

using Clique_find_sub_routines::KnownCliques;
// The cliques found in one node attempt, in the order found, not yet registered.
using NodeResult = std::vector<NodeList>;
// The cliques of attempts that ran over the limit, deduplicated, in lexicographic order.
using PendingCliques = std::set<NodeList>;

// Known of the node being attempted, with each node's list of the known cliques holding it, so
// that the subset test of Mehet_tovabb looks only at the cliques holding the rarest member
// instead of at all of them (a hub can hold hundreds of thousands). Cliques appended to `cliques`
// by anyone are indexed at the next query.
class Indexed_known {
 public:
  // The cliques already registered for the node, as ascending lists holding it.
  explicit Indexed_known(KnownCliques known);
  void Add(NodeList clique);
  // False when a known clique holds A ∪ B (ascending and disjoint), else true.
  bool Mehet_tovabb(std::span<const NodeIndex> A, std::span<const NodeIndex> B = {});
  std::size_t size() const { return cliques.size(); }

  KnownCliques cliques;

 private:
  void Index_new_cliques();

  std::unordered_map<NodeIndex, std::vector<std::uint32_t>> holders_;
  std::size_t indexed_ = 0;
};

// Processor seconds as the search counts them: clock() / 1e6 on every platform.
double Processor_seconds(const ProcessorClock& processor_clock);

// Reads the clock once: true when more than max_time seconds passed since t0 (a time equal to
// the limit goes on).
bool Time_exceeded(const long double& t0, const double& max_time,
                   const ProcessorClock& processor_clock);

// The clock checks of node attempts. Exceeded gives exactly the answer of Time_exceeded, but reads
// the processor clock only when the monotonic clock cannot rule the answer out: the run has one
// thread, which cannot use more processor time than the real time that passed, so while the
// real time since the attempt's start stays clearly below max_time, so does the processor time.
class Attempt_timer {
 public:
  // Once stop is requested every check counts as exceeded, so that the attempt ends at once.
  explicit Attempt_timer(const SearchClock& search_clock, const StopRequest* stop = nullptr)
      : clock_(search_clock), stop_(stop) {}
  // Starts an attempt: reads the monotonic clock, then the processor clock, and returns the
  // processor seconds t0.
  long double Start();
  bool Exceeded(const long double& t0, const double& max_time);
  // Reads the clock `readings` times, as that many calls that each return at once would: true
  // at the first reading past the limit.
  bool Exceeded_in(const long double& t0, const double& max_time, std::size_t readings);

 private:
  const SearchClock& clock_;
  const StopRequest* stop_;
  double wall_start_ = 0.0;
};

// start + max_time with 3 decimals + ":".
std::string Time_limited_header(const std::string& start, const double& max_time);

// One attempt at node v, which `known` lists the registered cliques of: the cliques it finds go
// to node_result and are not registered; v is unlinked in the working map only when the attempt
// finished in time.
void Clique_find_main_time_part(const NodeIndex& v, VtxMap& working, const VtxMap& vertices,
                                const long double& t0, const double& max_time, bool& exceeded,
                                NodeResult& node_result, Attempt_timer& timer, KnownCliques known);

// Extends C (ascending) by x with the candidates P, depth first on an explicit stack, reading the
// clock before every further extension and stopping at once, exceeded set, past the limit.
void Recurrent_tp_investigator(const NodeIndex& x, const VtxMap& working, const VtxMap& vertices,
                               NodeList C, std::span<const NodeIndex> P, Indexed_known& known,
                               const NodeIndex& v, const long double& t0, NodeResult& node_result,
                               const double& max_time, bool& exceeded, Attempt_timer& timer);

// After an attempt at v ran over the limit: reports it with `remaining` nodes left in the working
// map, sends v to the back of the queue, and returns false (after the too-slow report for `word`)
// when every node in the queue has been given up since the last success.
bool Requeue_hard_node(const NodeIndex& v, std::uint32_t& skipped, const std::size_t& remaining,
                       std::deque<NodeIndex>& queue, const std::string& word);

// Registers, in their order, the pending cliques that no clique registered by then holds.
void Register_pending(const PendingCliques& pending, CliqueList& cliques, VtxMap& vertices,
                      OverlapMatrix& overlaps, NodeCliqueMap& node_cliques);
void Register_pending(const PendingCliques& pending, CliqueList& cliques, VtxdMap& vertices,
                      OverlapMatrix& overlaps, NodeCliqueMap& node_cliques);

}  // namespace Clique_find_time_sub_routines

}  // namespace kcp
