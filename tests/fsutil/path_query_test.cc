#include "fsutil/path_query.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <list>
#include <string>
#include <utility>

#include "core/xerror_msg.h"
#include "tests/fsutil/console_session.h"
#include "tests/support/test_dir.h"

namespace kcp {
namespace {

using testing::Cwd_guard;
using testing::kNoEntry;
using testing::Test_dir;
using testing::Write_file;

const std::string kNotDir = "A component of the path is not a directory.";

std::string Message_of_make_dir(const std::string& path) {
  try {
    Make_dir(path);
  } catch (const Xerror_msg& e) {
    return e.what();
  }
  return "no exception";
}

TEST(PathQuery, TellsTypeEmptinessAndWhyAPathIsMissing) {
  Test_dir dir;
  Write_file(dir / "empty.txt", "");
  Write_file(dir / "full.txt", "1 2\n");
  ASSERT_EQ(mkdir((dir / "d").c_str(), 0755), 0);
  ASSERT_EQ(mkfifo((dir / "fifo").c_str(), 0644), 0);
  ASSERT_EQ(symlink((dir / "empty.txt").c_str(), (dir / "to_file").c_str()), 0);
  ASSERT_EQ(symlink((dir / "d").c_str(), (dir / "to_dir").c_str()), 0);
  ASSERT_EQ(symlink((dir / "nowhere").c_str(), (dir / "dangling").c_str()), 0);
  struct stat info;
  ASSERT_EQ(stat((dir / "d").c_str(), &info), 0);
  // A directory counts as empty only when it reports the size 48, which few file systems do.
  const bool dir_empty = info.st_size == 48;
  struct Case {
    std::string path;
    bool found;
    std::string type;
    bool empty;
    std::string message;
  };
  const Case cases[] = {
      {dir / "missing", false, "other", true, kNoEntry},
      {dir / "full.txt/below", false, "other", true, kNotDir},
      {dir / "empty.txt", true, "file", true, ""},
      {dir / "full.txt", true, "file", false, ""},
      {dir / "d", true, "dir", dir_empty, ""},
      // Symbolic links are followed.
      {dir / "to_file", true, "file", true, ""},
      {dir / "to_dir", true, "dir", dir_empty, ""},
      {dir / "dangling", false, "other", true, kNoEntry},
      {dir / "fifo", true, "other", true, ""},
      {"/dev/null", true, "other", true, ""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.path);
    std::string type = "unset";
    bool empty = !c.empty;
    std::string message;
    EXPECT_EQ(Is_there_such_path(c.path, type, empty, message), c.found);
    EXPECT_EQ(type, c.type);
    EXPECT_EQ(empty, c.empty);
    if (!c.found) {
      EXPECT_EQ(message, c.message);
    }
    std::string short_message;
    EXPECT_EQ(Is_there_such_path(c.path, short_message), c.found);
    if (!c.found) {
      EXPECT_EQ(short_message, c.message);
    }
    EXPECT_EQ(Is_there_such_path(c.path), c.found);
  }
}

TEST(PathQuery, IsThereSuchDirAndFileNameTheTypeFound) {
  Test_dir dir;
  Write_file(dir / "x.txt", "abc");
  ASSERT_EQ(mkdir((dir / "d").c_str(), 0755), 0);
  bool empty = true;
  std::string message;
  EXPECT_FALSE(Is_there_such_dir(dir / "x.txt", empty, message));
  EXPECT_EQ(message, "The path " + (dir / "x.txt") + " is a file.");
  EXPECT_FALSE(Is_there_such_dir("/dev/null", empty, message));
  EXPECT_EQ(message, "The path /dev/null is a other.");
  EXPECT_FALSE(Is_there_such_file(dir / "d", empty, message));
  EXPECT_EQ(message, "The path " + (dir / "d") + " is a dir.");
  for (const bool found : {Is_there_such_dir(dir / "none", empty, message),
                           Is_there_such_file(dir / "none", empty, message)}) {
    EXPECT_FALSE(found);
    EXPECT_EQ(message, kNoEntry);
  }
  EXPECT_TRUE(Is_there_such_file(dir / "x.txt", empty, message));
  EXPECT_FALSE(empty);
  EXPECT_TRUE(Is_there_such_dir(dir / "d", empty, message));
  EXPECT_TRUE(Is_there_such_dir(dir / "d"));
  EXPECT_TRUE(Is_there_such_file(dir / "x.txt"));
  EXPECT_FALSE(Is_there_such_dir(dir / "x.txt"));
  EXPECT_FALSE(Is_there_such_file(dir / "d"));
}

TEST(MakeDir, CreatesEveryMissingDirectoryWithMode0755) {
  Test_dir dir;
  const mode_t old_mask = umask(022);
  Make_dir(dir / "a/b/c");
  umask(old_mask);
  for (const std::string& p : {dir / "a", dir / "a/b", dir / "a/b/c"}) {
    struct stat info;
    ASSERT_EQ(stat(p.c_str(), &info), 0) << p;
    EXPECT_TRUE(S_ISDIR(info.st_mode)) << p;
    EXPECT_EQ(info.st_mode & 0777, 0755u) << p;
  }
}

TEST(MakeDir, KeepsWhatExistsAndTakesOddlyWrittenAndRelativePaths) {
  Test_dir dir;
  Make_dir(dir / "a/b");
  Write_file(dir / "a/b/keep.txt", "kept");
  Make_dir(dir / "a/b");
  Make_dir(dir / "a");
  EXPECT_EQ(testing::Read_file(dir / "a/b/keep.txt"), "kept");
  Make_dir(dir / "x/y/");
  EXPECT_TRUE(testing::Is_dir(dir / "x/y"));
  Make_dir(dir / "p//q");
  EXPECT_TRUE(testing::Is_dir(dir / "p/q"));
  EXPECT_NO_THROW(Make_dir(""));
  Cwd_guard guard;
  ASSERT_EQ(chdir(dir.path().c_str()), 0);
  Make_dir("rel/sub");
  EXPECT_TRUE(testing::Is_dir(dir / "rel/sub"));
}

TEST(MakeDir, FailureNamesThePathAndKeepsWhatWasMadeBefore) {
  Test_dir dir;
  Write_file(dir / "f", "");
  const std::string below_file = dir / "f/x/y";
  EXPECT_EQ(Message_of_make_dir(below_file),
            "ERROR: Make_dir() called with " + below_file + " and \n" + kNotDir);
  EXPECT_TRUE(testing::Is_regular(dir / "f"));

  const std::string too_long = dir / ("new/" + std::string(300, 'n') + "/z");
  EXPECT_EQ(Message_of_make_dir(too_long),
            "ERROR: Make_dir() called with " + too_long + " and \npathname too long.");
  EXPECT_TRUE(testing::Is_dir(dir / "new"));
}

TEST(MakeDir, PathOfPathMaxCharactersOrMoreIsShownByItsStartAndTheCountLeftOut) {
  Test_dir dir;
  const std::string huge = dir / ("made/" + std::string(5000, 'n'));
  EXPECT_EQ(Message_of_make_dir(huge), "ERROR: Make_dir() called with " + huge.substr(0, 200) +
                                           "... (" + std::to_string(huge.size() - 200) +
                                           " more characters) and \npathname too long.");
  EXPECT_TRUE(testing::Is_dir(dir / "made"));
}

TEST(MakeDirFailure, ShortensOnlyFromPathMaxCharactersOn) {
  const std::string just_below(4095, 'a');
  EXPECT_EQ(Make_dir_failure(just_below, 4095, ENAMETOOLONG),
            "ERROR: Make_dir() called with " + just_below + " and \npathname too long.");
  const std::string at_limit = std::string(200, 'b') + std::string(3896, 'c');
  EXPECT_EQ(Make_dir_failure(at_limit, 4096, ENOENT),
            "ERROR: Make_dir() called with " + std::string(200, 'b') +
                "... (3896 more characters) and \nA component of the path file_name does not "
                "exist.");
  // Only the start of a path of billions of characters is at hand.
  EXPECT_EQ(Make_dir_failure(std::string(250, 'd'), 4294967320u, ENAMETOOLONG),
            "ERROR: Make_dir() called with " + std::string(200, 'd') +
                "... (4294967120 more characters) and \npathname too long.");
}

class GetTotalPathIn : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(mkdir((dir_ / "home").c_str(), 0755), 0);
    ASSERT_EQ(mkdir((dir_ / "home/ann").c_str(), 0755), 0);
    ASSERT_EQ(chdir((dir_ / "home/ann").c_str()), 0);
    char buffer[10000];
    ASSERT_NE(getcwd(buffer, sizeof buffer), nullptr);
    ann_ = buffer;
    home_ = ann_.substr(0, ann_.size() - std::string("/ann").size());
    ASSERT_EQ(home_ + "/ann", ann_);
  }
  Cwd_guard guard_;
  Test_dir dir_;
  std::string ann_;
  std::string home_;
};

TEST_F(GetTotalPathIn, RelativePathsStartAtTheWorkingDirectoryAFinalDotIsKept) {
  const std::pair<std::string, std::string> cases[] = {
      {"net.txt", ann_ + "/net.txt"},
      {"../bob/x", home_ + "/bob/x"},
      {"./d/net.txt", ann_ + "/d/net.txt"},
      {"d/../e/./f", ann_ + "/e/f"},
      {"d/", ann_ + "/d"},
      {".", ann_ + "/."},
      {"..", ann_ + "/.."},
      // Absolute paths ignore the working directory.
      {"/a/b/.", "/a/b/."},
      {"/a/b/..", "/a/b/.."},
      {"/data/x.txt", "/data/x.txt"},
      {"/a/../b", "/b"},
      {"/a/b/", "/a/b"},
      {"/a//b", "/a//b"},
      {"/", "/"},
      {"", ""},
      // ".." also removes the empty first component that stands for the root.
      {"/../x", "x"}};
  for (const auto& [path, expected] : cases) {
    SCOPED_TRACE(path);
    EXPECT_EQ(Get_total_path(path), expected);
  }
  ASSERT_EQ(chdir("/"), 0);
  EXPECT_EQ(Get_total_path("x"), "/x");
  EXPECT_EQ(Get_total_path("x/../y"), "/y");
}

TEST(DirError, GivesTheSentenceOfEveryKnownErrnoAndQuotesAnyOther) {
  const std::pair<int, std::string> cases[] = {
      {1, "The filesyst. does not  support  the removal of directories."},
      {2, "A component of the path file_name does not exist."},
      {5, "An I/O error occurred."},
      {12, "Insufficient memory to complete the operation."},
      {13, "Permission denied."},
      {14, "Bad address."},
      {16,
       "The rename fails because oldpath or newpath is a directory that  is in use by some "
       "process."},
      {17, "pathname already exists."},
      {18, "oldpath and newpath are not on the same filesystem."},
      {20, "A component of the path is not a directory."},
      {21, "newpath is an existing directory, but oldpath is not a directory."},
      {22, "an attempt was made to make a directory a subdirectory of itself."},
      {28, "no room for the new directory entry."},
      {30, "The file is on a read-only filesystem."},
      {36, "pathname too long."},
      {39, "newpath is a non-empty directory, i.e., contains entries other than . and .. ."},
      {40, "Too  many symbolic links encountered while traversing the path."},
      {99, " Other error occured, errno=99"},
      {0, " Other error occured, errno=0"},
      {3, " Other error occured, errno=3"},
      {-4, " Other error occured, errno=-4"}};
  for (const auto& [error, expected] : cases) {
    SCOPED_TRACE(error);
    EXPECT_EQ(Dir_error(error), expected);
  }
}

}  // namespace
}  // namespace kcp
