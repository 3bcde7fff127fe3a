#include "python/quiet_console.h"

#include <iostream>
#include <mutex>
#include <streambuf>

namespace kcp {

namespace {

// Accepts every character and keeps none; it holds no state, so threads may share it.
class Sink : public std::streambuf {
 protected:
  int_type overflow(int_type c) override { return traits_type::not_eof(c); }
  std::streamsize xsputn(const char*, std::streamsize n) override { return n; }
};

// std::cout is one per process, so the count of the quiet consoles that silence it is too.
struct Silencing {
  std::mutex mutex;
  int holders = 0;
  std::streambuf* saved = nullptr;
  Sink sink;
};

Silencing& The_silencing() {
  static Silencing silencing;
  return silencing;
}

}  // namespace

QuietConsole::QuietConsole() {
  Silencing& s = The_silencing();
  const std::lock_guard lock(s.mutex);
  if (s.holders++ == 0) s.saved = std::cout.rdbuf(&s.sink);
}

QuietConsole::~QuietConsole() {
  Silencing& s = The_silencing();
  const std::lock_guard lock(s.mutex);
  if (--s.holders == 0) std::cout.rdbuf(s.saved);
}

}  // namespace kcp
