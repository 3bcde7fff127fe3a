#include "fsutil/result_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>

#include "core/xerror_msg.h"
#include "tests/fsutil/console_session.h"
#include "tests/support/test_dir.h"

namespace kcp {
namespace {

using testing::Exists;
using testing::Is_dir;
using testing::Read_file;
using testing::Test_dir;
using testing::Write_file;

TEST(ResultFile, CreatesTheDirectoryAndWritesExactly) {
  Test_dir dir;
  Result_file file(dir / "res/k=3", "communities");
  file << "# header\n" << 12 << ' ' << "x y \n";
  file.out() << "last\n";
  file.Close();
  EXPECT_TRUE(Is_dir(dir / "res/k=3"));
  EXPECT_EQ(Read_file(dir / "res/k=3/communities"), "# header\n12 x y \nlast\n");
}

TEST(ResultFile, TruncatesAnOldFileAndKeepsItsNeighbours) {
  Test_dir dir;
  ASSERT_EQ(mkdir((dir / "res").c_str(), 0755), 0);
  Write_file(dir / "res/graph", "a much longer old content\n");
  Write_file(dir / "res/other", "other");
  Result_file file(dir / "res", "graph");
  file << "new\n";
  file.Close();
  EXPECT_EQ(Read_file(dir / "res/graph"), "new\n");
  EXPECT_EQ(Read_file(dir / "res/other"), "other");
}

TEST(ResultFile, FileInPlaceOfTheDirectoryIsMovedAside) {
  Test_dir dir;
  Write_file(dir / "res", "old");
  Result_file file(dir / "res", "graph");
  file << "g\n";
  file.Close();
  EXPECT_EQ(Read_file(dir / "res1"), "old");
  EXPECT_EQ(Read_file(dir / "res/graph"), "g\n");
}

TEST(ResultFile, LargeOutputBeyondTheBufferIsComplete) {
  Test_dir dir;
  std::string expected;
  Result_file file(dir.path(), "big");
  for (int i = 0; i < 300000; ++i) {
    file << i << " \n";
    expected += std::to_string(i) + " \n";
  }
  file.Close();
  ASSERT_GT(expected.size(), std::size_t{1} << 20);
  EXPECT_EQ(Read_file(dir / "big"), expected);
}

TEST(ResultFile, FailedWriteThrowsOnCloseNamingTheFile) {
  Result_file file("/dev/full");
  file << "no room for this\n";
  try {
    file.Close();
    FAIL() << "no exception";
  } catch (const Xerror_msg& e) {
    const std::string message = e.what();
    EXPECT_TRUE(message.starts_with("ERROR")) << message;
    EXPECT_NE(message.find("/dev/full"), std::string::npos) << message;
  }
  EXPECT_NO_THROW(file.Close());
}

TEST(ResultFile, FailedWriteWithoutCloseDoesNotThrowFromTheDestructor) {
  EXPECT_NO_THROW({
    Result_file file("/dev/full");
    file << "lost\n";
  });
}

TEST(ResultFile, UnopenablePathIsSilentlySkipped) {
  Test_dir dir;
  {
    Result_file file(dir / "missing/out.txt");
    file << "ignored\n";
    EXPECT_NO_THROW(file.Close());
  }
  EXPECT_FALSE(Exists(dir / "missing"));
  ASSERT_EQ(mkdir((dir / "d").c_str(), 0755), 0);
  Result_file onto_dir(dir / "d");
  onto_dir << "ignored\n";
  EXPECT_NO_THROW(onto_dir.Close());
  EXPECT_TRUE(Is_dir(dir / "d"));
}

TEST(ResultFile, DirectoryThatCannotBeMadeThrows) {
  Test_dir dir;
  Write_file(dir / "f", "");
  EXPECT_THROW(Result_file(dir / "f/res", "graph"), Xerror_msg);
}

}  // namespace
}  // namespace kcp
