#include "export/export_run.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

#include "tests/export/export_process.h"

namespace kcp {
namespace {

class RunExportOnResults : public ::testing::Test {
 protected:
  void SetUp() override {
    results_ = testing::Make_results(dir_, "t.links", "a b\nb c\na c\nc d\n", "t_results");
    ASSERT_FALSE(results_.empty());
  }
  testing::Test_dir dir_;
  std::string results_;
};

TEST_F(RunExportOnResults, FailsWhenStandardOutputCannotBeWritten) {
  std::ostream broken(nullptr);
  std::ostringstream err;
  EXPECT_EQ(Run_export({results_, "-f", "csv"}, broken, err), 1);
  EXPECT_EQ(err.str(), "varnel-export: could not write to standard output\n");
}

TEST_F(RunExportOnResults, ReportsAFullDeviceAndLeavesTheDeviceAlone) {
  if (!std::filesystem::exists("/dev/full")) GTEST_SKIP() << "this system has no /dev/full";
  std::ostringstream out;
  std::ostringstream err;
  EXPECT_EQ(Run_export({results_, "-f", "graphml", "-o", "/dev/full"}, out, err), 1);
  EXPECT_EQ(err.str(), "varnel-export: could not write /dev/full\n");
  EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));
  EXPECT_EQ(out.str(), "");
}

TEST_F(RunExportOnResults, NamesTheProgramInsteadOfAnErrorPrefix) {
  std::ostringstream out;
  std::ostringstream err;
  EXPECT_EQ(Run_export({results_, "-f", "csv", "-k", "5"}, out, err), 1);
  EXPECT_TRUE(err.str().starts_with("varnel-export: ")) << err.str();
  EXPECT_EQ(err.str().find("ERROR"), std::string::npos) << err.str();
  EXPECT_EQ(err.str().find('\n'), err.str().size() - 1) << "one line: " << err.str();
}

}  // namespace
}  // namespace kcp
