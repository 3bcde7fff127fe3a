// Test helpers for the file-system tests: a console session that feeds a fixed text to std::cin
// and captures std::cout while it lives, a guard that restores the working directory, and a
// stat-based type check independent of the module under test, and the shared texts and
// shortcuts the file-system tests use.
#pragma once

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <iostream>
#include <iterator>
#include <sstream>
#include <string>

#include "core/xerror_msg.h"

namespace kcp::testing {

class Console_session {
 public:
  explicit Console_session(const std::string& input)
      : in_(input), old_in_(std::cin.rdbuf(in_.rdbuf())), old_out_(std::cout.rdbuf(out_.rdbuf())) {
    std::cin.clear();
  }
  ~Console_session() {
    std::cin.rdbuf(old_in_);
    std::cout.rdbuf(old_out_);
    std::cin.clear();
  }
  Console_session(const Console_session&) = delete;
  Console_session& operator=(const Console_session&) = delete;

  std::string Output() const { return out_.str(); }
  // What the code under test left unread.
  std::string Unread() {
    return std::string(std::istreambuf_iterator<char>(in_.rdbuf()),
                       std::istreambuf_iterator<char>());
  }

 private:
  std::istringstream in_;
  std::ostringstream out_;
  std::streambuf* old_in_;
  std::streambuf* old_out_;
};

class Cwd_guard {
 public:
  Cwd_guard() {
    char buffer[10000];
    if (getcwd(buffer, sizeof buffer) != nullptr) saved_ = buffer;
  }
  ~Cwd_guard() {
    if (!saved_.empty() && chdir(saved_.c_str()) != 0) std::cerr << "cannot restore cwd\n";
  }
  Cwd_guard(const Cwd_guard&) = delete;
  Cwd_guard& operator=(const Cwd_guard&) = delete;

 private:
  std::string saved_;
};

inline bool Is_dir(const std::string& path) {
  struct stat info;
  return lstat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

inline bool Is_regular(const std::string& path) {
  struct stat info;
  return lstat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode);
}

inline bool Exists(const std::string& path) {
  struct stat info;
  return lstat(path.c_str(), &info) == 0;
}

inline const std::string kNoEntry = "A component of the path file_name does not exist.";
inline const std::string kStopped = "stopped interactively by user.";

inline void Make_directory(const std::string& path) {
  ASSERT_EQ(mkdir(path.c_str(), 0755), 0) << path;
}

// The text of the Xerror_msg the action throws, or "no exception".
template <typename Action>
std::string Message_of(Action action) {
  try {
    action();
  } catch (const Xerror_msg& e) {
    return e.what();
  }
  return "no exception";
}

}  // namespace kcp::testing
