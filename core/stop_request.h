// A request, made from outside, that a long computation end early: the Python module makes it
// when the interpreter reports Ctrl-C. The clique searches look at it before every node (the
// time-limited ones also at every clock check), the approximation before every candidate and
// percolation before every community it opens; once it is made they throw Xstopped, whose
// unwinding frees all they held. Any thread may make the request or look at it. The program never
// makes it, so its runs do not depend on it.
#pragma once

#include <atomic>
#include <stdexcept>

namespace kcp {

class StopRequest {
 public:
  void Request() { requested_.store(true, std::memory_order_relaxed); }
  bool Requested() const { return requested_.load(std::memory_order_relaxed); }

 private:
  std::atomic<bool> requested_{false};
};

class Xstopped : public std::runtime_error {
 public:
  Xstopped() : std::runtime_error("the computation was stopped on request") {}
};

// A null stop stands for a computation that nobody stops.
inline bool Stop_requested(const StopRequest* stop) {
  return stop != nullptr && stop->Requested();
}

inline void Check_stop(const StopRequest* stop) {
  if (Stop_requested(stop)) throw Xstopped();
}

}  // namespace kcp
