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
using testing::Is_dir;
using testing::kNoEntry;
using testing::kStopped;
using testing::Make_directory;
using testing::Message_of;
using testing::Read_file;
using testing::Test_dir;
using testing::Write_file;

std::string Rename_dialogue(const std::string& to) {
  return "Rename_path():\nThe specified new path " + to +
         " already exists.\nDo you wish to \n overwrite (o),\n change the destination path (c),"
         "\n or stop (any other key)?\n";
}

TEST(RenameAuto, AppendsTheFirstFreeNumberWithoutSeparator) {
  Test_dir dir;
  Write_file(dir / "out", "a");
  Rename_auto(dir / "out");
  EXPECT_FALSE(Exists(dir / "out"));
  EXPECT_EQ(Read_file(dir / "out1"), "a");

  Write_file(dir / "out", "b");
  Make_directory(dir / "out2");
  Write_file(dir / "out4", "four");
  Rename_auto(dir / "out");
  EXPECT_EQ(Read_file(dir / "out3"), "b");
  EXPECT_EQ(Read_file(dir / "out4"), "four");

  Make_directory(dir / "res");
  Write_file(dir / "res/f", "f");
  Rename_auto(dir / "res");
  EXPECT_EQ(Read_file(dir / "res1/f"), "f");
}

TEST(RenameAuto, MissingPathFailsInTheRename) {
  Test_dir dir;
  EXPECT_EQ(Message_of([&] { Rename_auto(dir / "none"); }),
            "ERROR: Rename_the_path() called with " + (dir / "none") + " and " + (dir / "none1") +
                " and \n" + kNoEntry);
}

TEST(RenameThePath, FailuresCarryTheErrnoSentence) {
  Test_dir dir;
  Make_directory(dir / "d");
  Make_directory(dir / "full");
  Write_file(dir / "full/x", "");
  Write_file(dir / "f", "");
  EXPECT_EQ(Message_of([&] { Rename_the_path(dir / "d", dir / "d/sub"); }),
            "ERROR: Rename_the_path() called with " + (dir / "d") + " and " + (dir / "d/sub") +
                " and \nan attempt was made to make a directory a subdirectory of itself.");
  EXPECT_EQ(Message_of([&] { Rename_the_path(dir / "f", dir / "d"); }),
            "ERROR: Rename_the_path() called with " + (dir / "f") + " and " + (dir / "d") +
                " and \nnewpath is an existing directory, but oldpath is not a directory.");
  EXPECT_EQ(Message_of([&] { Rename_the_path(dir / "d", dir / "f"); }),
            "ERROR: Rename_the_path() called with " + (dir / "d") + " and " + (dir / "f") +
                " and \nA component of the path is not a directory.");
}

TEST(RenamePath, UnknownPolicyHasNoBlankBeforeTheQuote) {
  Test_dir dir;
  Write_file(dir / "a", "");
  EXPECT_EQ(Message_of([&] { Rename_path(dir / "a", dir / "b", "tidy"); }),
            "ERROR: Rename_path() called with unknown flag'tidy'");
  EXPECT_TRUE(Exists(dir / "a"));
}

TEST(RenamePath, MissingSourceIsNamed) {
  Test_dir dir;
  for (const std::string policy : {"force", "silent", "interactive"}) {
    const std::string message = Message_of([&] { Rename_path(dir / "none", dir / "b", policy); });
    EXPECT_TRUE(message.starts_with("ERROR: Rename_path() called on " + (dir / "none"))) << message;
    EXPECT_TRUE(message.ends_with(kNoEntry)) << message;
  }
}

TEST(RenamePath, FreeTargetIsTakenSilentlyATakenOneReplacedOrMovedAside) {
  Test_dir dir;
  Console_session console("");
  Write_file(dir / "a", "a");
  Rename_path(dir / "a", dir / "b", "force");
  Rename_path(dir / "b", dir / "c", "silent");
  Rename_path(dir / "c", dir / "d", "interactive");
  Rename_path(dir / "d", dir / "e");
  EXPECT_EQ(Read_file(dir / "e"), "a");
  EXPECT_EQ(console.Output(), "");

  Write_file(dir / "a", "new");
  Rename_path(dir / "a", dir / "e", "force");
  EXPECT_EQ(Read_file(dir / "e"), "new");
  EXPECT_FALSE(Exists(dir / "a"));
  EXPECT_FALSE(Exists(dir / "e1"));

  Write_file(dir / "a", "newer");
  Write_file(dir / "e1", "older");
  Rename_path(dir / "a", dir / "e", "silent");
  EXPECT_EQ(Read_file(dir / "e"), "newer");
  EXPECT_EQ(Read_file(dir / "e1"), "older");
  EXPECT_EQ(Read_file(dir / "e2"), "new");
}

TEST(RenameInteract, OOverwrites) {
  Test_dir dir;
  Write_file(dir / "a", "new");
  Write_file(dir / "b", "old");
  Console_session console(" o\n");
  Rename_path(dir / "a", dir / "b");
  EXPECT_EQ(console.Output(), Rename_dialogue(dir / "b"));
  EXPECT_EQ(Read_file(dir / "b"), "new");
}

TEST(RenameInteract, CAsksForAnotherDestinationAndMayAskAgain) {
  Test_dir dir;
  Write_file(dir / "a", "new");
  Write_file(dir / "b", "old");
  Write_file(dir / "c", "other");
  Console_session console("c\n" + (dir / "c") + "\nc " + (dir / "d") + "\n");
  Rename_path(dir / "a", dir / "b", "interactive");
  EXPECT_EQ(console.Output(),
            Rename_dialogue(dir / "b") + "Please type in the new destination path:\n" +
                Rename_dialogue(dir / "c") + "Please type in the new destination path:\n");
  EXPECT_EQ(Read_file(dir / "b"), "old");
  EXPECT_EQ(Read_file(dir / "c"), "other");
  EXPECT_EQ(Read_file(dir / "d"), "new");
  EXPECT_EQ(console.Unread(), "\n");
}

TEST(RenameInteract, AnyOtherAnswerOrEndOfInputStops) {
  Test_dir dir;
  Write_file(dir / "a", "new");
  Write_file(dir / "b", "old");
  for (const std::string input : {"O", "x", "", "c", "c\n  \n"}) {
    Console_session console(input);
    EXPECT_EQ(Message_of([&] { Rename_interact(dir / "a", dir / "b"); }), kStopped) << input;
    EXPECT_TRUE(console.Output().starts_with(Rename_dialogue(dir / "b")));
  }
  EXPECT_EQ(Read_file(dir / "a"), "new");
  EXPECT_EQ(Read_file(dir / "b"), "old");
}

}  // namespace
}  // namespace kcp
