// Runs the built binary on every case under tests/e2e/cases and compares, byte for byte, its
// standard output and every file it wrote with the expected ones. A case folder holds:
//   args     one command-line argument per line (the program name is added in front)
//   input/   files copied into a fresh working directory before the run (optional)
//   stdout   the expected standard output
//   output/  the expected tree of everything the run added to the working directory (optional;
//            absent means the run must write nothing)
//   preload_scripted_clock  (optional, empty) the run gets the scripted clock of
//            tests/support/preload: the n-th clock() reading is n microseconds and the monotonic
//            clock jumps by 10^6 s at every reading, so a time-limited run is the same everywhere
// In expected texts "@DIR@" stands for the absolute path of the working directory.
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "gtest/gtest.h"
#include "tests/e2e/varnel_process.h"
#include "tests/support/test_dir.h"

namespace kcp::testing {
namespace {

namespace fs = std::filesystem;

std::string Replace_all(std::string text, const std::string& from, const std::string& to) {
  for (std::size_t at = text.find(from); at != std::string::npos;
       at = text.find(from, at + to.size())) {
    text.replace(at, from.size(), to);
  }
  return text;
}

std::vector<std::string> Read_args(const std::string& path) {
  std::vector<std::string> args;
  std::string text = Read_file(path);
  std::size_t start = 0;
  while (start < text.size()) {
    std::size_t end = text.find('\n', start);
    if (end == std::string::npos) end = text.size();
    args.push_back(text.substr(start, end - start));
    start = end + 1;
  }
  return args;
}

// The environment entries that put the scripted clock in front of the C library's.
std::vector<std::pair<std::string, std::string>> Scripted_clock_environment() {
  const char* preload = std::getenv("LD_PRELOAD");
  const char* asan = std::getenv("ASAN_OPTIONS");
  return {{"LD_PRELOAD", std::string(VARNEL_SCRIPTED_CLOCK) +
                             (preload != nullptr ? std::string(":") + preload : std::string())},
          // A sanitized binary otherwise refuses a library loaded ahead of the sanitizer's runtime.
          {"ASAN_OPTIONS", (asan != nullptr ? std::string(asan) + ":" : std::string()) +
                               "verify_asan_link_order=0"}};
}

class E2e : public ::testing::TestWithParam<std::string> {};

TEST_P(E2e, OutputAndFilesMatch) {
  const fs::path case_dir = fs::path(VARNEL_E2E_CASES) / GetParam();
  Test_dir holder;
  const std::string work = holder / "work";
  fs::create_directory(work);
  std::map<std::string, std::string> inputs;
  if (fs::exists(case_dir / "input")) {
    fs::copy(case_dir / "input", work, fs::copy_options::recursive);
    inputs = Tree(case_dir / "input");
  }

  std::vector<std::pair<std::string, std::string>> environment;
  if (fs::exists(case_dir / "preload_scripted_clock")) environment = Scripted_clock_environment();
  const Run_result run = Run_binary(work, Read_args((case_dir / "args").string()), environment);
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out, Replace_all(Read_file((case_dir / "stdout").string()), "@DIR@", work));

  std::map<std::string, std::string> written = Tree(work);
  // Inputs the run left as they were are not part of its output.
  for (const auto& [name, content] : inputs) {
    auto found = written.find(name);
    if (found != written.end() && found->second == content) written.erase(found);
  }
  std::map<std::string, std::string> expected;
  for (auto& [name, content] : Tree(case_dir / "output")) {
    expected[name] = Replace_all(content, "@DIR@", work);
  }
  // Compare file by file first, so that a mismatch names the file.
  for (const auto& [name, content] : expected) {
    auto found = written.find(name);
    if (found == written.end()) {
      ADD_FAILURE() << "missing: " << name;
    } else {
      EXPECT_EQ(found->second, content) << "in file " << name;
    }
  }
  for (const auto& [name, content] : written) {
    EXPECT_TRUE(expected.count(name)) << "unexpected file: " << name;
  }
}

std::vector<std::string> Case_names() {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(VARNEL_E2E_CASES)) {
    if (entry.is_directory()) names.push_back(entry.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

INSTANTIATE_TEST_SUITE_P(Cases, E2e, ::testing::ValuesIn(Case_names()), [](const auto& info) {
  std::string name = info.param;
  for (char& c : name) {
    if (!isalnum(static_cast<unsigned char>(c))) c = '_';
  }
  return name;
});

}  // namespace
}  // namespace kcp::testing
