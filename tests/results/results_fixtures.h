// Helpers for the tests that read results back: the message of a reader's error, and results
// directories, real ones made by running the built varnel inside a test directory and one with
// approximate cliques and communities made through the run's own writers (a short time limit
// leaves approximate results only by chance).
#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>
#include <string>
#include <vector>

#include "cliques/clique_output.h"
#include "communities/community_files.h"
#include "communities/stats_files.h"
#include "core/xerror_msg.h"
#include "graph/graph_output.h"
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

// A file's content and the message its reader must give, without the leading "ERROR: <path>".
struct Bad_file {
  std::string text;
  std::string message;
};

// Writes each case to `path` and expects `read` to fail on it with "ERROR: <path>" + message.
inline void Expect_errors(const std::string& path, const std::function<void()>& read,
                          const std::vector<Bad_file>& cases) {
  for (const Bad_file& c : cases) {
    SCOPED_TRACE(c.text);
    Write_file(path, c.text);
    EXPECT_EQ(Error_of(read), "ERROR: " + path + c.message);
  }
}

// Runs varnel with `args` in `workdir`, its standard output discarded; returns the exit status
// (-1 when it did not exit normally).
inline int Run_varnel(const std::string& workdir, const std::vector<std::string>& args) {
  const pid_t pid = fork();
  if (pid == 0) {
    const int out = open("/dev/null", O_RDWR);
    if (chdir(workdir.c_str()) != 0 || out < 0) _exit(127);
    dup2(out, 0);
    dup2(out, 1);
    std::vector<std::string> copies = args;
    std::string program = "varnel";
    std::vector<char*> argv{program.data()};
    for (std::string& arg : copies) argv.push_back(arg.data());
    argv.push_back(nullptr);
    execv(VARNEL_BINARY, argv.data());
    _exit(127);
  }
  int status = 0;
  waitpid(pid, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

// The run description of the made results.
inline const std::string kMadeAlap =
    " from /d/net.txt\n# at no lower link weight threshold,\n# and at no upper link weight "
    "threshold.\n# Links were treated as undirected.\n# The maximal allowed time per node "
    "during clique search was 0.500000 secs.\n";

// Writes into `results` a run over the names a..h (indices 1..8, as the run would number them)
// with cliques 0 and 1 exact, -2 and -3 approximate. k=3: communities 0 and 1 exact, -2 and -3
// approximate; k=4: communities -0 and -1, all approximate. With fixed_k every file carries the
// description of a run with a fixed k, which ends in a line end and a ".".
inline void Make_approximate_results(const std::string& results, const bool fixed_k = false) {
  const std::string alap =
      kMadeAlap + (fixed_k ? "# The communities were extracted solely at k=4\n." : "");
  const LinkMap links = {{{"a", "b"}, 0}, {{"b", "c"}, 0}, {{"c", "d"}, 0}, {{"d", "e"}, 0},
                         {{"e", "a"}, 0}, {{"e", "f"}, 0}, {{"f", "g"}, 0}, {{"g", "h"}, 0}};
  NameMap names = {{1, "a"}, {2, "b"}, {3, "c"}, {4, "d"}, {5, "e"}, {6, "f"}, {7, "g"}, {8, "h"}};
  Kiir_graph(links, results, false, alap, false);
  Kiir_cliques_VN(results, {{1, 2, 3}, {2, 3, 4}, {3, 4, 5, 6}, {5, 6, 7, 8}}, names, 2, "", alap);
  Kiir_coms_VN({{1, 2, 3, 4}, {6, 7}, {3, 4, 5, 6}, {5, 6, 7, 8}}, results, 3, names, 2, "", alap);
  Kiir_coms_cliques_VN({{0, 1}, {1}, {1, 2}, {0, 3}}, results, 3, 2, 2, "", alap);
  Kiir_com_links_VN({{{1, 2}, {2, 3}}, {{6, 7}}, {{4, 5}, {5, 6}}, {{5, 6}, {6, 7}}}, results, 3,
                    names, 2, "", alap, {{{5, 4}, 0}, {{5, 6}, 0}, {{2, 1}, 0}, {{6, 7}, 0}});
  Kiir_com_graph_VN({{{0, 2}, 2}, {{1, 2}, 1}, {{1, 3}, 2}, {{2, 3}, 2}}, 2, results, 3, "", alap);
  for (const std::string suffix : {"_merged", "_exact", "_appr"}) {
    Kiir_stats_VN({{0, 1}, {1, 5}, {2, 2}}, {{2, 1}, {4, 3}}, {{1, 1}, {2, 2}}, {{1, 2}, {2, 2}},
                  results, 3, "", suffix, alap);
  }
  Kiir_coms_VN({{3, 4, 5, 6}, {5, 6, 7, 8}}, results, 4, names, 0, "", alap);
  Kiir_coms_cliques_VN({{2}, {3}}, results, 4, 0, 2, "", alap);
  Kiir_com_links_VN({{{3, 4}}, {{7, 8}}}, results, 4, names, 0, "", alap, {{{3, 4}, 0}});
  Kiir_com_graph_VN({{{0, 1}, 2}}, 0, results, 4, "", alap);
  for (const std::string suffix : {"_merged", "_exact", "_appr"}) {
    Kiir_stats_VN({{0, 8}}, {}, {}, {}, results, 4, "", suffix, alap);
  }
}

}  // namespace kcp::testing
