// Has networkx read the GraphML and JSON exports of real runs and compares them, in
// check_networkx.py, with the results files parsed there independently.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "tests/export/export_process.h"

namespace kcp {
namespace {

using testing::ProcessResult;
using testing::Run_program;

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
  struct Case {
    std::string name;
    std::string links;
    std::vector<std::string> switches;
    std::string results_suffix;  // what the run appends to the name of the results directory
  };
  const std::vector<Case> cases = {
      {"les", lesmis, {}, ""},
      // A time limit far below the clock's resolution leaves nodes to the approximate cliques,
      // so the communities are numbered "-0", "-1", ... (how many depends on the clock).
      {"approximate", lesmis, {"-t", "0.0000001"}, ""},
      {"intensity", lesmis, {"-w", "0", "-I", "2", "-k", "4"}, "-w-th2.000000"},
      // Awkward names and summed weights.
      {"awkward",
       "a b 0.5\nb a 0.25\na c 2\nb c 1\nc d 3e6\nc R&D 1\nd R&D 1\n"
       "x\"y d 1\nx\"y R&D 1\nx\"y c 1\ncaf\xE9 <q> 4\n<q> it's 1\n",
       {"-w", "0"},
       ""},
      {"directed", "a b\nb c\na c\nb a\nc d\nb d\na d\nd e\n", {"-D"}, ""},
  };
  testing::Test_dir dir;
  for (const Case& c : cases) {
    if (c.links.empty()) continue;  // no shared data; skipped below
    SCOPED_TRACE(c.name);
    testing::Write_file(dir / (c.name + ".links"), c.links);
    std::vector<std::string> args = {"-i", dir / (c.name + ".links"), "-o", dir / c.name};
    args.insert(args.end(), c.switches.begin(), c.switches.end());
    const ProcessResult run = Run_program(dir, VARNEL_BINARY, args);
    ASSERT_EQ(run.status, 0) << run.err;
    const std::string results = dir / (c.name + c.results_suffix);
    const std::string graphml = dir / (c.name + ".graphml");
    const std::string json = dir / (c.name + ".json");
    for (const auto& [format, file] : {std::pair{"graphml", graphml}, std::pair{"json", json}}) {
      const ProcessResult exported = testing::Run_export(dir, {results, "-f", format, "-o", file});
      ASSERT_EQ(exported.status, 0) << exported.err;
    }
    const ProcessResult check = Run_program(dir, Python(), {script, results, graphml, json});
    EXPECT_EQ(check.status, 0) << check.out << check.err;
  }
  ASSERT_FALSE(lesmis.empty()) << VARNEL_TEST_DATA;
}

}  // namespace
}  // namespace kcp
