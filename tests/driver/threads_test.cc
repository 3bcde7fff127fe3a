#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

#include "driver/driver.h"
#include "tests/e2e/varnel_process.h"
#include "tests/support/small_disk.h"
#include "tests/support/test_dir.h"

namespace kcp {
namespace {

// One whole run with `threads` threads in a child process working in `workdir`, its standard
// output in a file.
std::string Run_with_threads(const std::string& workdir, std::vector<std::string> args,
                             const unsigned& threads) {
  const std::string out_path = workdir + ".out";
  std::cout.flush();
  const pid_t pid = fork();
  if (pid == 0) {
    const int out = open(out_path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    if (chdir(workdir.c_str()) != 0 || out < 0) _exit(127);
    dup2(out, 1);
    args.insert(args.begin(), "varnel");
    std::vector<char*> argv;
    for (std::string& arg : args) argv.push_back(arg.data());
    argv.push_back(nullptr);
    Run(static_cast<int>(args.size()), argv.data(), threads);
    std::cout.flush();
    _exit(0);
  }
  int status = 0;
  waitpid(pid, &status, 0);
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
  return testing::Read_file(out_path);
}

// The same network and switches on one, three and eight threads: every console line and every
// byte of every file the same.
TEST(Threads, RunsOnOneThreeAndEightThreadsAgreeByteForByte) {
  const std::string data = VARNEL_TEST_DATA;
  const std::vector<std::vector<std::string>> cases = {
      {"-i", data + "/lesmis.links"},
      {"-i", data + "/lesmis.links", "-D"},
      {"-i", data + "/lesmis.links", "-I", "2"},
      {"-i", data + "/lesmis.links", "-w", "1", "-k", "4"},
      {"-i", data + "/grqc.links"},
      {"-i", data + "/grqc.links", "-t", "10"},
  };
  for (const std::vector<std::string>& args : cases) {
    {
      std::string expected_out;
      std::map<std::string, std::string> expected_tree;
      for (const unsigned threads : {1u, 3u, 8u}) {
        SCOPED_TRACE(args.back() + " threads " + std::to_string(threads));
        testing::TestDir dir;
        std::vector<std::string> with_out = args;
        with_out.insert(with_out.end(), {"-o", "res"});
        const std::string out = Run_with_threads(dir.path(), with_out, threads);
        const auto tree = testing::Tree(dir / "res");
        if (threads == 1) {
          expected_out = out;
          expected_tree = tree;
          continue;
        }
        EXPECT_EQ(out, expected_out);
        EXPECT_EQ(tree, expected_tree);
      }
    }
  }
}

// A disk that fills up while several k are written side by side: the run stops at the write where
// a run on one thread stops, with its message, and leaves the same files.
TEST(Threads, FullDiskStopsWhereOneThreadStops) {
  testing::TestDir dir;
  const std::string links = testing::Dense_clique_links();
  std::string expected_out;
  std::map<std::string, std::string> expected_tree;
  for (const unsigned threads : {1u, 3u, 8u}) {
    SCOPED_TRACE("threads " + std::to_string(threads));
    const std::string where = dir / "disk";  // the same path, which the files name, for each
    const testing::SmallDisk disk(where, 160, false);
    if (!disk.Error().empty()) GTEST_SKIP() << disk.Error();
    testing::Write_file(where + "/net.links", links);
    const std::string out = Run_with_threads(where, {"-i", "net.links"}, threads);
    const auto tree = testing::Tree(where + "/net.links_files");
    if (threads == 1) {
      ASSERT_NE(out.find("\nERROR: could not write the whole of"), std::string::npos) << out;
      expected_out = out;
      expected_tree = tree;
      continue;
    }
    EXPECT_EQ(out, expected_out);
    EXPECT_EQ(tree, expected_tree);
  }
}

}  // namespace
}  // namespace kcp
