// check_networkx.py reads the GraphML and JSON exports of real runs with networkx, the CSV with
// Python's csv module, and compares them with the results files parsed there on their own.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "tests/results/results_fixtures.h"

namespace kcp {
namespace {

// Debian's interpreter, where its networkx package installs, before whichever python3 comes first.
std::string Python() {
  return std::filesystem::exists("/usr/bin/python3") ? "/usr/bin/python3" : "python3";
}

TEST(NetworkxCheck, ExportsOfRealRunsReadBackAsTheirResults) {
  if (std::system((Python() + " -c 'import networkx' >/dev/null 2>&1").c_str()) != 0) {
    GTEST_SKIP() << Python() << " -c 'import networkx' failed: networkx is not installed, so the "
                 << "exports are not read back";
  }
  const std::string script =
      (std::filesystem::path(__FILE__).parent_path() / "check_networkx.py").string();
  const std::string lesmis = testing::Read_file(std::string(VARNEL_TEST_DATA) + "/lesmis.links");
  ASSERT_FALSE(lesmis.empty()) << VARNEL_TEST_DATA;
  // The name, the links, then the switches of each run.
  const std::vector<std::vector<std::string>> runs = {
      {"les", lesmis},
      // A time limit below the clock's resolution leaves approximate cliques and communities.
      {"approximate", lesmis, "-t", "0.0000001"},
      {"intensity", lesmis, "-w", "0", "-I", "2", "-k", "4"},
      // Awkward names (one of them Latin-1, not UTF-8) and summed weights.
      {"awkward",
       "a b 0.5\nb a 0.25\na c 2\nb c 1\nc d 3e6\nc R&D 1\nd R&D 1\nx\"y d 1\nx\"y R&D 1\n"
       "x\"y c 1\ncaf\xE9 <q> 4\n<q> it's 1\nx,y c 1\nx,y d 1\n",
       "-w", "0"},
      {"directed", "a b\nb c\na c\nb a\nc d\nb d\na d\nd e\n", "-D"},
  };
  testing::TestDir dir;
  for (const std::vector<std::string>& run : runs) {
    const std::string& name = run[0];
    SCOPED_TRACE(name);
    testing::Make_results(dir, name, run[1], {run.begin() + 2, run.end()});
    // An intensity run appends its threshold to the name of the results directory.
    const std::string results = dir / (name + (name == "intensity" ? "-w-th2.000000" : ""));
    std::vector<std::string> files;
    for (const std::string format : {"graphml", "json", "csv", "svg"}) {
      files.push_back(dir / (name + "." + format));
      const testing::ProcessResult exported =
          testing::Run_export(dir, {results, "-f", format, "-o", files.back()});
      ASSERT_EQ(exported.status, 0) << exported.err;
    }
    const testing::ProcessResult check =
        testing::Run_program(dir.path(), Python(), {script, results, files[0], files[1], files[2]});
    EXPECT_EQ(check.status, 0) << check.out << check.err;
    EXPECT_EQ(testing::Python_xml_fault(testing::Read_file(files[3])), "");
  }
}

}  // namespace
}  // namespace kcp
