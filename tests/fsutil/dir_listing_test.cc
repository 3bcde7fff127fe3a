#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string>

#include "core/xerror_msg.h"
#include "fsutil/dir_prepare.h"
#include "tests/fsutil/console_session.h"
#include "tests/support/test_dir.h"

namespace kcp {
namespace {

using testing::Make_directory;
using testing::Test_dir;
using testing::Write_file;

std::string Message_of_list_dir(const std::string& path) {
  return testing::Message_of([&] { List_dir(path); });
}

TEST(ListDir, EntriesComeInAlphasortOrderWithoutDotEntriesAndTypesFollowLinks) {
  Test_dir dir;
  Make_directory(dir / "e");
  EXPECT_TRUE(List_dir(dir / "e").empty());
  Write_file(dir / "b", "");
  Write_file(dir / "a", "");
  Make_directory(dir / "C");
  Make_directory(dir / "d");
  ASSERT_EQ(symlink((dir / "d").c_str(), (dir / "link_to_d").c_str()), 0);
  ASSERT_EQ(mkfifo((dir / "pipe").c_str(), 0644), 0);
  Write_file(dir / ".hidden", "");
  EXPECT_EQ(List_dir(dir.path()), (DirListing{{".hidden", "file"},
                                              {"C", "dir"},
                                              {"a", "file"},
                                              {"b", "file"},
                                              {"d", "dir"},
                                              {"e", "dir"},
                                              {"link_to_d", "dir"},
                                              {"pipe", "other"}}));
}

TEST(ListDir, NonDirectoryIsRefusedWithTheQueryMessage) {
  Test_dir dir;
  Write_file(dir / "x.txt", "");
  EXPECT_EQ(Message_of_list_dir(dir / "x.txt"), "ERROR: List_dir() called on " + (dir / "x.txt") +
                                                    " and\nThe path " + (dir / "x.txt") +
                                                    " is a file.");
  EXPECT_EQ(Message_of_list_dir(dir / "none"),
            "ERROR: List_dir() called on " + (dir / "none") +
                " and\nA component of the path file_name does not exist.");
}

TEST(ListDir, DanglingLinkInsideIsAnError) {
  Test_dir dir;
  Write_file(dir / "a", "");
  ASSERT_EQ(symlink((dir / "gone").c_str(), (dir / "b").c_str()), 0);
  EXPECT_EQ(Message_of_list_dir(dir.path()),
            "ERROR: problem with " + (dir / "b") +
                " in List_dir():\nA component of the path file_name does not exist.");
}

TEST(ListDir, UnreadableDirectoryReportsTheScandirFailure) {
  if (geteuid() == 0) GTEST_SKIP() << "root reads every directory";
  Test_dir dir;
  Make_directory(dir / "locked");
  Write_file(dir / "locked/f", "");
  ASSERT_EQ(chmod((dir / "locked").c_str(), 0), 0);
  EXPECT_EQ(Message_of_list_dir(dir / "locked"), "ERROR: List_dir() -> scandir() called on " +
                                                     (dir / "locked") + " and\nPermission denied.");
  chmod((dir / "locked").c_str(), 0755);
}

TEST(ListDirRec, SeveralDirectoriesAndDeepNesting) {
  Test_dir dir;
  // r: d1/ (x, y), d2/ (e/ (h/ (z))), k
  Make_directory(dir / "r");
  Make_directory(dir / "r/d1");
  Write_file(dir / "r/d1/x", "");
  Write_file(dir / "r/d1/y", "");
  Make_directory(dir / "r/d2");
  Make_directory(dir / "r/d2/e");
  Make_directory(dir / "r/d2/e/h");
  Write_file(dir / "r/d2/e/h/z", "");
  Write_file(dir / "r/k", "");
  // e: [h/z, h]; d2: [e/h, e/h/z, e]; r: reversed subtrees in front of d1 and d2.
  EXPECT_EQ(List_dir_rec(dir / "r"), (DirListing{{"d1/y", "file"},
                                                 {"d1/x", "file"},
                                                 {"d1", "dir"},
                                                 {"d2/e", "dir"},
                                                 {"d2/e/h/z", "file"},
                                                 {"d2/e/h", "dir"},
                                                 {"d2", "dir"},
                                                 {"k", "file"}}));
}

}  // namespace
}  // namespace kcp
