// Runs started together into one results directory: exactly one of them writes its results there
// and the other stops with the message of a non-empty directory, whatever stood at the path
// before (nothing, an empty directory, a file, or directories still to be made).
#include <fcntl.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <map>
#include <sstream>
#include <string>

#include "gtest/gtest.h"
#include "tests/e2e/varnel_process.h"
#include "tests/support/test_dir.h"

namespace kcp::testing {
namespace {

namespace fs = std::filesystem;

TEST(ConcurrentRuns, OneRunTakesTheDirectoryAndTheOtherIsRefused) {
  TestDir dir;
  // Two networks with different results that take the same time to read: lesmis, and lesmis
  // without one line in fifty.
  std::istringstream lesmis(Read_file(std::string(VARNEL_TEST_DATA) + "/lesmis.links"));
  std::string part;
  int count = 0;
  for (std::string line; std::getline(lesmis, line);) {
    if (++count % 50 != 0) part += line + "\n";
  }
  Write_file(dir / "a.links", lesmis.str());
  Write_file(dir / "b.links", part);
  const std::string inputs[] = {"a.links", "b.links"};
  std::string console[2];
  std::map<std::string, std::string> results[2];
  for (int i = 0; i < 2; ++i) {
    console[i] = Run_binary(dir.path(), {"-i", inputs[i], "-o", "alone"}, {}).out;
    results[i] = Tree(dir / "alone");
    fs::remove_all(dir / "alone");
  }
  const std::string refused =
      "\n Reading input ...\nERROR: the output directory already exists and it is non-empty.\n\n";
  const std::string targets[] = {"res", "res", "res", "new/deeper/res"};

  const auto start = std::chrono::steady_clock::now();
  for (int round = 0;
       round < 20 && std::chrono::steady_clock::now() - start < std::chrono::seconds(10); ++round) {
    const int variant = round % 4;
    SCOPED_TRACE("round " + std::to_string(round));
    for (const char* old : {"res", "res1", "new"}) fs::remove_all(dir / old);
    if (variant == 1) fs::create_directory(dir / "res");
    if (variant == 2) Write_file(dir / "res", "in the way");
    const std::string& target = targets[variant];
    // Both wait for the end of the pipe, then start at once.
    int gate[2];
    ASSERT_EQ(pipe2(gate, O_CLOEXEC), 0);
    const auto wait_at_gate = [&] {
      close(gate[1]);
      char c;
      while (read(gate[0], &c, 1) > 0) {
      }
    };
    const StartedRun a =
        Start_binary(dir.path(), {"-i", inputs[0], "-o", target}, {}, wait_at_gate);
    const StartedRun b =
        Start_binary(dir.path(), {"-i", inputs[1], "-o", target}, {}, wait_at_gate);
    close(gate[0]);
    close(gate[1]);
    const FinishedRun runs[] = {Wait_for(a), Wait_for(b)};
    const int winner = runs[0].out == console[0] ? 0 : 1;
    ASSERT_EQ(runs[winner].out, console[winner]);
    ASSERT_TRUE(runs[1 - winner].out.ends_with(refused)) << runs[1 - winner].out;
    ASSERT_EQ(Tree(dir / target), results[winner]);
    if (variant == 2) {
      ASSERT_EQ(Read_file(dir / "res1"), "in the way");
      ASSERT_FALSE(fs::exists(dir / "res2"));
    }
  }
}

}  // namespace
}  // namespace kcp::testing
