// Keeps the progress lines of the core off standard output while the Python module runs it: for
// its lifetime std::cout writes nowhere, and its own buffer is put back on destruction. Not for
// use from two threads at once (the module calls the core with the interpreter lock held).
#pragma once

#include <iostream>
#include <streambuf>

namespace kcp {

class QuietConsole {
 public:
  QuietConsole() : saved_(std::cout.rdbuf(&sink_)) {}
  ~QuietConsole() { std::cout.rdbuf(saved_); }
  QuietConsole(const QuietConsole&) = delete;
  QuietConsole& operator=(const QuietConsole&) = delete;

 private:
  // Accepts every character and keeps none.
  class Sink : public std::streambuf {
   protected:
    int_type overflow(int_type c) override { return traits_type::not_eof(c); }
    std::streamsize xsputn(const char*, std::streamsize n) override { return n; }
  };
  Sink sink_;
  std::streambuf* saved_;
};

}  // namespace kcp
