// The built varnel-export on results directories made by real varnel runs: its exit status, its
// messages and what it writes where. networkx_check_test.cc reads the exports back.
#include <gtest/gtest.h>

#include <filesystem>
#include <map>

#include "tests/results/results_fixtures.h"

namespace kcp {
namespace {

namespace fs = std::filesystem;
using testing::TestDir;

// A four-clique a b c d and four triangles, so k=3 and k=4.
const char* const kTwoKs =
    "a b\na c\na d\nb c\nb d\nc d\nd e\ne f\nd f\nf g\ng h\nf h\nh i\ni j\nh j\na e\n";

// Every file below a directory with its content.
std::map<std::string, std::string> Tree_of(const std::string& root) {
  std::map<std::string, std::string> tree;
  for (const auto& entry : fs::recursive_directory_iterator(root)) {
    tree[entry.path().string()] =
        entry.is_regular_file() ? testing::Read_file(entry.path().string()) : "(directory)";
  }
  return tree;
}

TEST(ExportMain, ExitsWithTheStatusAndMessageOfEachCase) {
  TestDir dir;
  const std::string t = testing::Make_results(dir, "t", "a b\nb c\na c\n");
  const std::string two = testing::Make_results(dir, "two", kTwoKs);
  const std::string cut = dir / "cut";
  fs::copy(two, cut, fs::copy_options::recursive);
  testing::Write_file(cut + "/k=3/communities_links", "");
  // A run stopped while writing its cliques: "4: d e f \n", the last line, cut to "4: d e".
  const std::string cut_line = dir / "cut_line";
  fs::copy(two, cut_line, fs::copy_options::recursive);
  for (const char* k_dir : {"/k=3", "/k=4"}) fs::remove_all(cut_line + k_dir);
  fs::resize_file(cut_line + "/cliques", fs::file_size(cut_line + "/cliques") - 4);
  // Names that differ only in a byte written as \xHH.
  const std::string alike =
      testing::Make_results(dir, "alike", "n\xFF n\\xFF\nn\xFF c\nc n\\xFF\n");
  fs::create_directories(dir / "plain");
  testing::Write_file(dir / "plain/file.txt", "not results\n");
  fs::create_symlink(t, dir / "via_link");
  fs::create_symlink(t + "/graph", dir / "graph_link");
  fs::create_symlink(t + "/k=3/new.csv", dir / "dangling");
  const auto usage = [](const std::string& message) {
    return "varnel-export: " + message + "\nTry 'varnel-export --help' for more information.\n";
  };
  const auto bad_k = [&](const std::string& k) {
    return usage("--k needs a whole number of at least 3, not '" + k + "'");
  };
  const auto failed = [](const std::string& message) { return "varnel-export: " + message + "\n"; };
  const auto inside = [&](const std::string& output, const std::string& results) {
    return failed("refusing to write " + output + ": it lies inside the results directory " +
                  results + ", whose files it would overwrite; choose a file outside it");
  };
  struct Case {
    std::vector<std::string> args;
    int status;
    std::string err;               // the whole standard error
    std::string out = "";          // in standard output (which is empty after an error)
    std::string not_out = "\x01";  // never in standard output
  };
  const std::vector<Case> cases = {
      {{"--version"}, 0, "", "varnel-export 1.0\n", "Usage"},
      {{"--help"}, 0, "", "Usage: varnel-export RESULTS_DIR", "varnel-export 1.0"},
      {{}, 2, usage("no results directory given")},
      {{t}, 2, usage("no --format given (graphml, json, csv or svg)")},
      {{t, "-f", "pdf"}, 2, usage("unknown format 'pdf' (choose graphml, json, csv or svg)")},
      {{t, "-f", "csv", "--k", "2"}, 2, bad_k("2")},
      {{t, "-f", "csv", "-k", "4x"}, 2, bad_k("4x")},
      {{t, "--k=99999999999"}, 2, bad_k("99999999999")},
      {{t, "d", "--format", "csv"}, 2, usage("more than one results directory given")},
      {{t, "--format"}, 2, usage("--format needs a value")},
      {{t, "--colour", "red"}, 2, usage("unknown option '--colour'")},
      {{t, "-f", "csv", "--format=json"}, 2, usage("--format is given twice")},
      {{t, "-f", "csv", "-o", ""}, 2, usage("--output needs a file name")},
      {{dir / "missing", "-f", "csv"}, 1, failed("no such directory: " + (dir / "missing"))},
      {{dir / "plain/file.txt", "-f", "csv"}, 1, failed(dir / "plain/file.txt is not a directory")},
      {{dir / "plain", "-f", "csv"},
       1,
       failed(dir / "plain is not a results directory of varnel (it holds no graph file)")},
      {{t, "-f", "csv", "-k", "7", "-o", dir / "never.csv"},
       1,
       failed(t + ": there is no directory \"k=7\": the run wrote no communities at that k")},
      {{t, "-f", "csv", "-o", dir / "no/such/out.csv"},
       1,
       failed("cannot open " + (dir / "no/such/out.csv") +
              " for writing: No such file or directory")},
      {{t, "-f", "graphml", "-o", "/dev/full"}, 1, failed("could not write /dev/full")},
      {{alike, "-f", "json"},
       1,
       failed("two node names are both written as \"n\\xFF\" (bytes that are not UTF-8 are written "
              "as \\xHH)")},
      {{cut, "--format", "csv"},
       1,
       failed(cut + ": the results are incomplete, as an interrupted run leaves them: missing "
                    "k=3/communities_links (empty) (--allow-incomplete exports what is there)")},
      {{cut, "--format", "csv", "--allow-incomplete"},
       0,
       failed("warning: exporting incomplete results; missing k=3/communities_links (empty)"),
       "k,community,approximate,node\n4,0,",
       "\n3,"},
      {{cut_line, "--format", "csv"},
       1,
       failed(cut_line +
              "/cliques, line 11: the last line has no line end: the file seems truncated")},
      {{cut_line, "--format", "csv", "--allow-incomplete"},
       0,
       failed("warning: exporting incomplete results; missing k=4 (no directory), k=3 (no "
              "directory); the last line of cliques was cut short and is left out"),
       "k,community,approximate,node\n"},
      // --k keeps that k in every format.
      {{two, "-f", "csv", "--k=4"}, 0, "", "k,community,approximate,node\n4,0,", "\n3,"},
      {{"--format=graphml", "--k", "4", "--", two}, 0, "", "attr.name=\"k4\"", "attr.name=\"k3\""},
      {{"-k", "4", "--output", dir / "two.json", "-f", "json", two}, 0, "", "", "{"},
      {{two, "-f", "svg", "-k", "4"}, 0, "", ">k = 4:  1 community<", ">k = 3:"},
      // An output inside the results directory, also through links, is refused.
      {{t, "--format", "csv", "-o", t + "/graph"}, 1, inside(t + "/graph", t)},
      {{t, "-f", "csv", "-o", t + "/k=3/new.csv"}, 1, inside(t + "/k=3/new.csv", t)},
      {{t, "-f", "csv", "-o", t + "/"}, 1, inside(t + "/", t)},
      {{t, "-f", "csv", "-o", t + "/../t/./cliques"}, 1, inside(t + "/../t/./cliques", t)},
      {{t, "-f", "csv", "-o", dir / "via_link/graph"}, 1, inside(dir / "via_link/graph", t)},
      {{t, "-f", "csv", "-o", dir / "graph_link"}, 1, inside(dir / "graph_link", t)},
      {{t, "-f", "csv", "-o", dir / "dangling"}, 1, inside(dir / "dangling", t)},
      {{dir / "via_link", "-f", "csv", "-o", t + "/out.csv"},
       1,
       inside(t + "/out.csv", dir / "via_link")},
      // A name that only begins like the results directory lies outside it.
      {{t, "-f", "csv", "-o", dir / "t.csv"}, 0, ""},
  };
  const std::map<std::string, std::string> before = Tree_of(t);
  for (const Case& c : cases) {
    std::string shown;
    for (const std::string& arg : c.args) shown += arg + " ";
    SCOPED_TRACE(shown);
    const testing::ProcessResult run = testing::Run_export(dir, c.args);
    EXPECT_EQ(run.status, c.status);
    EXPECT_EQ(run.err, c.err);
    EXPECT_TRUE(c.status == 0 || run.out.empty()) << run.out;
    EXPECT_NE(run.out.find(c.out), std::string::npos) << run.out;
    EXPECT_EQ(run.out.find(c.not_out), std::string::npos) << run.out;
  }
  EXPECT_EQ(Tree_of(t), before);
  EXPECT_FALSE(fs::exists(dir / "never.csv"));
  EXPECT_TRUE(fs::is_character_file("/dev/full"));
  EXPECT_EQ(testing::Read_file(dir / "t.csv"), testing::Run_export(dir, {t, "-f", "csv"}).out);
  const std::string json = testing::Read_file(dir / "two.json");
  EXPECT_NE(json.find("\"k\": [4],"), std::string::npos) << json;
  EXPECT_EQ(json.find("\"k3\""), std::string::npos) << json;
  // Standard output on a full device.
  const testing::ProcessResult full = testing::Run_program(
      dir.path(), "sh",
      {"-c", "exec \"$0\" \"$@\" >/dev/full", VARNEL_EXPORT_BINARY, t, "-f", "csv"});
  EXPECT_EQ(full.status, 1);
  EXPECT_EQ(full.err, "varnel-export: could not write to standard output\n");
}

}  // namespace
}  // namespace kcp
