// A clock for the end-to-end cases that time-limit the clique search, loaded in front of the C
// library's with LD_PRELOAD. The n-th call of clock() returns n (n microseconds, CLOCKS_PER_SEC
// being 10^6), and CLOCK_MONOTONIC jumps by 10^6 s at every reading, so that the search finds the
// real time never rules a check out, reads the processor clock at every check, and gives up on the
// same nodes on every machine and build. Every other clock is the C library's.
#include <dlfcn.h>
#include <time.h>

namespace {

clock_t processor_readings = 0;
time_t monotonic_readings = 0;

using ClockGettime = int (*)(clockid_t, timespec*);

}  // namespace

extern "C" clock_t clock() noexcept {
  return ++processor_readings;
}

extern "C" int clock_gettime(clockid_t id, timespec* now) noexcept {
  if (id == CLOCK_MONOTONIC) {
    ++monotonic_readings;
    now->tv_sec = monotonic_readings * 1000000;
    now->tv_nsec = 0;
    return 0;
  }
  static const auto next = reinterpret_cast<ClockGettime>(dlsym(RTLD_NEXT, "clock_gettime"));
  return next(id, now);
}
