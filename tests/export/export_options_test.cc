#include "export/export_options.h"

#include <gtest/gtest.h>

#include "core/xerror_msg.h"

namespace kcp {
namespace {

std::string Error_of(const std::vector<std::string>& args) {
  try {
    Parse_export_options(args);
  } catch (const Xerror_msg& error) {
    return error.what();
  }
  return "";
}

TEST(ExportOptions, ReadsLongShortAndEqualsForms) {
  struct Case {
    std::vector<std::string> args;
    std::string results_dir;
    ExportFormat format;
    std::optional<std::uint32_t> k;
    std::string output;
  };
  const std::vector<Case> cases = {
      {{"dir", "--format", "json", "--k", "4", "--output", "out.json"},
       "dir",
       ExportFormat::kJson,
       4,
       "out.json"},
      {{"-f", "csv", "-k", "12", "-o", "t", "d"}, "d", ExportFormat::kCsv, 12, "t"},
      {{"--format=svg", "--k=3", "dir"}, "dir", ExportFormat::kSvg, 3, ""},
      {{"--format", "graphml", "d"}, "d", ExportFormat::kGraphml, std::nullopt, ""},
      // Everything after "--" is the directory.
      {{"--format", "csv", "--", "-odd"}, "-odd", ExportFormat::kCsv, std::nullopt, ""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.args.front());
    const ExportOptions options = Parse_export_options(c.args);
    EXPECT_EQ(options.results_dir, c.results_dir);
    EXPECT_EQ(options.format, c.format);
    EXPECT_EQ(options.k, c.k);
    EXPECT_EQ(options.output, c.output);
  }
  // Help and version need nothing else.
  EXPECT_TRUE(Parse_export_options({"--help"}).help);
  EXPECT_TRUE(Parse_export_options({"-h"}).help);
  EXPECT_TRUE(Parse_export_options({"--version"}).version);
}

TEST(ExportOptions, RejectsBadCommandLines) {
  EXPECT_NE(Error_of({"d", "--format", "pdf"}).find("unknown format 'pdf'"), std::string::npos);
  for (const std::string k : {"2", "0", "-3", "x", "4x", "", " 4", "4.0", "99999999999"}) {
    EXPECT_NE(Error_of({"d", "--format", "csv", "--k", k}).find("--k needs a whole number"),
              std::string::npos)
        << "'" << k << "'";
  }
  const std::vector<std::pair<std::vector<std::string>, std::string>> cases = {
      {{"--format", "csv"}, "no results directory given"},
      {{"a", "b", "--format", "csv"}, "more than one results directory given"},
      {{"d"}, "no --format given (graphml, json, csv or svg)"},
      {{"d", "--format"}, "--format needs a value"},
      {{"d", "--colour", "red"}, "unknown option '--colour'"},
      {{"d", "-x"}, "unknown option '-x'"},
      {{"d", "-f", "csv", "--format=json"}, "--format is given twice"},
      {{"d", "-f", "csv", "-o", ""}, "--output needs a file name"},
  };
  for (const auto& [args, message] : cases) EXPECT_EQ(Error_of(args), message);
}

TEST(ExportOptions, HelpNamesEveryFormatAndOption) {
  const std::string help = Export_help_text();
  EXPECT_TRUE(help.starts_with("Usage: varnel-export RESULTS_DIR"));
  for (const char* word : {"graphml", "json", "csv", "svg", "--format", "--k", "--output", "--help",
                           "--version", "edges=\"links\"", "\\xHH"}) {
    EXPECT_NE(help.find(word), std::string::npos) << word;
  }
}

}  // namespace
}  // namespace kcp
