// Runs in a hostile file system: a disk that fills up, a file-size limit, a results location that
// cannot be written, a results path that is a dangling symbolic link. Each run must end with its
// message and leave everything outside its results directory as it was. The disk and the read-only
// location are small tmpfs mounts, which need root; elsewhere the full-disk test is skipped with
// the reason and a permission test stands in for the read-only one.
#include <sys/resource.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <memory>
#include <string>

#include "gtest/gtest.h"
#include "tests/e2e/varnel_process.h"
#include "tests/support/small_disk.h"
#include "tests/support/test_dir.h"

namespace kcp::testing {
namespace {

namespace fs = std::filesystem;

// A network dense in cliques: its results take some hundreds of kilobytes, and the run on a
// disk of 96 KiB stops at the first write that fails. What it wrote before is whole, what it
// was writing a true beginning, and nothing was written after.
TEST(HostileEnvironment, FullDiskEndsTheRunAtTheFirstFailedWrite) {
  TestDir dir;
  const SmallDisk disk(dir / "disk", 96, false);
  if (!disk.Error().empty()) GTEST_SKIP() << disk.Error();
  std::mt19937 random(11);
  std::string links;
  for (int a = 0; a < 70; ++a) {
    for (int b = a + 1; b < 70; ++b) {
      if (random() % 100 < 45) links += "n" + std::to_string(a) + " n" + std::to_string(b) + "\n";
    }
  }
  fs::create_directory(dir / "ample");  // where the run has all the room it needs
  Write_file(dir / "ample/net.links", links);
  ASSERT_EQ(Run_binary(dir / "ample", {"-i", "net.links"}, {}).status, 0);
  Write_file(dir / "disk/net.links", links);
  const FinishedRun run = Run_binary(dir / "disk", {"-i", "net.links"}, {});
  EXPECT_EQ(run.status, 0);
  // The last line names the file whose write failed.
  const std::string start = "\nERROR: could not write the whole of 'net.links_files/";
  const std::string end = "': No space left on device.\n";
  ASSERT_TRUE(run.out.ends_with(end) && run.out.rfind(start) != std::string::npos) << run.out;
  const std::size_t from = run.out.rfind(start) + start.size();
  const std::string failed = run.out.substr(from, run.out.size() - end.size() - from);
  ASSERT_EQ(failed.find('\n'), std::string::npos) << failed;

  const auto whole = Tree(dir / "ample/net.links_files");
  const auto left = Tree(dir / "disk/net.links_files");
  ASSERT_TRUE(left.count(failed)) << failed;
  for (auto [name, content] : left) {
    ASSERT_TRUE(whole.count(name)) << name;
    std::string expected = whole.at(name);
    for (std::size_t at; (at = expected.find(dir / "ample/")) != std::string::npos;) {
      expected.replace(at, (dir / "ample/").size(), dir / "disk/");
    }
    if (name == failed) expected = expected.substr(0, content.size());
    EXPECT_EQ(content, expected) << name;
    // The communities go from the largest k down: no later k was begun.
    const std::string k_dir = name.substr(0, name.find('/')) + "/";
    EXPECT_TRUE(!name.starts_with("k=") || failed.starts_with(k_dir)) << name;
  }
  EXPECT_EQ(Read_file(dir / "disk/net.links"), links);
  EXPECT_EQ(Tree(dir / "disk").size(), left.size() + 2);  // net.links, net.links_files
}

// A file-size limit fails the write that passes it, which is reported as a full disk is; the
// signal the limit sends must not end the run without a word.
TEST(HostileEnvironment, FileSizeLimitEndsTheRunWithTheFailedWrite) {
  TestDir dir;
  constexpr rlim_t kLimit = 64 * 1024;
  const FinishedRun run = Run_binary(
      dir.path(), {"-i", std::string(VARNEL_TEST_DATA) + "/grqc.links", "-o", "res"}, {}, [] {
        const rlimit limit{kLimit, kLimit};
        setrlimit(RLIMIT_FSIZE, &limit);
      });
  EXPECT_EQ(run.status, 0);
  EXPECT_TRUE(run.out.ends_with(
      "\n Reading input ...\nERROR: could not write the whole of 'res/graph': File too large.\n"))
      << run.out;
  EXPECT_EQ(fs::file_size(dir / "res/graph"), kLimit);
}

// A location that cannot be written (read-only or, without root, without permission) and a
// dangling symbolic link as the results path are refused at once, and nothing changes.
TEST(HostileEnvironment, UnwritableResultsPathIsRefusedAtOnce) {
  TestDir dir;
  Write_file(dir / "net.links", "a b\nb c\nc a\n");
  fs::create_symlink(dir / "nowhere/res", dir / "res");
  std::string reason = "Permission denied.";
  std::unique_ptr<SmallDisk> disk;
  if (geteuid() == 0) {
    disk = std::make_unique<SmallDisk>(dir / "locked", 64, true);
    if (!disk->Error().empty()) GTEST_SKIP() << disk->Error();
    reason = "The file is on a read-only filesystem.";
  } else {
    fs::create_directory(dir / "locked");
    fs::permissions(dir / "locked", fs::perms::owner_read | fs::perms::owner_exec);
  }
  const auto before = Tree(dir.path());
  for (const auto& [path, why] :
       {std::pair{"locked/res", reason}, {"res", "pathname already exists."}}) {
    const FinishedRun run = Run_binary(dir.path(), {"-i", "net.links", "-o", path}, {});
    EXPECT_EQ(run.status, 0);
    EXPECT_TRUE(run.out.ends_with("\nERROR: Make_dir() called with " + std::string(path) +
                                  " and \n" + why + "\n"))
        << run.out;
    EXPECT_EQ(Tree(dir.path()), before);
  }
  std::error_code ignored;  // a read-only mount keeps its mode
  fs::permissions(dir / "locked", fs::perms::owner_all, ignored);
}

}  // namespace
}  // namespace kcp::testing
