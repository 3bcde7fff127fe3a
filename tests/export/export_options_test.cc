#include "export/export_options.h"

#include <gtest/gtest.h>

#include "driver/xerror_msg.h"

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
  const ExportOptions long_form =
      Parse_export_options({"dir", "--format", "json", "--k", "4", "--output", "out.json"});
  EXPECT_EQ(long_form.results_dir, "dir");
  EXPECT_EQ(long_form.format, ExportFormat::kJson);
  EXPECT_EQ(long_form.k, 4u);
  EXPECT_EQ(long_form.output, "out.json");

  const ExportOptions short_form = Parse_export_options({"-f", "csv", "-k", "12", "-o", "t", "d"});
  EXPECT_EQ(short_form.results_dir, "d");
  EXPECT_EQ(short_form.format, ExportFormat::kCsv);
  EXPECT_EQ(short_form.k, 12u);
  EXPECT_EQ(short_form.output, "t");

  const ExportOptions equals_form = Parse_export_options({"--format=svg", "--k=3", "dir"});
  EXPECT_EQ(equals_form.format, ExportFormat::kSvg);
  EXPECT_EQ(equals_form.k, 3u);
  EXPECT_EQ(equals_form.output, "");

  EXPECT_EQ(Parse_export_options({"--format", "graphml", "d"}).format, ExportFormat::kGraphml);
  EXPECT_FALSE(Parse_export_options({"--format", "graphml", "d"}).k.has_value());
}

TEST(ExportOptions, TakesEverythingAfterDoubleDashAsTheDirectory) {
  const ExportOptions options = Parse_export_options({"--format", "csv", "--", "-odd"});
  EXPECT_EQ(options.results_dir, "-odd");
}

TEST(ExportOptions, HelpAndVersionNeedNothingElse) {
  EXPECT_TRUE(Parse_export_options({"--help"}).help);
  EXPECT_TRUE(Parse_export_options({"-h"}).help);
  EXPECT_TRUE(Parse_export_options({"--version"}).version);
}

TEST(ExportOptions, RejectsBadFormatsAndKs) {
  EXPECT_NE(Error_of({"d", "--format", "pdf"}).find("unknown format 'pdf'"), std::string::npos);
  for (const std::string k : {"2", "0", "-3", "x", "4x", "", " 4", "4.0", "99999999999"}) {
    EXPECT_NE(Error_of({"d", "--format", "csv", "--k", k}).find("--k needs a whole number"),
              std::string::npos)
        << "'" << k << "'";
  }
}

TEST(ExportOptions, RejectsMalformedCommandLines) {
  EXPECT_EQ(Error_of({"--format", "csv"}), "no results directory given");
  EXPECT_EQ(Error_of({"a", "b", "--format", "csv"}), "more than one results directory given");
  EXPECT_EQ(Error_of({"d"}), "no --format given (graphml, json, csv or svg)");
  EXPECT_EQ(Error_of({"d", "--format"}), "--format needs a value");
  EXPECT_EQ(Error_of({"d", "--colour", "red"}), "unknown option '--colour'");
  EXPECT_EQ(Error_of({"d", "-x"}), "unknown option '-x'");
  EXPECT_EQ(Error_of({"d", "-f", "csv", "--format=json"}), "--format is given twice");
  EXPECT_EQ(Error_of({"d", "-f", "csv", "-o", ""}), "--output needs a file name");
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
