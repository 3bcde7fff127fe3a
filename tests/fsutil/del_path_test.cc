#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>

#include "core/xerror_msg.h"
#include "fsutil/dir_prepare.h"
#include "tests/fsutil/console_session.h"
#include "tests/support/test_dir.h"

namespace kcp {
namespace {

using testing::Console_session;
using testing::Exists;
using testing::kNoEntry;
using testing::kStopped;
using testing::Make_directory;
using testing::Message_of;
using testing::Read_file;
using testing::Test_dir;
using testing::Write_file;

void Make_tree(const std::string& path) {
  Make_directory(path);
  Make_directory(path + "/sub");
  Write_file(path + "/sub/f", "f");
}

std::string Dialogue(const std::string& header, const std::string& path, const std::string& what) {
  return header + "\nThe path " + path + what +
         "\nDo you wish to \n delete (d),\n rename (r), or stop (any other key)?\n";
}

TEST(DelFile, UnknownPolicyAndMissingPath) {
  Test_dir dir;
  Write_file(dir / "f", "");
  EXPECT_EQ(Message_of([&] { Del_file(dir / "f", "keep"); }),
            "ERROR: Del_file() called with unknown flag 'keep'.");
  EXPECT_TRUE(Exists(dir / "f"));
  EXPECT_EQ(Message_of([&] { Del_file(dir / "none", "force"); }),
            "ERROR: Del_file() called on " + (dir / "none") + " and \n" + kNoEntry);
}

TEST(DelFile, FileIsUnlinkedUnderEveryPolicy) {
  Test_dir dir;
  Console_session console("");
  for (const std::string policy : {"force", "silent", "interactive"}) {
    Write_file(dir / "f", "x");
    Del_file(dir / "f", policy);
    EXPECT_FALSE(Exists(dir / "f")) << policy;
  }
  Write_file(dir / "f", "x");
  Del_file(dir / "f");
  EXPECT_FALSE(Exists(dir / "f"));
  EXPECT_EQ(console.Output(), "");
}

TEST(DelFile, DirectoryIsDeletedByForceAndMovedAsideBySilent) {
  Test_dir dir;
  Make_tree(dir / "t");
  Del_file(dir / "t", "force");
  EXPECT_FALSE(Exists(dir / "t"));

  Make_tree(dir / "t");
  Del_file(dir / "t", "silent");
  EXPECT_FALSE(Exists(dir / "t"));
  EXPECT_EQ(Read_file(dir / "t1/sub/f"), "f");
}

TEST(DelFileInteract, AsksAboutADirectory) {
  Test_dir dir;
  Make_tree(dir / "t");
  {
    Console_session console("d");
    Del_file(dir / "t");
    EXPECT_EQ(console.Output(), Dialogue("Del_file():", dir / "t", "  is a directory."));
    EXPECT_FALSE(Exists(dir / "t"));
  }
  Make_tree(dir / "t");
  {
    Console_session console("r " + (dir / "renamed"));
    Del_file(dir / "t", "interactive");
    EXPECT_EQ(console.Output(), Dialogue("Del_file():", dir / "t", "  is a directory.") +
                                    "Please type in the new name:\n");
    EXPECT_FALSE(Exists(dir / "t"));
    EXPECT_EQ(Read_file(dir / "renamed/sub/f"), "f");
  }
  Make_tree(dir / "t");
  for (const std::string input : {"D", "", "r"}) {
    Console_session console(input);
    EXPECT_EQ(Message_of([&] { Del_file_interact(dir / "t"); }), kStopped) << input;
    EXPECT_EQ(Read_file(dir / "t/sub/f"), "f");
  }
}

TEST(DelDir, UnknownPolicyAndMissingPath) {
  Test_dir dir;
  EXPECT_EQ(Message_of([&] { Del_dir(dir / "d", ""); }),
            "ERROR: Del_dir() called with unknown flag ''.");
  const std::string message = Message_of([&] { Del_dir(dir / "none", "silent"); });
  EXPECT_TRUE(message.starts_with("ERROR: Del_dir() called on " + (dir / "none"))) << message;
}

TEST(DelDir, DirectoryIsDeletedUnderEveryPolicy) {
  Test_dir dir;
  Console_session console("");
  for (const std::string policy : {"force", "silent", "interactive"}) {
    Make_tree(dir / "t");
    Del_dir(dir / "t", policy);
    EXPECT_FALSE(Exists(dir / "t")) << policy;
  }
  EXPECT_FALSE(Exists(dir / "t1"));
  EXPECT_EQ(console.Output(), "");
}

TEST(DelDir, FileIsUnlinkedByForceAndMovedAsideBySilent) {
  Test_dir dir;
  Write_file(dir / "f", "x");
  Del_dir(dir / "f", "force");
  EXPECT_FALSE(Exists(dir / "f"));

  Write_file(dir / "f", "x");
  Del_dir(dir / "f", "silent");
  EXPECT_FALSE(Exists(dir / "f"));
  EXPECT_EQ(Read_file(dir / "f1"), "x");
}

TEST(DelDirInteract, AsksAboutANonDirectory) {
  Test_dir dir;
  Write_file(dir / "f", "x");
  {
    Console_session console("\n d\n");
    Del_dir(dir / "f");
    EXPECT_EQ(console.Output(), Dialogue("Del_dir():", dir / "f", "  is not a directory."));
    EXPECT_FALSE(Exists(dir / "f"));
  }
  Write_file(dir / "f", "x");
  Write_file(dir / "g", "g");
  {
    // The new name is taken, so the rename dialogue follows; 'o' overwrites.
    Console_session console("r " + (dir / "g") + " o");
    Del_dir(dir / "f", "interactive");
    EXPECT_EQ(console.Output(),
              Dialogue("Del_dir():", dir / "f", "  is not a directory.") +
                  "Please type in the new name:\nRename_path():\nThe specified new path " +
                  (dir / "g") +
                  " already exists.\nDo you wish to \n overwrite (o),\n change the destination "
                  "path (c),\n or stop (any other key)?\n");
    EXPECT_EQ(Read_file(dir / "g"), "x");
  }
  Write_file(dir / "f", "x");
  Console_session console("x");
  EXPECT_EQ(Message_of([&] { Del_dir_interact(dir / "f"); }), kStopped);
  EXPECT_EQ(Read_file(dir / "f"), "x");
}

TEST(DelPath, DeletesWhateverIsThere) {
  Test_dir dir;
  Make_tree(dir / "t");
  Del_path(dir / "t");
  EXPECT_FALSE(Exists(dir / "t"));
  Write_file(dir / "f", "");
  Del_path(dir / "f");
  EXPECT_FALSE(Exists(dir / "f"));
  const std::string message = Message_of([&] { Del_path(dir / "none"); });
  EXPECT_TRUE(message.starts_with("ERROR: Del_path() called on " + (dir / "none"))) << message;
}

}  // namespace
}  // namespace kcp
