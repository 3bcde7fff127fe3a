// Helpers for the tests that read results back and export them: the message of a reader's error;
// a built program run in a test directory; results made by real varnel runs, and with approximate
// cliques and communities made through the run's own writers (a short time limit leaves
// approximate results only by chance); small RunResults built by hand, as Read_results_dir would
// return them; expected texts; a parse of XML documents by python3's xml.etree.
#pragma once

#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "cliques/clique_output.h"
#include "communities/community_files.h"
#include "communities/stats_files.h"
#include "core/xerror_msg.h"
#include "graph/graph_output.h"
#include "results/run_results.h"
#include "tests/support/test_dir.h"

namespace kcp::testing {

// The message of the error `read` throws; "no error" when it throws none.
inline std::string Error_of(const std::function<void()>& read) {
  try {
    read();
  } catch (const Xerror_msg& e) {
    return e.what();
  }
  return "no error";
}

struct ProcessResult {
  int status = -1;  // exit status, -1 when the program did not exit normally
  std::string out;
  std::string err;
};

inline std::string Shell_quoted(const std::string& word) {
  std::string quoted = "'";
  for (const char c : word) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return quoted + "'";
}

// Runs `program` with `args` inside `dir`, standard output and error caught.
inline ProcessResult Run_program(const std::string& dir, const std::string& program,
                                 const std::vector<std::string>& args) {
  std::string command = "cd " + Shell_quoted(dir) + " && " + Shell_quoted(program);
  for (const std::string& arg : args) command += " " + Shell_quoted(arg);
  command +=
      " </dev/null >" + Shell_quoted(dir + "/run.out") + " 2>" + Shell_quoted(dir + "/run.err");
  const int raw = std::system(command.c_str());
  return {raw != -1 && WIFEXITED(raw) ? WEXITSTATUS(raw) : -1, Read_file(dir + "/run.out"),
          Read_file(dir + "/run.err")};
}

inline int Run_varnel(const std::string& dir, const std::vector<std::string>& args) {
  return Run_program(dir, VARNEL_BINARY, args).status;
}

// Writes into `results` a run over the names a..h (indices 1..8, as the run would number them)
// with cliques 0 and 1 exact, -2 and -3 approximate. k=3: communities 0 and 1 exact, -2 and -3
// approximate; k=4: communities -0 and -1, all approximate. With fixed_k every file carries the
// description of a run with a fixed k, which ends in a line end and a ".", and all the cliques
// are approximate, from "-0" on.
inline void Make_approximate_results(const std::string& results, const bool fixed_k = false) {
  const std::string alap =
      " from /d/net.txt\n# at no lower link weight threshold,\n# and at no upper link weight "
      "threshold.\n# Links were treated as undirected.\n# The maximal allowed time per node during "
      "clique search was 0.500000 secs.\n" +
      std::string(fixed_k ? "# The communities were extracted solely at k=4\n." : "");
  const LinkMap links = {{{"a", "b"}, 0}, {{"b", "c"}, 0}, {{"c", "d"}, 0}, {{"d", "e"}, 0},
                         {{"e", "a"}, 0}, {{"e", "f"}, 0}, {{"f", "g"}, 0}, {{"g", "h"}, 0}};
  NameMap names = {{1, "a"}, {2, "b"}, {3, "c"}, {4, "d"}, {5, "e"}, {6, "f"}, {7, "g"}, {8, "h"}};
  Kiir_graph(links, results, false, alap, false);
  const std::uint32_t exact = fixed_k ? 0 : 2;
  Kiir_cliques_VN(results, {{1, 2, 3}, {2, 3, 4}, {3, 4, 5, 6}, {5, 6, 7, 8}}, names, exact, "",
                  alap);
  Kiir_coms_VN({{1, 2, 3, 4}, {6, 7}, {3, 4, 5, 6}, {5, 6, 7, 8}}, results, 3, names, 2, "", alap);
  Kiir_coms_cliques_VN({{0, 1}, {1}, {1, 2}, {0, 3}}, results, 3, 2, exact, "", alap);
  Kiir_com_links_VN({{{1, 2}, {2, 3}}, {{6, 7}}, {{4, 5}, {5, 6}}, {{5, 6}, {6, 7}}}, results, 3,
                    names, 2, "", alap, {{{5, 4}, 0}, {{5, 6}, 0}, {{2, 1}, 0}, {{6, 7}, 0}});
  Kiir_com_graph_VN({{{0, 2}, 2}, {{1, 2}, 1}, {{1, 3}, 2}, {{2, 3}, 2}}, 2, results, 3, "", alap);
  for (const std::string suffix : {"_merged", "_exact", "_appr"}) {
    Kiir_stats_VN({{0, 1}, {1, 5}, {2, 2}}, {{2, 1}, {4, 3}}, {{1, 1}, {2, 2}}, {{1, 2}, {2, 2}},
                  results, 3, "", suffix, alap);
  }
  Kiir_coms_VN({{3, 4, 5, 6}, {5, 6, 7, 8}}, results, 4, names, 0, "", alap);
  Kiir_coms_cliques_VN({{2}, {3}}, results, 4, 0, exact, "", alap);
  Kiir_com_links_VN({{{3, 4}}, {{7, 8}}}, results, 4, names, 0, "", alap, {{{3, 4}, 0}});
  Kiir_com_graph_VN({{{0, 1}, 2}}, 0, results, 4, "", alap);
  for (const std::string suffix : {"_merged", "_exact", "_appr"}) {
    Kiir_stats_VN({{0, 8}}, {}, {}, {}, results, 4, "", suffix, alap);
  }
}

// Numbers below 0 are approximate; the approximate "-0" is made by setting the flag afterwards.
inline CommunityRecord Community(std::int64_t number, std::vector<std::string> nodes,
                                 std::vector<std::pair<std::string, std::string>> links = {}) {
  return {number, number < 0, std::move(nodes), std::move(links), {}};
}

// A run with the given communities at one k and nothing else.
inline RunResults At_k(std::uint32_t k, std::vector<CommunityRecord> communities) {
  RunResults results;
  results.per_k.resize(1);
  results.per_k[0].k = k;
  results.per_k[0].communities = std::move(communities);
  return results;
}

// A directed, weighted run on the lines "x y 0.5", "y x 2", "x a&b 1e+06" with, at k=3, the
// community 0 = {x, y, a&b} whose link list names x and y once, as "x y".
inline RunResults Directed_sample() {
  RunResults results =
      At_k(3, {Community(0, {"x", "y", "a&b"}, {{"x", "y"}, {"a&b", "x"}, {"y", "a&b"}})});
  results.flavour = "directed";
  results.directed = true;
  results.weighted = true;
  results.nodes = {"x", "y", "a&b"};
  results.links = {{"x", "y", 0.5, "0.5"}, {"y", "x", 2, "2"}, {"x", "a&b", 1e6, "1e+06"}};
  results.per_k[0].distributions["size_distribution"] = {{3, 1}};
  return results;
}

// A file of tests/export/expected/.
inline std::string Expected(const std::string& name) {
  const auto dir = std::filesystem::path(__FILE__).parent_path().parent_path() / "export";
  return Read_file((dir / "expected" / name).string());
}

// How often `part` occurs in `text`.
inline std::size_t Count(const std::string& text, const std::string& part) {
  std::size_t count = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
    ++count;
  }
  return count;
}

inline ProcessResult Run_export(const TestDir& dir, const std::vector<std::string>& args) {
  return Run_program(dir.path(), VARNEL_EXPORT_BINARY, args);
}

// Runs varnel on `links` (written into dir as `name`.links) with `switches` and returns the
// results directory, dir/`name`.
inline std::string Make_results(const TestDir& dir, const std::string& name,
                                const std::string& links, std::vector<std::string> switches = {}) {
  Write_file(dir / (name + ".links"), links);
  switches.insert(switches.begin(), {"-i", dir / (name + ".links"), "-o", dir / name});
  EXPECT_EQ(Run_program(dir.path(), VARNEL_BINARY, switches).status, 0) << name;
  return dir / name;
}

// What python3's xml.etree finds wrong with the document; "" when it parses, or when python3
// is not installed (the C++ checks of each test still apply).
inline std::string Python_xml_fault(const std::string& xml) {
  TestDir dir;
  Write_file(dir / "doc.xml", xml);
  const ProcessResult parse = Run_program(
      dir.path(), "python3",
      {"-c", "import sys, xml.etree.ElementTree as E; E.parse(sys.argv[1])", dir / "doc.xml"});
  return parse.status == 0 || parse.status == 127 ? "" : "not well formed: " + parse.err;
}

}  // namespace kcp::testing
