// End-to-end runs of the built varnel-export on results directories made by real varnel runs.
// The GraphML and JSON contents are read back against the results in networkx_check_test.cc.
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <set>
#include <sstream>

#include "tests/export/export_process.h"
#include "tests/export/xml_check.h"

namespace kcp {
namespace {

using testing::Count;
using testing::Make_results;
using testing::ProcessResult;
using testing::Run_export;
using testing::Test_dir;

// Two triangles sharing the node c, a four-clique f g h R&D (one line of it given both ways),
// and a lone link between two nodes with awkward names (one of them Latin-1, not UTF-8).
const char* const kHandMadeLinks =
    "a b\na c\nb c\nc d\nc x\"y\nd x\"y\nf g\nf h\nf R&D\ng h\ng R&D\nh R&D\ncaf\xE9 <q>\nh g\n";

// The rows of a CSV text, fields unquoted (RFC 4180).
std::vector<std::vector<std::string>> Csv_rows(const std::string& csv) {
  std::vector<std::vector<std::string>> rows(1);
  std::string field;
  bool quoted = false;
  for (std::size_t i = 0; i < csv.size(); ++i) {
    const char c = csv[i];
    if (quoted) {
      if (c == '"' && i + 1 < csv.size() && csv[i + 1] == '"') {
        field += '"';
        ++i;
      } else if (c == '"') {
        quoted = false;
      } else {
        field += c;
      }
    } else if (c == '"') {
      quoted = true;
    } else if (c == ',') {
      rows.back().push_back(field);
      field.clear();
    } else if (c == '\n') {
      rows.back().push_back(field);
      field.clear();
      rows.emplace_back();
    } else {
      field += c;
    }
  }
  rows.pop_back();  // after the last line end
  return rows;
}

class HandMadeRun : public ::testing::Test {
 protected:
  void SetUp() override {
    results_ = Make_results(dir_, "hand.links", kHandMadeLinks, "hand_results");
    ASSERT_FALSE(results_.empty()) << "varnel made no results directory";
  }
  Test_dir dir_;
  std::string results_;
};

TEST_F(HandMadeRun, CsvListsEveryCommunityOfEveryK) {
  const ProcessResult run = Run_export(dir_, {results_, "-f", "csv"});
  ASSERT_EQ(run.status, 0) << run.err;
  const auto rows = Csv_rows(run.out);
  ASSERT_FALSE(rows.empty());
  EXPECT_EQ(rows[0], std::vector<std::string>({"k", "community", "approximate", "node"}));
  std::map<std::pair<std::string, std::string>, std::set<std::string>> communities;
  for (std::size_t i = 1; i < rows.size(); ++i) {
    ASSERT_EQ(rows[i].size(), 4u);
    EXPECT_EQ(rows[i][2], "false");
    communities[{rows[i][0], rows[i][1]}].insert(rows[i][3]);
  }
  std::multiset<std::pair<std::string, std::set<std::string>>> found;
  for (const auto& [key, nodes] : communities) found.insert({key.first, nodes});
  const std::multiset<std::pair<std::string, std::set<std::string>>> expected = {
      {"3", {"a", "b", "c"}},
      {"3", {"c", "d", "x\"y"}},
      {"3", {"f", "g", "h", "R&D"}},
      {"4", {"f", "g", "h", "R&D"}}};
  EXPECT_EQ(found, expected);
  EXPECT_EQ(Count(run.out, ",\"x\"\"y\"\n"), 1u);
}

TEST_F(HandMadeRun, KRestrictsEveryFormatToThatK) {
  const ProcessResult graphml = Run_export(dir_, {results_, "-f", "graphml", "--k", "4"});
  ASSERT_EQ(graphml.status, 0) << graphml.err;
  EXPECT_EQ(Count(graphml.out, "attr.name=\"k3\""), 0u);
  EXPECT_EQ(Count(graphml.out, "attr.name=\"k4\""), 2u);
  EXPECT_EQ(Count(graphml.out, "<node "), 11u);  // the whole network, communities of k=4

  const ProcessResult csv = Run_export(dir_, {results_, "-f", "csv", "--k=4"});
  ASSERT_EQ(csv.status, 0) << csv.err;
  EXPECT_EQ(Csv_rows(csv.out).size(), 1u + 4u);
  EXPECT_EQ(Count(csv.out, "\n3,"), 0u);

  const ProcessResult json = Run_export(dir_, {results_, "-f", "json", "-k", "4"});
  ASSERT_EQ(json.status, 0) << json.err;
  EXPECT_EQ(Count(json.out, "\"k\": [4],"), 1u);
  EXPECT_EQ(Count(json.out, "\"k3\""), 0u);

  const ProcessResult svg = Run_export(dir_, {results_, "-f", "svg", "-k", "4"});
  ASSERT_EQ(svg.status, 0) << svg.err;
  EXPECT_EQ(testing::Xml_fault(svg.out), "");
  EXPECT_EQ(Count(svg.out, ">k = 4:  1 community<"), 1u);
  EXPECT_EQ(Count(svg.out, ">k = 3:"), 0u);
  EXPECT_EQ(Count(svg.out, "against k<"), 0u);
}

TEST_F(HandMadeRun, OutputFileHoldsWhatStandardOutputWould) {
  const ProcessResult to_stdout = Run_export(dir_, {results_, "-f", "json"});
  const ProcessResult to_file =
      Run_export(dir_, {results_, "-f", "json", "--output", dir_ / "out.json"});
  ASSERT_EQ(to_file.status, 0) << to_file.err;
  EXPECT_EQ(to_file.out, "");
  EXPECT_EQ(testing::Read_file(dir_ / "out.json"), to_stdout.out);
  EXPECT_EQ(Count(to_stdout.out, "{\"id\": \"caf\\\\xE9\"}"), 1u);
}

using Entries = std::multiset<std::vector<std::string>>;

// {k, community, node} for every node of every community, as the communities files list them.
Entries File_entries(const std::string& results) {
  Entries entries;
  for (const auto& entry : std::filesystem::directory_iterator(results)) {
    const std::string name = entry.path().filename().string();
    if (!name.starts_with("k=")) continue;
    std::istringstream lines(testing::Read_file(entry.path().string() + "/communities"));
    for (std::string line; std::getline(lines, line);) {
      // Records are "N: a b c " with N a number, "-" in front when approximate.
      std::istringstream fields(line);
      std::string label;
      fields >> label;
      if (label.size() < 2 || !label.ends_with(':') || line[0] == '#') continue;
      label.pop_back();
      for (std::string node; fields >> node;) entries.insert({name.substr(2), label, node});
    }
  }
  return entries;
}

// {k, community, node} of every CSV row; the approximate column must match the sign.
Entries Csv_entries(const std::string& csv) {
  Entries entries;
  for (const auto& row : Csv_rows(csv)) {
    if (row[0] == "k") continue;
    EXPECT_EQ(row[2], row[1].starts_with("-") ? "true" : "false") << row[0] << "," << row[1];
    entries.insert({row[0], row[1], row[3]});
  }
  return entries;
}

TEST(ExportMain, ExportsLesMiserablesInEveryFormat) {
  const std::string data = std::string(VARNEL_TEST_DATA) + "/lesmis.links";
  ASSERT_FALSE(testing::Read_file(data).empty()) << data;
  Test_dir dir;
  // A time limit below the clock's resolution gives approximate communities, "-0" among them
  // when a k has no exact one (how many depends on the clock).
  for (const auto& [name, switches] :
       {std::pair{"les", std::vector<std::string>{}},
        std::pair{"t", std::vector<std::string>{"-t", "0.0000001"}}}) {
    SCOPED_TRACE(name);
    const std::string results =
        Make_results(dir, "lesmis.links", testing::Read_file(data), name, switches);
    ASSERT_FALSE(results.empty());
    // 254 lines among 77 characters; no reciprocal pair.
    const ProcessResult graphml = Run_export(dir, {results, "-f", "graphml"});
    ASSERT_EQ(graphml.status, 0) << graphml.err;
    EXPECT_EQ(testing::Xml_fault(graphml.out), "");
    EXPECT_EQ(Count(graphml.out, "<node "), 77u);
    EXPECT_EQ(Count(graphml.out, "<edge "), 254u);
    const ProcessResult csv = Run_export(dir, {results, "-f", "csv"});
    ASSERT_EQ(csv.status, 0) << csv.err;
    EXPECT_EQ(Csv_entries(csv.out), File_entries(results));
  }

  const ProcessResult json = Run_export(dir, {dir / "les", "-f", "json"});
  ASSERT_EQ(json.status, 0) << json.err;
  EXPECT_EQ(Count(json.out, "{\"source\": "), 254u);
  EXPECT_EQ(Count(json.out, "\"k\": [3, 4, 5, 6, 7, 8, 9, 10],"), 1u);
  const ProcessResult svg = Run_export(dir, {dir / "les", "-f", "svg", "-o", dir / "les.svg"});
  ASSERT_EQ(svg.status, 0) << svg.err;
  const std::string picture = testing::Read_file(dir / "les.svg");
  EXPECT_EQ(testing::Xml_fault(picture), "");
  EXPECT_EQ(Count(picture, ">Node membership<"), 8u);
  // The document title and the heading on the page.
  EXPECT_EQ(Count(picture, "<title>k-clique communities of les</title>"), 1u);
  EXPECT_EQ(Count(picture, ">k-clique communities of les<"), 2u);
  if (!testing::Python_available()) {
    GTEST_SKIP() << "python3 with xml.etree is not installed; XML checked in C++ only";
  }
  EXPECT_EQ(testing::Python_xml_fault(picture), "");
}

TEST(ExportMain, PrintsHelpAndVersion) {
  Test_dir dir;
  const ProcessResult version = Run_export(dir, {"--version"});
  EXPECT_EQ(version.status, 0);
  EXPECT_EQ(version.out, "varnel-export 1.0\n");
  EXPECT_EQ(version.err, "");
  const ProcessResult help = Run_export(dir, {"--help"});
  EXPECT_EQ(help.status, 0);
  EXPECT_TRUE(help.out.starts_with("Usage: varnel-export RESULTS_DIR")) << help.out;
}

TEST(ExportMain, ReportsErrorsOnStandardErrorWithNonZeroStatus) {
  Test_dir dir;
  const std::string results = Make_results(dir, "t.links", "a b\nb c\na c\n", "t_results");
  ASSERT_FALSE(results.empty());
  std::filesystem::create_directories(dir / "plain");
  testing::Write_file(dir / "plain/file.txt", "not results\n");

  struct Case {
    std::vector<std::string> args;
    int status;
    std::string message_part;
  };
  const std::vector<Case> cases = {
      {{dir / "missing", "-f", "csv"}, 1, "no such directory"},
      {{dir / "plain", "-f", "csv"}, 1, "not a results directory"},
      {{dir / "plain/file.txt", "-f", "csv"}, 1, "is not a directory"},
      {{results, "-f", "pdf"}, 2, "unknown format 'pdf'"},
      {{results, "-f", "csv", "--k", "two"}, 2, "--k needs a whole number"},
      {{results, "-f", "csv", "--k", "2"}, 2, "--k needs a whole number"},
      {{results, "-f", "csv", "--k", "7"}, 1, "k=7"},
      {{results}, 2, "no --format given"},
      {{}, 2, "no results directory given"},
      {{results, "-f", "csv", "-o", dir / "no/such/dir/out.csv"}, 1, "cannot open"},
  };
  for (const Case& c : cases) {
    const ProcessResult run = Run_export(dir, c.args);
    const std::string shown = c.args.empty() ? "(none)" : c.args.back();
    EXPECT_EQ(run.status, c.status) << shown;
    EXPECT_EQ(run.out, "") << shown;
    // The program's name, no "ERROR" prefix; a failed read is one line.
    EXPECT_TRUE(run.err.starts_with("varnel-export: ")) << shown << ": " << run.err;
    EXPECT_EQ(run.err.find("ERROR"), std::string::npos) << shown << ": " << run.err;
    if (c.status == 1) {
      EXPECT_EQ(run.err.find('\n'), run.err.size() - 1) << shown << ": " << run.err;
    }
    EXPECT_NE(run.err.find(c.message_part), std::string::npos) << shown << ": " << run.err;
  }
  // An error leaves no output file behind.
  const ProcessResult missing_k =
      Run_export(dir, {results, "-f", "csv", "-k", "9", "-o", dir / "never.csv"});
  EXPECT_EQ(missing_k.status, 1);
  EXPECT_FALSE(std::filesystem::exists(dir / "never.csv"));
}

// Every file below a directory with its content.
std::map<std::string, std::string> Tree_of(const std::string& root) {
  std::map<std::string, std::string> tree;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(root)) {
    tree[entry.path().string()] =
        entry.is_regular_file() ? testing::Read_file(entry.path().string()) : "(directory)";
  }
  return tree;
}

TEST(ExportMain, RefusesAnOutputInsideTheResultsDirectoryBeforeTouchingAnything) {
  namespace fs = std::filesystem;
  Test_dir dir;
  const std::string results = Make_results(dir, "t.links", "a b\nb c\na c\n", "t_results");
  ASSERT_FALSE(results.empty());
  fs::create_symlink(results, dir / "via_link");
  fs::create_symlink(results + "/graph", dir / "graph_link");
  fs::create_symlink(results + "/k=3/new.csv", dir / "dangling");
  const std::map<std::string, std::string> before = Tree_of(results);
  ASSERT_TRUE(before.contains(results + "/graph"));

  for (const std::string& output :
       {results + "/graph", results + "/k=3/communities", results + "/k=3/new.csv", results,
        results + "/", dir / "t_results/../t_results/./cliques", dir / "via_link/graph",
        dir / "graph_link", dir / "dangling"}) {
    const ProcessResult run = Run_export(dir, {results, "--format", "csv", "-o", output});
    EXPECT_EQ(run.status, 1) << output;
    EXPECT_EQ(run.out, "") << output;
    EXPECT_TRUE(run.err.starts_with("varnel-export: refusing to write " + output +
                                    ": it lies inside the results directory " + results))
        << output << ": " << run.err;
    EXPECT_EQ(run.err.find('\n'), run.err.size() - 1) << run.err;
    EXPECT_EQ(Tree_of(results), before) << output;
  }
  // The results directory given through the link is the same directory.
  const ProcessResult linked =
      Run_export(dir, {dir / "via_link", "-f", "csv", "-o", results + "/out.csv"});
  EXPECT_EQ(linked.status, 1) << linked.err;
  EXPECT_EQ(Tree_of(results), before);

  // A name that only begins like the results directory lies outside it.
  const ProcessResult beside = Run_export(dir, {results, "-f", "csv", "-o", dir / "t_results.csv"});
  EXPECT_EQ(beside.status, 0) << beside.err;
  EXPECT_FALSE(testing::Read_file(dir / "t_results.csv").empty());
  EXPECT_EQ(Tree_of(results), before);
}

// An interrupted run: its largest k done, the next one cut short while writing.
TEST(ExportMain, RefusesIncompleteResultsUnlessAskedToExportWhatIsThere) {
  namespace fs = std::filesystem;
  Test_dir dir;
  const std::string results =
      Make_results(dir, "t.links",
                   "a b\na c\na d\nb c\nb d\nc d\nd e\ne f\nd f\nf g\ng h\nf h\n"
                   "h i\ni j\nh j\na e\n",
                   "t_results");
  ASSERT_TRUE(fs::is_directory(results + "/k=4"));
  testing::Write_file(results + "/k=3/communities_links", "");
  const ProcessResult refused = Run_export(dir, {results, "--format", "csv"});
  EXPECT_EQ(refused.status, 1);
  EXPECT_EQ(refused.out, "");
  EXPECT_EQ(refused.err, "varnel-export: " + results +
                             ": the results are incomplete, as an interrupted run leaves them: "
                             "missing k=3/communities_links (empty) (--allow-incomplete exports "
                             "what is there)\n");

  const ProcessResult allowed = Run_export(dir, {results, "--format", "csv", "--allow-incomplete"});
  EXPECT_EQ(allowed.status, 0) << allowed.err;
  EXPECT_EQ(allowed.err,
            "varnel-export: warning: exporting incomplete results; missing k=3/communities_links "
            "(empty)\n");
  EXPECT_NE(allowed.out.find("\n4,0,"), std::string::npos) << allowed.out;
  EXPECT_EQ(allowed.out.find("\n3,"), std::string::npos) << allowed.out;
}

}  // namespace
}  // namespace kcp
