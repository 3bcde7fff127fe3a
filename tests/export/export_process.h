// Running the built programs from the end-to-end tests: a command line run through the shell
// with its standard output and error caught in files, and results directories made by real
// runs of varnel on a link file.
#pragma once

#include <sys/wait.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "tests/support/test_dir.h"

namespace kcp::testing {

struct ProcessResult {
  int status = -1;  // exit status, -1 when the program did not exit normally
  std::string out;
  std::string err;
};

// Single quotes for the shell.
inline std::string Shell_quoted(const std::string& word) {
  std::string quoted = "'";
  for (const char c : word) {
    if (c == '\'') {
      quoted += "'\\''";
    } else {
      quoted += c;
    }
  }
  return quoted + "'";
}

inline ProcessResult Run_program(const Test_dir& dir, const std::string& program,
                                 const std::vector<std::string>& args) {
  std::string command = Shell_quoted(program);
  for (const std::string& arg : args) command += " " + Shell_quoted(arg);
  command +=
      " </dev/null >" + Shell_quoted(dir / "run.out") + " 2>" + Shell_quoted(dir / "run.err");
  const int raw = std::system(command.c_str());
  ProcessResult result;
  result.status = raw != -1 && WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
  result.out = Read_file(dir / "run.out");
  result.err = Read_file(dir / "run.err");
  return result;
}

inline ProcessResult Run_export(const Test_dir& dir, const std::vector<std::string>& args) {
  return Run_program(dir, VARNEL_EXPORT_BINARY, args);
}

// Runs varnel on `links` (written into dir as `file_name`) and returns the results directory,
// dir/<out_name>; "" when the run made none.
inline std::string Make_results(const Test_dir& dir, const std::string& file_name,
                                const std::string& links, const std::string& out_name,
                                const std::vector<std::string>& extra_switches = {}) {
  Write_file(dir / file_name, links);
  std::vector<std::string> args = {"-i", dir / file_name, "-o", dir / out_name};
  args.insert(args.end(), extra_switches.begin(), extra_switches.end());
  const ProcessResult run = Run_program(dir, VARNEL_BINARY, args);
  if (run.status != 0 || Read_file(dir / out_name + "/input_params.txt").empty()) return "";
  return dir / out_name;
}

}  // namespace kcp::testing
