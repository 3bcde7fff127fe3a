// The clocks of the time-limited searches: the processor clock whose seconds the limit counts,
// the monotonic clock that spares readings of it, and AttemptTimer, which answers for one node
// attempt whether the limit was passed exactly as a reading of the processor clock would. Tests
// substitute scripted clocks through SearchClock. Nothing here throws.
#pragma once

#include <concepts>
#include <cstddef>
#include <ctime>
#include <functional>
#include <type_traits>
#include <utility>

#include "core/stop_request.h"

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
// readings of the processor clock (see AttemptTimer). A processor clock given alone, as tests
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

namespace Clique_find_time_sub_routines {

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
class AttemptTimer {
 public:
  // Once stop is requested every check counts as exceeded, so that the attempt ends at once.
  explicit AttemptTimer(const SearchClock& search_clock, const StopRequest* stop = nullptr)
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

}  // namespace Clique_find_time_sub_routines

}  // namespace kcp
