#include "graph/link_reader.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstring>
#include <filesystem>
#include <optional>
#include <random>
#include <sstream>
#include <string>
#include <typeinfo>
#include <vector>

#include "tests/support/test_dir.h"

namespace kcp {
namespace {

using testing::Test_dir;
using testing::Write_file;

struct Thresholds {
  bool lower_flag = false;
  double lower = 0.0;
  bool upper_flag = false;
  double upper = 0.0;
};

// What a read gives: the links, and the wrong line it stopped at (if any).
struct Outcome {
  LinkMap links;
  std::optional<std::string> wrong_line;
  bool operator==(const Outcome&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Outcome& o) {
  for (const auto& [key, w] : o.links)
    out << "[" << key.first << " " << key.second << " " << w << "]";
  if (o.wrong_line) out << " stopped at '" << *o.wrong_line << "'";
  return out;
}

Outcome Read(const std::string& content, const bool weighted, const Thresholds& t = {}) {
  Test_dir dir;
  Write_file(dir / "links", content);
  Outcome o;
  try {
    if (weighted) {
      Read_weighted_links(dir / "links", o.links, t.lower_flag, t.lower, t.upper_flag, t.upper);
    } else {
      Read_unw_links(dir / "links", o.links);
    }
  } catch (const Xep_wrong_line& e) {
    o.wrong_line = e.line;
    EXPECT_EQ(std::string(e.what()),
              ("ERROR: Wrong line found in ' the file I was reading' :\n" + e.line).c_str());
  }
  return o;
}

// The reading rules written plainly: a line that is empty or starts with '#' is skipped; the
// first two blank-separated words name the link, and the weighted reader reads a third as the
// stream reads a number; a link from a node to itself is dropped; each weighted line must lie
// strictly between the thresholds given, and the weights of a repeated pair add up.
Outcome Reference(const std::string& content, const bool weighted, const Thresholds& t = {}) {
  Outcome o;
  std::size_t from = 0;
  while (from < content.size()) {
    std::size_t end = content.find('\n', from);
    if (end == std::string::npos) end = content.size();
    const std::string line = content.substr(from, end - from);
    from = end + 1;
    if (line.empty() || line[0] == '#') continue;
    std::istringstream in(line);
    std::string source, target;
    double w = 0.0;
    if (!(in >> source >> target) || (weighted && !(in >> w))) {
      o.wrong_line = line;
      return o;
    }
    if (source == target) continue;
    if (!weighted) {
      o.links[{source, target}] = 0.0;
    } else if ((!t.lower_flag || w > t.lower) && (!t.upper_flag || w < t.upper)) {
      o.links[{source, target}] += w;
    }
  }
  return o;
}

TEST(LinkReader, FollowsTheReadingRulesOnRandomFiles) {
  const std::vector<std::string> words = {"a", "b",   "c",     "#",        "#x",
                                          "1", "0.5", "-2e-1", "3x",       "1e",
                                          ".", "+4",  "2.5",   "\xc3\xa9", std::string("n\0", 2)};
  const std::vector<std::string> blanks = {" ", "  ", "\t", "\v", "\f", "\r"};
  const std::vector<Thresholds> thresholds = {
      {}, {true, 0.5}, {false, 0, true, 2.5}, {true, -1, true, 1}};
  std::mt19937 random(4242);
  int wrong = 0, read = 0;
  for (int round = 0; round < 600; ++round) {
    std::string content;
    const int lines = 1 + random() % 8;
    for (int l = 0; l < lines; ++l) {
      if (random() % 3 == 0) content += blanks[random() % blanks.size()];
      const int count = random() % 10 == 0 ? random() % 2 : 2 + random() % 3;
      for (int w = 0; w < count; ++w) {
        if (w > 0) content += blanks[random() % blanks.size()];
        content += words[random() % words.size()];
      }
      if (l + 1 < lines || random() % 2 == 0) content += random() % 4 == 0 ? "\r\n" : "\n";
    }
    for (const bool weighted : {false, true}) {
      const Thresholds& t = thresholds[random() % thresholds.size()];
      const Outcome expected = Reference(content, weighted, t);
      ASSERT_EQ(Read(content, weighted, t), expected) << "weighted " << weighted << ": " << content;
      (expected.wrong_line ? wrong : read) += 1;
    }
  }
  // Both kinds of outcome were met often.
  EXPECT_GT(wrong, 100);
  EXPECT_GT(read, 100);
}

TEST(LinkReader, LongLinesAndLinesAcrossBlockEnds) {
  const std::string long_name(1 << 20, 'x');
  std::string content = long_name + " b 3\n" + "a" + std::string(1 << 20, ' ') + "b 1\n";
  // Lines are read in blocks of a megabyte: lines cut by a block end read whole.
  for (int i = 0; content.size() < 3u << 20; ++i) {
    content += "n" + std::to_string(i) + " " + std::string(i % 23, 't') + std::to_string(i) +
               (i % 7 == 0 ? " 1\r\n" : " 1\n");
  }
  content += "last line 2";
  EXPECT_EQ(Read(content, true), Reference(content, true));
  EXPECT_EQ(Read(content + "\n" + long_name, false).wrong_line, long_name);
}

TEST(LinkReaderErrors, TextsOfTheExceptions) {
  EXPECT_STREQ(Xep_read_file("net.txt").what(),
               "ERROR: Something went wrong when trying to read from net.txt");
  EXPECT_STREQ(Xep_read_file().what(),
               "ERROR: Something went wrong when trying to read from  the file I was reading");
  EXPECT_STREQ(Xep_file_not_found("a/b.txt").what(), "ERROR : File not found: 'a/b.txt' ");
  EXPECT_STREQ(Xep_wrong_line("q", "f.txt").what(), "ERROR: Wrong line found in 'f.txt' :\nq");
  // what() stays valid in a copy that outlives the original.
  std::optional<Xep_wrong_line> copy;
  {
    const Xep_wrong_line original("a line");
    copy.emplace(original);
  }
  EXPECT_STREQ(copy->what(), "ERROR: Wrong line found in ' the file I was reading' :\na line");
}

// A missing file, a directory (which opens but yields nothing) and a file that fails to read
// are errors, never an empty link file; the links are left alone when the file does not open.
TEST(LinkReader, FilesThatCannotBeReadAreErrors) {
  Test_dir dir;
  std::filesystem::create_directory(dir / "sub");
  for (const bool weighted : {false, true}) {
    const auto read = [&](const std::string& file, LinkMap& links) {
      if (weighted) {
        Read_weighted_links(file, links, true, 0.5, false, 0);
      } else {
        Read_unw_links(file, links);
      }
    };
    LinkMap links{{{"p", "q"}, 4.0}};
    try {
      read(dir / "absent", links);
      ADD_FAILURE() << "no error";
    } catch (const Xep_file_not_found& e) {
      EXPECT_EQ(std::string(e.what()), "ERROR : File not found: '" + dir / "absent" + "' ");
    }
    EXPECT_EQ(links, (LinkMap{{{"p", "q"}, 4.0}}));
    for (const std::string& file : {dir / "sub", std::string("/proc/self/mem")}) {
      if (access(file.c_str(), R_OK) != 0) continue;
      try {
        read(file, links);
        ADD_FAILURE() << "no error for " << file;
      } catch (const Xep_read_file& e) {
        EXPECT_EQ(typeid(e), typeid(Xep_read_file));
        EXPECT_EQ(std::string(e.what()),
                  "ERROR: Something went wrong when trying to read from " + file);
      }
    }
  }
}

// The weight token must read exactly as extraction from the whole line does: same success, same
// bits. Tokens drawn from number characters and a few others hit every corner of the syntax.
TEST(LinkReader, WeightTokenMatchesStreamExtraction) {
  // Fixed corners of the syntax, then random tokens of number characters and a few others.
  std::vector<std::string> tokens;
  std::istringstream list(
      "0 -0 +0 00012 1. .5 -.5e1 1.e5 1e 1e+ 1e- 1e+5 1E-5 e5 .e5 ..5 1..5 1-2 +-1 -+1 --1 ++1 + - "
      ". +. -. 1e400 -1e400 1e-400 4.9e-324 2.4e-324 1e-310 1.7976931348623157e308 "
      "1.7976931348623159e308 0.1 0.30000000000000004 123456789012345678901234567890 "
      "9007199254740993 1e5e5 1.5abc 0x1p3 inf nan 1,5 ١");
  for (std::string token; list >> token;) tokens.push_back(token);
  std::mt19937 random(77);
  const std::string alphabet = "0123456789.eE+-x";
  for (int i = 0; i < 20000; ++i) {
    std::string token(1 + random() % 9, ' ');
    for (char& c : token) c = alphabet[random() % alphabet.size()];
    tokens.push_back(token);
  }
  for (int i = 0; i < 2000; ++i) {
    std::string token = std::to_string(random()) + "." + std::to_string(random()) + "e" +
                        std::to_string(static_cast<int>(random() % 700) - 350);
    tokens.push_back(token);
  }
  for (const std::string& token : tokens) {
    std::istringstream line("a b " + token);
    std::string source;
    std::string target;
    double expected = 0.0;
    line >> source >> target >> expected;
    double weight = -7.0;
    const bool read = Read_weight_token(token, weight);
    ASSERT_EQ(read, !line.fail()) << token;
    if (read) {
      ASSERT_EQ(std::memcmp(&weight, &expected, sizeof weight), 0) << token;
    } else {
      ASSERT_EQ(weight, -7.0) << token;
    }
  }
}

// An input without line ends, endless or not a link file at all, stops at the first line that
// outgrows any link file instead of filling the memory.
TEST(LinkReader, EndlessLineIsRefused) {
  LinkMap links;
  try {
    Read_unw_links("/dev/zero", links);
    ADD_FAILURE() << "no exception";
  } catch (const Xep_line_too_long& e) {
    EXPECT_STREQ(e.what(),
                 "ERROR: Line 1 of '/dev/zero' is longer than 268435456 bytes: this is not a "
                 "link file.");
  }
}

}  // namespace
}  // namespace kcp
