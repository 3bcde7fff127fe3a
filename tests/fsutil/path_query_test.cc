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

TEST(PathQuery, MissingPathIsReportedWithTheEnoentSentence) {
  Test_dir dir;
  std::string type = "dir";
  bool empty = false;
  std::string message;
  EXPECT_FALSE(Is_there_such_path(dir / "missing", type, empty, message));
  EXPECT_EQ(type, "other");
  EXPECT_TRUE(empty);
  EXPECT_EQ(message, kNoEntry);

  std::string short_message;
  EXPECT_FALSE(Is_there_such_path(dir / "missing", short_message));
  EXPECT_EQ(short_message, kNoEntry);
  EXPECT_FALSE(Is_there_such_path(dir / "missing"));
}

TEST(PathQuery, PathBelowARegularFileGivesTheEnotdirSentence) {
  Test_dir dir;
  Write_file(dir / "f", "x");
  std::string message;
  EXPECT_FALSE(Is_there_such_path(dir / "f/below", message));
  EXPECT_EQ(message, kNotDir);
}

TEST(PathQuery, RegularFileIsEmptyOnlyWithSizeZero) {
  Test_dir dir;
  Write_file(dir / "empty.txt", "");
  Write_file(dir / "full.txt", "1 2\n");
  std::string type;
  bool empty = false;
  std::string message;
  EXPECT_TRUE(Is_there_such_path(dir / "empty.txt", type, empty, message));
  EXPECT_EQ(type, "file");
  EXPECT_TRUE(empty);

  empty = false;
  EXPECT_TRUE(Is_there_such_path(dir / "full.txt", type, empty, message));
  EXPECT_EQ(type, "file");
  EXPECT_FALSE(empty);
  EXPECT_TRUE(Is_there_such_path(dir / "full.txt"));
}

TEST(PathQuery, DirectoryIsEmptyOnlyWhenItReportsSize48) {
  Test_dir dir;
  ASSERT_EQ(mkdir((dir / "d").c_str(), 0755), 0);
  struct stat info;
  ASSERT_EQ(stat((dir / "d").c_str(), &info), 0);
  if (info.st_size == 48) GTEST_SKIP() << "this file system reports 48 for an empty directory";
  std::string type;
  bool empty = true;
  std::string message;
  EXPECT_TRUE(Is_there_such_path(dir / "d", type, empty, message));
  EXPECT_EQ(type, "dir");
  // Truly empty, but not the size the test looks for.
  EXPECT_FALSE(empty);
}

TEST(PathQuery, SymbolicLinksAreFollowed) {
  Test_dir dir;
  Write_file(dir / "target.txt", "");
  ASSERT_EQ(mkdir((dir / "target_dir").c_str(), 0755), 0);
  ASSERT_EQ(symlink((dir / "target.txt").c_str(), (dir / "to_file").c_str()), 0);
  ASSERT_EQ(symlink((dir / "target_dir").c_str(), (dir / "to_dir").c_str()), 0);
  ASSERT_EQ(symlink((dir / "nowhere").c_str(), (dir / "dangling").c_str()), 0);
  std::string type;
  bool empty = false;
  std::string message;
  EXPECT_TRUE(Is_there_such_path(dir / "to_file", type, empty, message));
  EXPECT_EQ(type, "file");
  EXPECT_TRUE(empty);
  EXPECT_TRUE(Is_there_such_path(dir / "to_dir", type, empty, message));
  EXPECT_EQ(type, "dir");
  EXPECT_FALSE(Is_there_such_path(dir / "dangling", type, empty, message));
  EXPECT_EQ(message, kNoEntry);
}

TEST(PathQuery, FifoAndDeviceAreOther) {
  Test_dir dir;
  ASSERT_EQ(mkfifo((dir / "fifo").c_str(), 0644), 0);
  std::string type;
  bool empty = false;
  std::string message;
  EXPECT_TRUE(Is_there_such_path(dir / "fifo", type, empty, message));
  EXPECT_EQ(type, "other");
  EXPECT_TRUE(empty);
  EXPECT_TRUE(Is_there_such_path("/dev/null", type, empty, message));
  EXPECT_EQ(type, "other");
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

TEST(GetPathList, SplitsAtEverySlash) {
  EXPECT_EQ(Get_path_list("/home/ann"), (std::list<std::string>{"", "home", "ann"}));
  EXPECT_EQ(Get_path_list("a//b/"), (std::list<std::string>{"a", "", "b"}));
  EXPECT_EQ(Get_path_list("/"), (std::list<std::string>{""}));
  EXPECT_EQ(Get_path_list("net.txt"), (std::list<std::string>{"net.txt"}));
  EXPECT_TRUE(Get_path_list("").empty());
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

TEST(GetCurrentPath, ReadsTheWorkingDirectoryThroughABufferOfTheGivenSize) {
  Test_dir dir;
  Cwd_guard guard;
  ASSERT_EQ(chdir(dir.path().c_str()), 0);
  char buffer[10000];
  ASSERT_NE(getcwd(buffer, sizeof buffer), nullptr);
  EXPECT_EQ(Get_current_path(10000), std::string(buffer));
  // Too small a buffer (or none) gives the empty text.
  EXPECT_EQ(Get_current_path(2), "");
  EXPECT_EQ(Get_current_path(0), "");
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
