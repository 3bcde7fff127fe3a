// Runs the built binary on every case under tests/e2e/cases and compares, byte for byte, its
// standard output and every file it wrote with the expected ones. A case folder holds:
//   args     one command-line argument per line (the program name is added in front)
//   input/   files copied into a fresh working directory before the run (optional)
//   stdout   the expected standard output
//   output/  the expected tree of everything the run added to the working directory (optional;
//            absent means the run must write nothing)
//   preload_scripted_clock  (optional, empty) the run gets the scripted clock of tests/support/
//            preload (clock() gives n microseconds at the n-th reading, the monotonic clock
//            jumps by 10^6 s at each), so a time-limited run is the same everywhere
// In expected texts "@DIR@" stands for the absolute path of the working directory.
#include <cstdlib>
#include <filesystem>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "gtest/gtest.h"
#include "tests/e2e/varnel_process.h"
#include "tests/support/test_dir.h"

namespace kcp::testing {
namespace {

namespace fs = std::filesystem;

std::string With_dir(std::string text, const std::string& dir) {
  for (std::size_t at = 0; (at = text.find("@DIR@", at)) != std::string::npos; at += dir.size()) {
    text.replace(at, 5, dir);
  }
  return text;
}

// The environment entries that put the scripted clock in front of the C library's; a sanitized
// binary otherwise refuses a library loaded ahead of the sanitizer's runtime.
using Environment = std::vector<std::pair<std::string, std::string>>;

Environment Scripted_clock_environment() {
  const char* preload = std::getenv("LD_PRELOAD");
  const char* asan = std::getenv("ASAN_OPTIONS");
  return {{"LD_PRELOAD",
           std::string(VARNEL_SCRIPTED_CLOCK) + (preload ? ":" : "") + (preload ? preload : "")},
          {"ASAN_OPTIONS", (asan ? std::string(asan) + ":" : "") + "verify_asan_link_order=0"}};
}

class E2e : public ::testing::TestWithParam<std::string> {};

TEST_P(E2e, OutputAndFilesMatch) {
  const fs::path case_dir = fs::path(VARNEL_E2E_CASES) / GetParam();
  TestDir holder;
  const std::string work = holder / "work";
  fs::create_directory(work);
  const auto inputs = Tree(case_dir / "input");
  if (fs::exists(case_dir / "input"))
    fs::copy(case_dir / "input", work, fs::copy_options::recursive);

  std::vector<std::string> args;
  std::istringstream lines(Read_file(case_dir / "args"));
  for (std::string line; std::getline(lines, line);) args.push_back(line);
  const bool clock = fs::exists(case_dir / "preload_scripted_clock");
  const FinishedRun run =
      Run_binary(work, args, clock ? Scripted_clock_environment() : Environment{});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out, With_dir(Read_file(case_dir / "stdout"), work));

  // Inputs the run left as they were are not part of its output.
  std::map<std::string, std::string> written = Tree(work), expected;
  for (const auto& [name, content] : inputs) {
    if (written.count(name) && written[name] == content) written.erase(name);
  }
  for (const auto& [name, content] : Tree(case_dir / "output"))
    expected[name] = With_dir(content, work);
  // File by file, so that a mismatch names the file.
  for (const auto& [name, content] : expected) {
    EXPECT_EQ(written.count(name) ? written[name] : "(missing)", content) << "in file " << name;
    written.erase(name);
  }
  for (const auto& [name, content] : written) ADD_FAILURE() << "unexpected file: " << name;
}

// Case names are made of letters, digits and '_', as test names must be.
std::set<std::string> Case_names() {
  std::set<std::string> names;
  for (const auto& entry : fs::directory_iterator(VARNEL_E2E_CASES)) {
    if (entry.is_directory()) names.insert(entry.path().filename().string());
  }
  return names;
}

INSTANTIATE_TEST_SUITE_P(Cases, E2e, ::testing::ValuesIn(Case_names()),
                         [](const auto& info) { return info.param; });

}  // namespace
}  // namespace kcp::testing
