#include "cli/params_record.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "core/xerror_msg.h"
#include "tests/support/test_dir.h"

namespace kcp {
namespace {

using testing::Read_file;
using testing::Test_dir;
using testing::Write_file;

const std::string kAlap =
    " from /data/net.txt\n"
    "# at no lower link weight threshold,\n"
    "# and at no upper link weight threshold.\n"
    "# Links were treated as undirected.\n"
    "# No time limit was set for the clique search.\n"
    "# The communities were extracted solely at k=4\n.";

void Expect_refused(const std::string& dir) {
  try {
    Check_out_dir(dir);
    FAIL() << "no exception for " << dir;
  } catch (const Xerror_msg& error) {
    EXPECT_STREQ(error.what(), "ERROR: the output directory already exists and it is non-empty.\n");
  }
}

TEST(ParamsRecord, OutDirMayBeMissingEmptyOrAFile) {
  Test_dir tmp;
  EXPECT_NO_THROW(Check_out_dir(tmp / "net.txt_files"));
  std::filesystem::create_directory(tmp / "empty");
  EXPECT_NO_THROW(Check_out_dir(tmp / "empty"));
  Write_file(tmp / "plain", "x");
  EXPECT_NO_THROW(Check_out_dir(tmp / "plain"));
}

TEST(ParamsRecord, OutDirWithAnyEntryIsRefused) {
  Test_dir tmp;
  std::filesystem::create_directories(tmp / "with_file");
  Write_file(tmp / "with_file/input_params.txt", "");
  Expect_refused(tmp / "with_file");
  std::filesystem::create_directories(tmp / "with_dir/k=3");
  Expect_refused(tmp / "with_dir");
  std::filesystem::create_directories(tmp / "hidden");
  Write_file(tmp / "hidden/.x", "");
  Expect_refused(tmp / "hidden");
}

TEST(ParamsRecord, WritesThePhraseAndTheBaseTextExactly) {
  Test_dir tmp;
  const std::string dir = tmp / "net.txt_files";
  Kiir_params(dir, kAlap);
  EXPECT_EQ(Read_file(dir + "/input_params.txt"), "# Varnel was run on links taken" + kAlap);
  // The record itself makes the directory non-empty for a second run.
  Expect_refused(dir);
}

TEST(ParamsRecord, TruncatesAnOlderRecord) {
  Test_dir tmp;
  const std::string dir = tmp / "out";
  std::filesystem::create_directory(dir);
  Write_file(dir + "/input_params.txt", std::string(500, 'z'));
  Kiir_params(dir, " from /a\n");
  EXPECT_EQ(Read_file(dir + "/input_params.txt"), "# Varnel was run on links taken from /a\n");
}

TEST(ParamsRecord, MovesAFileInTheWayAsideAndCreatesTheDirectory) {
  Test_dir tmp;
  const std::string dir = tmp / "net.txt_files";
  Write_file(dir, "not a directory");
  Kiir_params(dir, kAlap);
  EXPECT_TRUE(std::filesystem::is_directory(dir));
  EXPECT_EQ(Read_file(dir + "/input_params.txt"), "# Varnel was run on links taken" + kAlap);
  EXPECT_EQ(Read_file(dir + "1"), "not a directory");
}

}  // namespace
}  // namespace kcp
