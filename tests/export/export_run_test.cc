#include "export/export_run.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

#include "tests/export/export_process.h"

namespace kcp {
namespace {

TEST(ExportRun, ReportsOutputThatCannotBeWrittenWithStatusOne) {
  testing::Test_dir dir;
  const std::string results = testing::Make_results(dir, "t.links", "a b\nb c\na c\n", "t_results");
  ASSERT_FALSE(results.empty());
  std::ostream broken(nullptr);
  std::ostringstream out;
  std::ostringstream err;
  EXPECT_EQ(Run_export({results, "-f", "csv"}, broken, err), 1);
  EXPECT_EQ(err.str(), "varnel-export: could not write to standard output\n");

  if (!std::filesystem::exists("/dev/full")) GTEST_SKIP() << "this system has no /dev/full";
  err.str("");
  EXPECT_EQ(Run_export({results, "-f", "graphml", "-o", "/dev/full"}, out, err), 1);
  EXPECT_EQ(err.str(), "varnel-export: could not write /dev/full\n");
  // The device is left as it is.
  EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));
  EXPECT_EQ(out.str(), "");
}

}  // namespace
}  // namespace kcp
