// Runs the built varnel in a working directory with standard output captured, and reads back
// the tree of files a run left, for the end-to-end tests.
#pragma once

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/test_dir.h"

namespace kcp::testing {

struct Run_result {
  int status = -1;
  std::string out;
};

// Runs varnel with `args` in `workdir` (standard input /dev/null, the environment entries set),
// its standard output kept beside the working directory while it runs.
inline Run_result Run_binary(const std::string& workdir, const std::vector<std::string>& args,
                             const std::vector<std::pair<std::string, std::string>>& environment) {
  const std::filesystem::path work(workdir);
  const std::string out_path = work.parent_path() / (work.filename().string() + ".out");
  std::vector<std::string> copies = args;
  copies.insert(copies.begin(), "varnel");
  std::vector<char*> argv;
  for (auto& a : copies) argv.push_back(a.data());
  argv.push_back(nullptr);
  const pid_t pid = fork();
  if (pid == 0) {
    for (const auto& [name, value] : environment) setenv(name.c_str(), value.c_str(), 1);
    const int out = open(out_path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    const int in = open("/dev/null", O_RDONLY);
    if (chdir(workdir.c_str()) != 0 || out < 0 || in < 0) _exit(127);
    dup2(out, 1);
    dup2(in, 0);
    execv(VARNEL_BINARY, argv.data());
    _exit(127);
  }
  int status = 0;
  waitpid(pid, &status, 0);
  const Run_result result{WIFEXITED(status) ? WEXITSTATUS(status) : -1, Read_file(out_path)};
  std::filesystem::remove(out_path);
  return result;
}

// Relative path -> content ("/" for a directory, "-> target" for a link) of every entry below
// root.
inline std::map<std::string, std::string> Tree(const std::filesystem::path& root) {
  std::map<std::string, std::string> tree;
  if (!std::filesystem::exists(root)) return tree;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(root)) {
    const std::string rel = std::filesystem::relative(entry.path(), root).string();
    tree[rel] = entry.is_symlink() ? "-> " + std::filesystem::read_symlink(entry.path()).string()
                : entry.is_directory() ? std::string("/")
                                       : Read_file(entry.path().string());
  }
  return tree;
}

}  // namespace kcp::testing
