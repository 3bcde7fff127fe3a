// Has networkx read the GraphML and JSON exports of real runs and compares them, in
// check_networkx.py, with the results files parsed there independently.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "tests/export/export_process.h"

namespace kcp {
namespace {

using testing::Make_results;
using testing::ProcessResult;
using testing::Test_dir;

std::string Script() {
  return (std::filesystem::path(__FILE__).parent_path() / "check_networkx.py").string();
}

bool Networkx_available() {
  return std::system("python3 -c 'import networkx' >/dev/null 2>&1") == 0;
}

void Check_with_networkx(const Test_dir& dir, const std::string& results) {
  ASSERT_FALSE(results.empty()) << "varnel made no results directory";
  const ProcessResult graphml =
      testing::Run_export(dir, {results, "-f", "graphml", "-o", dir / "net.graphml"});
  ASSERT_EQ(graphml.status, 0) << graphml.err;
  const ProcessResult json =
      testing::Run_export(dir, {results, "-f", "json", "-o", dir / "net.json"});
  ASSERT_EQ(json.status, 0) << json.err;
  const ProcessResult check = testing::Run_program(
      dir, "python3", {Script(), results, dir / "net.graphml", dir / "net.json"});
  EXPECT_EQ(check.status, 0) << check.out << check.err;
}

#define SKIP_WITHOUT_NETWORKX()                                                        \
  if (!Networkx_available()) {                                                         \
    GTEST_SKIP() << "python3 -c 'import networkx' failed: networkx is not installed, " \
                    "so the exports are not read back";                                \
  }

TEST(NetworkxCheck, LesMiserablesReadsBackAsItsResults) {
  SKIP_WITHOUT_NETWORKX();
  const std::string data = std::string(VARNEL_SHARED_DATA) + "/lesmis.links";
  if (testing::Read_file(data).empty()) GTEST_SKIP() << "no shared data at " << data;
  Test_dir dir;
  Check_with_networkx(dir, Make_results(dir, "lesmis.links", testing::Read_file(data), "les"));
}

TEST(NetworkxCheck, ApproximateCommunitiesReadBack) {
  SKIP_WITHOUT_NETWORKX();
  const std::string data = std::string(VARNEL_SHARED_DATA) + "/lesmis.links";
  if (testing::Read_file(data).empty()) GTEST_SKIP() << "no shared data at " << data;
  Test_dir dir;
  // A time limit far below the clock's resolution leaves nodes to the approximate cliques, so
  // the communities are numbered "-0", "-1", ... (how many depends on the clock).
  Check_with_networkx(
      dir, Make_results(dir, "lesmis.links", testing::Read_file(data), "t", {"-t", "0.0000001"}));
}

TEST(NetworkxCheck, IntensityRunAtOneKReadsBack) {
  SKIP_WITHOUT_NETWORKX();
  const std::string data = std::string(VARNEL_SHARED_DATA) + "/lesmis.links";
  if (testing::Read_file(data).empty()) GTEST_SKIP() << "no shared data at " << data;
  Test_dir dir;
  testing::Write_file(dir / "lesmis.links", testing::Read_file(data));
  // The intensity threshold is appended to the results directory's name.
  const ProcessResult run = testing::Run_program(
      dir, VARNEL_BINARY,
      {"-i", dir / "lesmis.links", "-o", dir / "i", "-w", "0", "-I", "2", "-k", "4"});
  ASSERT_EQ(run.status, 0) << run.out;
  Check_with_networkx(dir, dir / "i-w-th2.000000");
}

TEST(NetworkxCheck, AwkwardNamesAndSummedWeightsReadBack) {
  SKIP_WITHOUT_NETWORKX();
  Test_dir dir;
  const std::string links =
      "a b 0.5\nb a 0.25\na c 2\nb c 1\nc d 3e6\nc R&D 1\nd R&D 1\n"
      "x\"y d 1\nx\"y R&D 1\nx\"y c 1\ncaf\xE9 <q> 4\n<q> it's 1\n";
  Check_with_networkx(dir, Make_results(dir, "w.links", links, "w_results", {"-w", "0"}));
}

TEST(NetworkxCheck, DirectedRunReadsBack) {
  SKIP_WITHOUT_NETWORKX();
  Test_dir dir;
  Check_with_networkx(dir, Make_results(dir, "d.links", "a b\nb c\na c\nb a\nc d\nb d\na d\nd e\n",
                                        "d_results", {"-D"}));
}

}  // namespace
}  // namespace kcp
