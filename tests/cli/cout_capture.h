// Captures everything written to std::cout while the object lives.
#pragma once

#include <iostream>
#include <sstream>
#include <string>

namespace kcp::testing {

class CoutCapture {
 public:
  CoutCapture() : old_(std::cout.rdbuf(captured_.rdbuf())) {}
  ~CoutCapture() { std::cout.rdbuf(old_); }
  CoutCapture(const CoutCapture&) = delete;
  CoutCapture& operator=(const CoutCapture&) = delete;

  std::string text() const { return captured_.str(); }

 private:
  std::ostringstream captured_;
  std::streambuf* old_;
};

}  // namespace kcp::testing
