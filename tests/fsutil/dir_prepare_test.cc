#include "fsutil/dir_prepare.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>

#include "core/xerror_msg.h"
#include "tests/fsutil/console_session.h"
#include "tests/support/test_dir.h"

namespace kcp {
namespace {

using testing::Console_session;
using testing::Exists;
using testing::Is_dir;
using testing::Is_regular;
using testing::kStopped;
using testing::Read_file;
using testing::Test_dir;
using testing::Write_file;

std::string Dir_dialogue(const std::string& path) {
  return "Dir_prepare():\nThe " + path +
         " is already a dir, and it is not empty.\n"
         "Do you wish to \n keep the contents (k),\n clear it (c),\n or stop (any other key)?\n";
}

std::string File_dialogue(const std::string& path, const std::string& type, bool empty) {
  return "Dir_prepare():\nThe " + path + " is already a " + type + ", and it is" +
         (empty ? " empty." : " not empty.") +
         "\nDo you wish to \n overwrite it (o),\n rename it (r),\n or stop (any other key)?\n";
}

bool Is_empty_dir(const std::string& path) {
  return Is_dir(path) && std::filesystem::is_empty(path);
}

void Make_tree(const Test_dir& dir) {
  ASSERT_EQ(mkdir((dir / "out").c_str(), 0755), 0);
  ASSERT_EQ(mkdir((dir / "out/a").c_str(), 0755), 0);
  ASSERT_EQ(mkdir((dir / "out/a/b").c_str(), 0755), 0);
  Write_file(dir / "out/a/b/f", "f");
}

TEST(DirPrepare, UnknownPolicyThrowsAndChangesNothing) {
  Test_dir dir;
  try {
    Dir_prepare(dir / "out", "tidy");
    FAIL() << "no exception";
  } catch (const Xerror_msg& e) {
    EXPECT_STREQ(e.what(), "ERROR: Dir_prepare() called with unknown flag 'tidy'");
  }
  EXPECT_FALSE(Exists(dir / "out"));
}

TEST(DirPrepare, MissingPathIsCreatedWithItsParentsUnderEveryPolicy) {
  Test_dir dir;
  Console_session console("");
  for (const std::string policy : {"keep", "clear", "interactive"}) {
    const std::string path = dir / (policy + "/x/y");
    Dir_prepare(path, policy);
    EXPECT_TRUE(Is_dir(path)) << policy;
  }
  EXPECT_EQ(console.Output(), "");
}

TEST(DirPrepare, KeepLeavesAnExistingDirectoryAsItIs) {
  Test_dir dir;
  Make_tree(dir);
  Write_file(dir / "out/top.txt", "top");
  Dir_prepare(dir / "out", "keep");
  EXPECT_EQ(Read_file(dir / "out/top.txt"), "top");
  EXPECT_EQ(Read_file(dir / "out/a/b/f"), "f");
  EXPECT_FALSE(Exists(dir / "out1"));
}

TEST(DirPrepare, KeepMovesAFileInTheWayToTheFirstFreeNumber) {
  Test_dir dir;
  Write_file(dir / "out", "old results");
  Write_file(dir / "out1", "taken");
  Dir_prepare(dir / "out", "keep");
  EXPECT_TRUE(Is_dir(dir / "out"));
  EXPECT_EQ(Read_file(dir / "out1"), "taken");
  EXPECT_EQ(Read_file(dir / "out2"), "old results");
  EXPECT_FALSE(Exists(dir / "out3"));

  Write_file(dir / "new", "");
  Dir_prepare(dir / "new", "keep");
  EXPECT_TRUE(Is_dir(dir / "new"));
  EXPECT_TRUE(Is_regular(dir / "new1"));
}

TEST(DirPrepare, ClearEmptiesADeepTreeOrRemovesAFileInTheWay) {
  Test_dir dir;
  Make_tree(dir);
  Write_file(dir / "out/top.txt", "top");
  ASSERT_EQ(mkdir((dir / "out/a/b/c").c_str(), 0755), 0);
  ASSERT_EQ(mkdir((dir / "out/a/b/c/d").c_str(), 0755), 0);
  Write_file(dir / "out/a/b/c/d/deep", "");
  ASSERT_EQ(mkdir((dir / "out/z").c_str(), 0755), 0);
  Dir_prepare(dir / "out", "clear");
  EXPECT_TRUE(Is_empty_dir(dir / "out"));

  Write_file(dir / "file", "old");
  Dir_prepare(dir / "file", "clear");
  EXPECT_TRUE(Is_empty_dir(dir / "file"));
  EXPECT_FALSE(Exists(dir / "file1"));
}

TEST(DirPrepare, FailureBelowAFileIsReportedByMakeDir) {
  Test_dir dir;
  Write_file(dir / "f", "");
  const std::string path = dir / "f/out";
  try {
    Dir_prepare(path, "keep");
    FAIL() << "no exception";
  } catch (const Xerror_msg& e) {
    EXPECT_EQ(std::string(e.what()), "ERROR: Make_dir() called with " + path +
                                         " and \nA component of the path is not a directory.");
  }
}

TEST(DirPrepareInteract, NonEmptyDirectoryIsKeptOnKClearedOnCAndAnythingElseStops) {
  Test_dir dir;
  Make_tree(dir);
  {
    // Blanks and newlines before the answer are skipped; the rest of the line stays unread.
    Console_session console("\n  \tk rest\nnext line");
    Dir_prepare(dir / "out", "interactive");
    EXPECT_EQ(console.Output(), Dir_dialogue(dir / "out"));
    EXPECT_EQ(console.Unread(), " rest\nnext line");
  }
  // Answers are case-sensitive; the end of the input stops too.
  for (const std::string answer : {"K", "C", "x", "o", " \n "}) {
    SCOPED_TRACE(answer);
    Console_session console(answer);
    try {
      Dir_prepare(dir / "out");
      FAIL() << "no exception";
    } catch (const Xerror_msg& e) {
      EXPECT_EQ(e.what(), kStopped);
    }
    EXPECT_EQ(console.Output(), Dir_dialogue(dir / "out"));
  }
  EXPECT_EQ(Read_file(dir / "out/a/b/f"), "f");
  Console_session console("c");
  Dir_prepare(dir / "out", "interactive");
  EXPECT_TRUE(Is_empty_dir(dir / "out"));
}

TEST(DirPrepareInteract, EmptyFileIsOverwrittenOnO) {
  Test_dir dir;
  Write_file(dir / "out", "");
  Console_session console("o\n");
  Dir_prepare(dir / "out", "interactive");
  EXPECT_EQ(console.Output(), File_dialogue(dir / "out", "file", true));
  EXPECT_TRUE(Is_empty_dir(dir / "out"));
  EXPECT_FALSE(Exists(dir / "out1"));
}

TEST(DirPrepareInteract, FileIsRenamedToTheTypedPathOnR) {
  Test_dir dir;
  Write_file(dir / "out", "old");
  const std::string moved = dir / "moved.txt";
  Console_session console("r\n  " + moved + "  \n");
  Dir_prepare(dir / "out", "interactive");
  EXPECT_EQ(console.Output(),
            File_dialogue(dir / "out", "file", false) + "Please type in the new path:\n");
  EXPECT_EQ(Read_file(moved), "old");
  EXPECT_TRUE(Is_dir(dir / "out"));
}

TEST(DirPrepareInteract, RenamingOntoAnExistingPathAsksAgain) {
  Test_dir dir;
  Write_file(dir / "out", "old");
  Write_file(dir / "taken", "taken");
  Console_session console("r " + (dir / "taken") + " o");
  Dir_prepare(dir / "out", "interactive");
  EXPECT_EQ(console.Output(), File_dialogue(dir / "out", "file", false) +
                                  "Please type in the new path:\n"
                                  "Rename_path():\nThe specified new path " +
                                  (dir / "taken") +
                                  " already exists.\nDo you wish to \n overwrite (o),\n change "
                                  "the destination path (c),\n or stop (any other key)?\n");
  EXPECT_EQ(Read_file(dir / "taken"), "old");
  EXPECT_TRUE(Is_dir(dir / "out"));
}

TEST(DirPrepareInteract, FileStaysWhenTheUserStops) {
  Test_dir dir;
  Write_file(dir / "out", "old");
  for (const std::string input : {"O", "k", "", "r"}) {
    Console_session console(input);
    try {
      Dir_prepare(dir / "out", "interactive");
      FAIL() << "'" << input << "': no exception";
    } catch (const Xerror_msg& e) {
      EXPECT_EQ(e.what(), kStopped) << input;
    }
    EXPECT_EQ(Read_file(dir / "out"), "old");
  }
}

TEST(DirPrepareInteract, DialogueNamesTheTypeAndEmptinessGiven) {
  Test_dir dir;
  {
    Console_session console("x");
    EXPECT_THROW(Dir_prepare_interact(dir / "link", "symlink", false), Xerror_msg);
    EXPECT_EQ(console.Output(), File_dialogue(dir / "link", "symlink", false));
  }
  Console_session console("k");
  ASSERT_EQ(mkdir((dir / "d").c_str(), 0755), 0);
  Dir_prepare_interact(dir / "d", "dir", true);
  EXPECT_EQ(console.Output(), "Dir_prepare():\nThe " + (dir / "d") +
                                  " is already a dir, and it is empty.\n"
                                  "Do you wish to \n keep the contents (k),\n clear it (c),\n"
                                  " or stop (any other key)?\n");
}

}  // namespace
}  // namespace kcp
