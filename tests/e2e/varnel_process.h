// Runs the built varnel in a working directory with standard output captured, one run at a time
// or several at once, and reads back the tree of files a run left, for the end-to-end tests.
#pragma once

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/test_dir.h"

namespace kcp::testing {

struct FinishedRun {
  int status = -1;
  std::string out;
};

// A varnel started and not yet waited for; its standard output goes to out_path.
struct StartedRun {
  pid_t pid = -1;
  std::string out_path;
};

// Where the run of process `pid` in `workdir` keeps its standard output: beside the working
// directory, so that runs in one directory do not share it.
inline std::string Out_path(const std::string& workdir, const pid_t& pid) {
  const std::filesystem::path work(workdir);
  return work.parent_path() / (work.filename().string() + "." + std::to_string(pid) + ".out");
}

// Starts varnel with `args` in `workdir` (standard input /dev/null, the environment entries set);
// `in_child` runs in the new process first (to set a limit, say).
inline StartedRun Start_binary(const std::string& workdir, const std::vector<std::string>& args,
                               const std::vector<std::pair<std::string, std::string>>& environment,
                               const std::function<void()>& in_child = {}) {
  std::vector<std::string> copies = args;
  copies.insert(copies.begin(), "varnel");
  std::vector<char*> argv;
  for (auto& a : copies) argv.push_back(a.data());
  argv.push_back(nullptr);
  const pid_t pid = fork();
  if (pid == 0) {
    for (const auto& [name, value] : environment) setenv(name.c_str(), value.c_str(), 1);
    if (in_child) in_child();
    const int out = open(Out_path(workdir, getpid()).c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    const int in = open("/dev/null", O_RDONLY);
    if (chdir(workdir.c_str()) != 0 || out < 0 || in < 0) _exit(127);
    dup2(out, 1);
    dup2(in, 0);
    execv(VARNEL_BINARY, argv.data());
    _exit(127);
  }
  return {pid, Out_path(workdir, pid)};
}

// The exit status (-1 when a signal ended it) and the standard output of a started run.
inline FinishedRun Wait_for(const StartedRun& run) {
  int status = 0;
  waitpid(run.pid, &status, 0);
  const FinishedRun result{WIFEXITED(status) ? WEXITSTATUS(status) : -1, Read_file(run.out_path)};
  std::filesystem::remove(run.out_path);
  return result;
}

inline FinishedRun Run_binary(const std::string& workdir, const std::vector<std::string>& args,
                              const std::vector<std::pair<std::string, std::string>>& environment,
                              const std::function<void()>& in_child = {}) {
  return Wait_for(Start_binary(workdir, args, environment, in_child));
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
