// Runs work of the core without the interpreter lock and within reach of Ctrl-C. The work runs on
// a thread of its own while the calling thread waits with the lock released, taking it back every
// 20 ms to let the interpreter run its signal handlers. When a handler raises (KeyboardInterrupt,
// for Ctrl-C), the work is asked to stop through its StopRequest, waited for, and the handler's
// exception is raised; the work's own exceptions reach the caller unchanged. Call with the lock
// held; the work must not touch Python objects. Both run inside a QuietConsole.
#pragma once

#include <functional>
#include <optional>
#include <utility>

#include "core/stop_request.h"

namespace kcp {

void Run_interruptible(const std::function<void(const StopRequest&)>& work);

// The same for work that returns a value.
template <typename Work>
auto Interruptible(Work&& work) {
  std::optional<decltype(work(std::declval<const StopRequest&>()))> result;
  Run_interruptible([&](const StopRequest& stop) { result.emplace(work(stop)); });
  return std::move(*result);
}

}  // namespace kcp
