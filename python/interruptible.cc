#include "python/interruptible.h"

#include <pybind11/pybind11.h>

#include <chrono>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <thread>

#include "python/quiet_console.h"

namespace py = pybind11;

namespace kcp {

namespace {

constexpr std::chrono::milliseconds kSignalPoll{20};

// Waits, with the interpreter lock released, until the work is done. Returns true when a signal
// handler raised meanwhile; its exception is then pending in the interpreter.
bool Wait_for(std::mutex& mutex, std::condition_variable& finished, const bool& done,
              StopRequest& stop) {
  const py::gil_scoped_release release;
  std::unique_lock lock(mutex);
  bool raised = false;
  while (!finished.wait_for(lock, kSignalPoll, [&] { return done; })) {
    if (raised) continue;
    lock.unlock();
    {
      const py::gil_scoped_acquire acquire;
      raised = PyErr_CheckSignals() != 0;
    }
    if (raised) stop.Request();
    lock.lock();
  }
  return raised;
}

}  // namespace

void Run_interruptible(const std::function<void(const StopRequest&)>& work) {
  const QuietConsole quiet;
  StopRequest stop;
  std::mutex mutex;
  std::condition_variable finished;
  bool done = false;
  std::exception_ptr failure;
  std::thread worker([&] {
    try {
      work(stop);
    } catch (...) {
      failure = std::current_exception();
    }
    const std::lock_guard lock(mutex);
    done = true;
    finished.notify_one();
  });
  const bool raised = Wait_for(mutex, finished, done, stop);
  worker.join();
  if (raised) throw py::error_already_set();
  if (failure) std::rethrow_exception(failure);
}

}  // namespace kcp
