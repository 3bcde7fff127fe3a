// Tasks run on several threads whose results are taken in a fixed order, so that a run gives
// the same output whatever the number of threads. Tasks start in index order, at most
// `in_flight` of them started and not yet taken; each finished task is taken (deliver) on the
// calling thread in index order. A task that throws, or whose delivery throws, ends the run:
// the tasks before it have been delivered, the tasks started after it are waited for and dropped
// (discard, on the calling thread), and the exception leaves Run_in_order. With one thread the
// tasks run one after the other on the calling thread, each delivered as soon as it is done.
#pragma once

#include <cstddef>
#include <functional>

namespace kcp {

// The processors this process may run on (its affinity mask), at least 1.
unsigned Usable_processors();

struct OrderedTasks {
  std::function<void(std::size_t)> run;      // on a worker thread (or the caller's)
  std::function<void(std::size_t)> deliver;  // on the calling thread, in index order
  std::function<void(std::size_t)> discard;  // on the calling thread, for tasks dropped
};

void Run_in_order(const std::size_t& count, const unsigned& threads, const std::size_t& in_flight,
                  const OrderedTasks& tasks);

}  // namespace kcp
