#include "core/ordered_tasks.h"

#include <sched.h>

#include <algorithm>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

namespace kcp {

unsigned Usable_processors() {
  cpu_set_t set;
  CPU_ZERO(&set);
  if (sched_getaffinity(0, sizeof(set), &set) == 0) {
    return static_cast<unsigned>(std::max(CPU_COUNT(&set), 1));
  }
  return std::max(std::thread::hardware_concurrency(), 1u);
}

namespace {

// The shared state of one Run_in_order: what has started, finished and been taken.
struct Progress {
  std::mutex mutex;
  std::condition_variable changed;
  std::size_t started = 0;
  std::size_t taken = 0;
  bool stopping = false;
  std::vector<char> finished;
  std::vector<std::exception_ptr> errors;
};

void Work(Progress& progress, const std::size_t& count, const std::size_t& in_flight,
          const OrderedTasks& tasks) {
  for (;;) {
    std::size_t i = 0;
    {
      std::unique_lock<std::mutex> lock(progress.mutex);
      progress.changed.wait(lock, [&] {
        return progress.stopping || progress.started == count ||
               progress.started < progress.taken + in_flight;
      });
      if (progress.stopping || progress.started == count) return;
      i = progress.started++;
    }
    std::exception_ptr error;
    try {
      tasks.run(i);
    } catch (...) {
      error = std::current_exception();
    }
    const std::lock_guard<std::mutex> lock(progress.mutex);
    progress.errors[i] = error;
    progress.finished[i] = 1;
    progress.changed.notify_all();
  }
}

// Stops the workers from starting more and joins them, also when the caller leaves by an
// exception.
class Workers {
 public:
  explicit Workers(Progress& progress) : progress_(progress) {}
  ~Workers() { Stop(); }
  void Start(const unsigned& n, const std::size_t& count, const std::size_t& in_flight,
             const OrderedTasks& tasks) {
    for (unsigned t = 0; t < n; ++t) {
      threads_.emplace_back(Work, std::ref(progress_), count, in_flight, std::cref(tasks));
    }
  }
  void Stop() {
    {
      const std::lock_guard<std::mutex> lock(progress_.mutex);
      progress_.stopping = true;
    }
    progress_.changed.notify_all();
    for (std::thread& thread : threads_) {
      if (thread.joinable()) thread.join();
    }
    threads_.clear();
  }

 private:
  Progress& progress_;
  std::vector<std::thread> threads_;
};

}  // namespace

void Run_in_order(const std::size_t& count, const unsigned& threads, const std::size_t& in_flight,
                  const OrderedTasks& tasks) {
  if (threads <= 1 || count <= 1) {
    for (std::size_t i = 0; i < count; ++i) {
      tasks.run(i);
      tasks.deliver(i);
    }
    return;
  }
  Progress progress;
  progress.finished.assign(count, 0);
  progress.errors.assign(count, nullptr);
  Workers workers(progress);
  workers.Start(static_cast<unsigned>(std::min<std::size_t>(threads, count)), count,
                std::max<std::size_t>(in_flight, 1), tasks);
  for (std::size_t i = 0; i < count; ++i) {
    std::exception_ptr error;
    {
      std::unique_lock<std::mutex> lock(progress.mutex);
      progress.changed.wait(lock, [&] { return progress.finished[i] != 0; });
      error = progress.errors[i];
    }
    try {
      if (error) std::rethrow_exception(error);
      tasks.deliver(i);
    } catch (...) {
      // Nothing starts any more; what has started finishes and is dropped.
      workers.Stop();
      for (std::size_t j = i + 1; j < progress.started; ++j) tasks.discard(j);
      throw;
    }
    {
      const std::lock_guard<std::mutex> lock(progress.mutex);
      progress.taken = i + 1;
    }
    progress.changed.notify_all();
  }
}

}  // namespace kcp
