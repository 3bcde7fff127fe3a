// Keeps the progress lines of the core off standard output while the Python module runs it: while
// any QuietConsole lives, std::cout writes nowhere; when the last one ends, std::cout gets back
// the buffer it had before the first. Calls of the core on several threads at once may each hold
// one.
#pragma once

namespace kcp {

class QuietConsole {
 public:
  QuietConsole();
  ~QuietConsole();
  QuietConsole(const QuietConsole&) = delete;
  QuietConsole& operator=(const QuietConsole&) = delete;
};

}  // namespace kcp
