#include "results/line_tokeniser.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/results/results_fixtures.h"

namespace kcp {
namespace {

using testing::Test_dir;
using testing::Write_file;

struct Record {
  std::uint64_t line;
  std::vector<std::string> tokens;
  bool operator==(const Record&) const = default;
};

std::vector<Record> All_records(Line_tokeniser& t) {
  std::vector<Record> records;
  while (t.Next_record()) {
    Record r{t.Line_number(), {}};
    for (const auto token : t.Tokens()) r.tokens.emplace_back(token);
    records.push_back(r);
  }
  return records;
}

TEST(LineTokeniser, YieldsHeaderThenRecordsWithTheirLineNumbers) {
  Test_dir dir;
  const std::string text = "# The x\n# from y\n\nx y\n\n  z\tw \r\n#x a#b\n";
  Write_file(dir / "f", text);
  Line_tokeniser t(dir / "f");
  EXPECT_EQ(t.Header_lines(), (std::vector<std::string>{"# The x", "# from y", ""}));
  EXPECT_EQ(t.Header_text(), "# The x\n# from y\n\n");
  EXPECT_TRUE(t.Header_closed());
  // Only a header line is a comment: "#" on a record line belongs to the name.
  EXPECT_EQ(All_records(t),
            (std::vector<Record>{{4, {"x", "y"}}, {6, {"z", "w"}}, {7, {"#x", "a#b"}}}));
  EXPECT_FALSE(t.Ended_with_empty_line());
}

TEST(LineTokeniser, DotLineOfAFixedKRunClosesOrContinuesTheHeader) {
  Test_dir dir;
  Write_file(dir / "closed", "# a\n# k=4\n.\n0: a b \n\n");
  Line_tokeniser closed(dir / "closed");
  EXPECT_EQ(closed.Header_lines(), (std::vector<std::string>{"# a", "# k=4", "."}));
  EXPECT_TRUE(closed.Header_closed());
  EXPECT_EQ(All_records(closed), (std::vector<Record>{{4, {"0:", "a", "b"}}}));
  EXPECT_TRUE(closed.Ended_with_empty_line());

  Write_file(dir / "continued", "# a\n.# (self-links were removed)\n\n.# b\n");
  Line_tokeniser continued(dir / "continued");
  EXPECT_EQ(continued.Header_text(), "# a\n.# (self-links were removed)\n\n");
  EXPECT_EQ(All_records(continued), (std::vector<Record>{{4, {".#", "b"}}}));

  Line_tokeniser::Options no_dots;
  no_dots.dot_lines_in_header = false;
  Line_tokeniser plain(dir / "closed", no_dots);
  EXPECT_FALSE(plain.Header_closed());
  EXPECT_EQ(All_records(plain).front(), (Record{3, {"."}}));
}

TEST(LineTokeniser, OptionsChangeSeparatorsMarkerAndTheEmptyLineRule) {
  Test_dir dir;
  Write_file(dir / "f", "% one\n\n% two\na,b c\n# x\n");
  Line_tokeniser::Options options;
  options.separators = ",";
  options.comment = '%';
  options.empty_line_ends_header = false;
  Line_tokeniser t(dir / "f", options);
  EXPECT_EQ(t.Header_lines(), (std::vector<std::string>{"% one", "", "% two"}));
  EXPECT_FALSE(t.Header_closed());
  EXPECT_EQ(All_records(t), (std::vector<Record>{{4, {"a", "b c"}}, {5, {"# x"}}}));
}

TEST(LineTokeniser, ReadsLinesLongerThanAndAcrossItsBuffer) {
  Test_dir dir;
  std::string text = "# h\n\n";
  const std::string long_name(3 << 20, 'n');
  text += "a " + long_name + "\n";
  for (int i = 0; i < 200000; ++i) text += std::to_string(i) + " name" + std::to_string(i) + "\n";
  Write_file(dir / "f", text);
  Line_tokeniser t(dir / "f");
  ASSERT_TRUE(t.Next_record());
  EXPECT_EQ(t.Tokens().at(1), long_name);
  int count = 0;
  while (t.Next_record()) {
    ASSERT_EQ(t.Tokens().size(), 2u);
    ASSERT_EQ(t.Tokens()[1], "name" + std::string(t.Tokens()[0]));
    ++count;
  }
  EXPECT_EQ(count, 200000);
  EXPECT_EQ(t.Line_number(), 200003u);
}

TEST(LineTokeniser, BadFilesNameTheFileAndLine) {
  Test_dir dir;
  std::string path;
  const auto read_all = [&] {
    Line_tokeniser t(path);
    All_records(t);
  };
  for (const auto& [at, message] :
       {std::pair{dir / "missing", ": cannot open the file: No such file or directory"},
        std::pair{dir.path(), ": this is a directory, not a result file"}}) {
    path = at;
    EXPECT_EQ(testing::Error_of(read_all), "ERROR: " + path + message);
  }
  path = dir / "f";
  testing::Expect_errors(
      path, read_all,
      {{std::string("# h\n\nab\0\x01\xff\n", 11),
        ", line 3: binary data (a NUL byte): this is not a result file of Varnel"},
       {"# h\n\n0: a b", ", line 3: the last line has no line end: the file seems truncated"}});
  Write_file(path, "# h\n\na\nb\n");
  Line_tokeniser t(path);
  t.Next_record();
  t.Next_record();
  EXPECT_EQ(testing::Error_of([&] { t.Fail("expected a community number followed by \":\""); }),
            "ERROR: " + path + ", line 4: expected a community number followed by \":\"");
}

}  // namespace
}  // namespace kcp
