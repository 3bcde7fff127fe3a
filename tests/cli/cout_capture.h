// Captures everything written to std::cout while the object lives.
#pragma once

#include <iostream>
#include <sstream>
#include <string>

namespace kcp::testing {

class Cout_capture {
 public:
  Cout_capture() : old_(std::cout.rdbuf(captured_.rdbuf())) {}
  ~Cout_capture() { std::cout.rdbuf(old_); }
  Cout_capture(const Cout_capture&) = delete;
  Cout_capture& operator=(const Cout_capture&) = delete;

  std::string text() const { return captured_.str(); }

 private:
  std::ostringstream captured_;
  std::streambuf* old_;
};

}  // namespace kcp::testing
