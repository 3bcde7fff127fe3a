// The readers of single result files, beyond what round_trip_test.cc reads back: every reader
// stops at the first line that does not read as the run writes it, naming the file and the line.
// The cases are the files in bad_files/: the part of the name before the "." says which reader
// reads it, the first line is the message that must follow "ERROR: <path>", the rest is the file.
#include <gtest/gtest.h>

#include <filesystem>
#include <map>

#include "results/clique_file_reader.h"
#include "results/community_files_reader.h"
#include "results/graph_file_reader.h"
#include "results/k_cliques_file_reader.h"
#include "results/line_tokeniser.h"
#include "results/stats_files_reader.h"
#include "tests/results/results_fixtures.h"

namespace kcp {
namespace {

using Reader = std::function<void(const std::string&, NodeNumbering&)>;
using P = const std::string&;
using N = NodeNumbering&;

TEST(ReaderErrors, BadLinesAreReportedWithFileAndLine) {
  const std::map<std::string, Reader> readers = {
      {"graph", [](P p, N n) { Read_graph_file(p, n); }},
      {"cliques", [](P p, N n) { Read_clique_file(p, n); }},
      {"k-cliques", [](P p, N n) { Read_k_cliques_file(p, n); }},
      {"communities", [](P p, N n) { Read_communities_file(p, n); }},
      {"communities_links", [](P p, N n) { Read_community_links_file(p, n); }},
      {"communities_cliques", [](P p, N) { Read_community_cliques_file(p); }},
      {"distribution", [](P p, N) { Read_distribution_file(p); }},
      {"graph_of_communities", [](P p, N) { Read_community_graph_file(p); }},
      {"records", [](P p, N) {
         for (LineTokeniser t(p); t.Next_record();) {
         }
       }}};
  testing::TestDir dir;
  const std::string path = dir / "f";
  std::size_t cases = 0;
  const auto cases_dir = std::filesystem::path(__FILE__).parent_path() / "bad_files";
  for (const auto& entry : std::filesystem::directory_iterator(cases_dir)) {
    const std::string name = entry.path().filename().string();
    SCOPED_TRACE(name);
    const std::string text = testing::Read_file(entry.path().string());
    testing::Write_file(path, text.substr(text.find('\n') + 1));
    // The graph file's nodes a..e, so that a number in place of a name shows.
    NodeNumbering numbering;
    if (name.starts_with("cliques.") || name.starts_with("k-cliques.")) {
      for (const char* node : {"a", "b", "c", "d", "e"}) numbering.Index(node);
      numbering.Lock();
    }
    const Reader& read = readers.at(name.substr(0, name.find('.')));
    EXPECT_EQ(testing::Error_of([&] { read(path, numbering); }),
              "ERROR: " + path + text.substr(0, text.find('\n')));
    ++cases;
  }
  EXPECT_EQ(cases, 49u) << cases_dir;
  for (const auto& [at, message] :
       {std::pair{dir / "missing", ": cannot open the file: No such file or directory"},
        std::pair{dir.path(), ": this is a directory, not a result file"}}) {
    NodeNumbering numbering;
    EXPECT_EQ(testing::Error_of([&] { readers.at("records")(at, numbering); }),
              "ERROR: " + at + message);
  }
}

TEST(LineTokeniser, ReadsLinesLongerThanAndAcrossItsBuffer) {
  testing::TestDir dir;
  const std::string long_name(3 << 20, 'n');
  std::string text = "# h\n\na " + long_name + "\n";
  for (int i = 0; i < 200000; ++i) text += std::to_string(i) + " name" + std::to_string(i) + "\n";
  testing::Write_file(dir / "f", text);
  LineTokeniser t(dir / "f");
  ASSERT_TRUE(t.Next_record());
  EXPECT_EQ(t.Tokens().at(1), long_name);
  for (int i = 0; i < 200000; ++i) {
    ASSERT_TRUE(t.Next_record());
    ASSERT_EQ(std::vector<std::string>(t.Tokens().begin(), t.Tokens().end()),
              (std::vector<std::string>{std::to_string(i), "name" + std::to_string(i)}));
  }
  EXPECT_FALSE(t.Next_record());
  EXPECT_EQ(t.Line_number(), 200003u);
}

}  // namespace
}  // namespace kcp
