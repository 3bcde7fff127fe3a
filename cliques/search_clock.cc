#include "cliques/search_clock.h"

#include <time.h>

#include <limits>

namespace kcp {

std::clock_t Processor_clock() {
  return std::clock();
}

double Monotonic_clock() {
  timespec now{};
  // Called by its C name, so that a clock put in front of the C library's is the one read.
  if (::clock_gettime(CLOCK_MONOTONIC, &now) != 0) return std::numeric_limits<double>::quiet_NaN();
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

SearchClock::SearchClock() : processor(Processor_clock), monotonic(Monotonic_clock) {}

SearchClock::SearchClock(ProcessorClock processor_clock, MonotonicClock monotonic_clock)
    : processor(std::move(processor_clock)), monotonic(std::move(monotonic_clock)) {}

namespace Clique_find_time_sub_routines {

double Processor_seconds(const ProcessorClock& processor_clock) {
  return static_cast<double>(processor_clock()) / 1e6;
}

bool Time_exceeded(const long double& t0, const double& max_time,
                   const ProcessorClock& processor_clock) {
  const double now = Processor_seconds(processor_clock);
  return now - t0 > max_time;
}

long double AttemptTimer::Start() {
  // The real time is measured from before t0 is read, so it spans all the processor time that any
  // later reading can count from t0.
  if (clock_.monotonic) wall_start_ = clock_.monotonic();
  return Processor_seconds(clock_.processor);
}

bool AttemptTimer::Exceeded_in(const long double& t0, const double& max_time,
                               std::size_t readings) {
  for (; readings > 0; --readings) {
    if (Exceeded(t0, max_time)) return true;
  }
  return false;
}

bool AttemptTimer::Exceeded(const long double& t0, const double& max_time) {
  if (Stop_requested(stop_)) return true;
  if (clock_.monotonic) {
    // A processor reading taken now would show at most the real time since wall_start_, plus up
    // to 1 us because clock() truncates t0 to whole microseconds, plus what the scheduler's clock
    // gained on the monotonic one, which the kernel lets a time daemon slew by at most 500 ppm.
    // Keeping 10 us and a thousandth of the limit clear of it covers all three with room to
    // spare (doubles of seconds since boot are exact to well under a microsecond), so the reading
    // below is skipped only when it could not exceed the limit. NaN, an unreadable clock, never
    // compares below and so never skips.
    const double real = clock_.monotonic() - wall_start_;
    if (real < max_time - max_time * 1e-3 - 1e-5) return false;
  }
  return Time_exceeded(t0, max_time, clock_.processor);
}

}  // namespace Clique_find_time_sub_routines

}  // namespace kcp
