// A fresh temporary directory for one test, removed with everything in it when the object goes.
// Tests that touch the file system work only inside it.
#pragma once

#include <string>

namespace kcp::testing {

class TestDir {
 public:
  TestDir();
  ~TestDir();
  TestDir(const TestDir&) = delete;
  TestDir& operator=(const TestDir&) = delete;

  const std::string& path() const { return path_; }
  // path() + "/" + name
  std::string operator/(const std::string& name) const { return path_ + "/" + name; }

 private:
  std::string path_;
};

// Whole content of a file; empty when it cannot be read.
std::string Read_file(const std::string& path);
void Write_file(const std::string& path, const std::string& content);

}  // namespace kcp::testing
