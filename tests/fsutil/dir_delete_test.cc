#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>

#include "core/xerror_msg.h"
#include "fsutil/dir_prepare.h"
#include "tests/fsutil/console_session.h"
#include "tests/support/test_dir.h"

namespace kcp {
namespace {

using testing::Exists;
using testing::kNoEntry;
using testing::Make_directory;
using testing::Message_of;
using testing::Test_dir;
using testing::Write_file;

TEST(DeleteDir, RemovesTreesWhoseListingPutsADirectoryBeforeItsInnerOnes) {
  Test_dir dir;
  // The recursive listing of r puts d2/e before d2/e/h, and q/w/e before q/w/e/r.
  for (const std::string sub : {"", "/d2", "/d2/e", "/d2/e/h", "/q", "/q/w", "/q/w/e", "/q/w/e/r",
                                "/q/w/e/r/t", "/empty"}) {
    Make_directory(dir / ("r" + sub));
  }
  Write_file(dir / "r/d2/e/h/z", "");
  Write_file(dir / "r/k", "");
  Delete_dir(dir / "r");
  EXPECT_FALSE(Exists(dir / "r"));
}

TEST(DeleteDir, LinksInsideAreUnlinkedNotFollowed) {
  Test_dir dir;
  Make_directory(dir / "keep");
  Write_file(dir / "keep/precious", "p");
  Make_directory(dir / "out");
  Write_file(dir / "other", "o");
  ASSERT_EQ(symlink((dir / "other").c_str(), (dir / "out/to_file").c_str()), 0);
  Delete_dir(dir / "out");
  EXPECT_FALSE(Exists(dir / "out"));
  EXPECT_EQ(testing::Read_file(dir / "other"), "o");
  EXPECT_EQ(testing::Read_file(dir / "keep/precious"), "p");
}

TEST(DeleteDir, MissingDirectoryIsReportedByTheListing) {
  Test_dir dir;
  EXPECT_EQ(Message_of([&] { Delete_dir(dir / "none"); }),
            "ERROR: List_dir() called on " + (dir / "none") +
                " and\nA component of the path file_name does not exist.");
}

TEST(UnlinkFile, RemovesAFileFailureTextHasNoBlankBeforeAnd) {
  Test_dir dir;
  Write_file(dir / "f", "x");
  Unlink_file(dir / "f");
  EXPECT_FALSE(Exists(dir / "f"));
  EXPECT_EQ(Message_of([&] { Unlink_file(dir / "none"); }),
            "ERROR: Unlink_file() called on '" + (dir / "none") + "'and \n" + kNoEntry);
  Make_directory(dir / "d");
  EXPECT_EQ(Message_of([&] { Unlink_file(dir / "d"); }),
            "ERROR: Unlink_file() called on '" + (dir / "d") +
                "'and \nnewpath is an existing directory, but oldpath is not a directory.");
}

TEST(RemoveDir, RemovesOnlyEmptyDirectories) {
  Test_dir dir;
  Make_directory(dir / "d");
  Write_file(dir / "d/f", "");
  EXPECT_EQ(Message_of([&] { Remove_dir(dir / "d"); }),
            "ERROR: Remove_dir() called on '" + (dir / "d") +
                "' and\nnewpath is a non-empty directory, i.e., contains entries other than . and "
                ".. .");
  EXPECT_EQ(Message_of([&] { Remove_dir(dir / "d/f"); }),
            "ERROR: Remove_dir() called on '" + (dir / "d/f") +
                "' and\nA component of the path is not a directory.");
  Unlink_file(dir / "d/f");
  Remove_dir(dir / "d");
  EXPECT_FALSE(Exists(dir / "d"));
}

}  // namespace
}  // namespace kcp
