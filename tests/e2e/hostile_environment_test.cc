// Runs in a hostile file system: a disk that fills up, a results location that cannot be
// written, a results path that is a dangling symbolic link. Each run must end with its message
// and leave everything outside its results directory as it was. The disk and the read-only
// location are small tmpfs mounts, which need root; elsewhere those tests are skipped with the
// reason (a permission test stands in for the read-only one).
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <random>
#include <string>

#include "gtest/gtest.h"
#include "tests/e2e/varnel_process.h"
#include "tests/support/test_dir.h"

namespace kcp::testing {
namespace {

namespace fs = std::filesystem;

// A tmpfs of `kib` KiB at `path`, unmounted again when the object goes; Error() says why there
// is none.
class Small_disk {
 public:
  Small_disk(const std::string& path, const int& kib, const bool& read_only) : path_(path) {
    fs::create_directory(path);
    const std::string options = "size=" + std::to_string(kib) + "k";
    if (geteuid() != 0) {
      error_ = "mounting a small tmpfs needs root";
    } else if (::mount("tmpfs", path.c_str(), "tmpfs", read_only ? MS_RDONLY : 0,
                       options.c_str()) != 0) {
      error_ = std::string("cannot mount a tmpfs here: ") + std::strerror(errno);
    } else {
      mounted_ = true;
    }
  }
  ~Small_disk() {
    if (mounted_) ::umount2(path_.c_str(), MNT_DETACH);
  }
  Small_disk(const Small_disk&) = delete;
  Small_disk& operator=(const Small_disk&) = delete;

  const std::string& Error() const { return error_; }

 private:
  std::string path_;
  std::string error_;
  bool mounted_ = false;
};

// A network dense in cliques whose results take some hundreds of kilobytes.
std::string Clique_rich_links() {
  std::mt19937 random(11);
  std::bernoulli_distribution linked(0.45);
  std::string links;
  for (int a = 0; a < 70; ++a) {
    for (int b = a + 1; b < 70; ++b) {
      if (linked(random)) links += "n" + std::to_string(a) + " n" + std::to_string(b) + "\n";
    }
  }
  return links;
}

std::string Last_line(const std::string& text) {
  const std::size_t end = text.size() - (text.ends_with('\n') ? 1 : 0);
  const std::size_t start = text.rfind('\n', end == 0 ? 0 : end - 1);
  return text.substr(start == std::string::npos ? 0 : start + 1, end - start - 1);
}

TEST(HostileEnvironment, FullDiskEndsTheRunWithItsMessage) {
  Test_dir dir;
  const Small_disk disk(dir / "disk", 96, false);
  if (!disk.Error().empty()) GTEST_SKIP() << disk.Error();
  const std::string links = Clique_rich_links();
  Write_file(dir / "disk/net.links", links);
  const Run_result run = Run_binary(dir / "disk", {"-i", "net.links"}, {});
  EXPECT_EQ(run.status, 0);
  const std::string last = Last_line(run.out);
  EXPECT_TRUE(last.starts_with("ERROR: could not write the whole of 'net.links_files/")) << last;
  EXPECT_TRUE(last.ends_with("': No space left on device.")) << last;
  // Only the results directory was added; the input is as it was.
  EXPECT_EQ(Read_file(dir / "disk/net.links"), links);
  std::vector<std::string> entries;
  for (const auto& entry : fs::directory_iterator(dir / "disk")) {
    entries.push_back(entry.path().filename().string());
  }
  std::sort(entries.begin(), entries.end());
  EXPECT_EQ(entries, (std::vector<std::string>{"net.links", "net.links_files"}));
}

TEST(HostileEnvironment, UnwritableResultsLocationIsRefusedAtOnce) {
  Test_dir dir;
  Write_file(dir / "net.links", "a b\nb c\nc a\n");
  std::string reason;
  if (geteuid() == 0) {
    const Small_disk disk(dir / "locked", 64, true);
    if (!disk.Error().empty()) GTEST_SKIP() << disk.Error();
    reason = "The file is on a read-only filesystem.";
    const Run_result run = Run_binary(dir.path(), {"-i", "net.links", "-o", "locked/res"}, {});
    EXPECT_EQ(Last_line(run.out), reason);
    EXPECT_TRUE(
        run.out.ends_with("ERROR: Make_dir() called with locked/res and \n" + reason + "\n"))
        << run.out;
    EXPECT_TRUE(Tree(dir / "locked").empty());
  } else {
    fs::create_directory(dir / "locked");
    fs::permissions(dir / "locked", fs::perms::owner_read | fs::perms::owner_exec);
    const Run_result run = Run_binary(dir.path(), {"-i", "net.links", "-o", "locked/res"}, {});
    fs::permissions(dir / "locked", fs::perms::owner_all);
    EXPECT_TRUE(
        run.out.ends_with("ERROR: Make_dir() called with locked/res and \n"
                          "Permission denied.\n"))
        << run.out;
    EXPECT_TRUE(Tree(dir / "locked").empty());
  }
  EXPECT_EQ(Tree(dir.path()).size(), 2u);  // net.links and the directory
}

TEST(HostileEnvironment, DanglingLinkAsResultsPathIsLeftAlone) {
  Test_dir dir;
  Write_file(dir / "net.links", "a b\nb c\nc a\n");
  fs::create_symlink(dir / "nowhere/res", dir / "res");
  const auto before = Tree(dir.path());
  const Run_result run = Run_binary(dir.path(), {"-i", "net.links", "-o", "res"}, {});
  EXPECT_EQ(run.status, 0);
  EXPECT_TRUE(
      run.out.ends_with("ERROR: Make_dir() called with res and \n"
                        "pathname already exists.\n"))
      << run.out;
  EXPECT_EQ(Tree(dir.path()), before);
}

}  // namespace
}  // namespace kcp::testing
