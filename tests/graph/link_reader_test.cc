#include "graph/link_reader.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cmath>
#include <cstring>
#include <filesystem>
#include <limits>
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

const double kNaN = std::numeric_limits<double>::quiet_NaN();

LinkMap Unw(const std::string& content) {
  Test_dir dir;
  Write_file(dir / "links", content);
  LinkMap links;
  Read_unw_links(dir / "links", links);
  return links;
}

LinkMap Weighted(const std::string& content, const bool lower_flag = false,
                 const double lower = 0.0, const bool upper_flag = false,
                 const double upper = 0.0) {
  Test_dir dir;
  Write_file(dir / "links", content);
  LinkMap links;
  Read_weighted_links(dir / "links", links, lower_flag, lower, upper_flag, upper);
  return links;
}

// Reads `content` with the given reader and returns the Xep_wrong_line it must throw; `links`
// receives what was read before it.
template <typename Reader>
Xep_wrong_line Wrong_line(const std::string& content, Reader reader, LinkMap& links) {
  Test_dir dir;
  Write_file(dir / "links", content);
  try {
    reader(dir / "links", links);
  } catch (const Xep_wrong_line& e) {
    return e;
  }
  ADD_FAILURE() << "no Xep_wrong_line for: " << content;
  return Xep_wrong_line("");
}

void Read_unw(const std::string& file, LinkMap& links) {
  Read_unw_links(file, links);
}
void Read_w(const std::string& file, LinkMap& links) {
  Read_weighted_links(file, links, false, 0.0, false, 0.0);
}

std::string Wrong_line_text(const std::string& line) {
  return "ERROR: Wrong line found in ' the file I was reading' :\n" + line;
}

TEST(LinkReaderErrors, TextsOfTheExceptions) {
  const Xep_read_file plain("net.txt");
  EXPECT_EQ(std::string(plain.what()),
            "ERROR: Something went wrong when trying to read from net.txt");
  EXPECT_EQ(plain.file, "net.txt");

  const Xep_read_file unnamed;
  EXPECT_EQ(std::string(unnamed.what()),
            "ERROR: Something went wrong when trying to read from  the file I was reading");
  EXPECT_EQ(unnamed.file, " the file I was reading");

  const Xep_file_not_found missing("a/b.txt");
  EXPECT_EQ(std::string(missing.what()), "ERROR : File not found: 'a/b.txt' ");
  EXPECT_EQ(missing.file, "a/b.txt");

  const Xep_wrong_line line_only("x y z");
  EXPECT_EQ(std::string(line_only.what()),
            "ERROR: Wrong line found in ' the file I was reading' :\nx y z");
  EXPECT_EQ(line_only.line, "x y z");
  EXPECT_EQ(line_only.file, " the file I was reading");

  const Xep_wrong_line with_file("q", "f.txt");
  EXPECT_EQ(std::string(with_file.what()), "ERROR: Wrong line found in 'f.txt' :\nq");
  EXPECT_EQ(with_file.file, "f.txt");

  // The hierarchy lets one handler take every reading failure.
  const std::logic_error& as_logic = with_file;
  EXPECT_EQ(std::string(as_logic.what()), "ERROR: Wrong line found in 'f.txt' :\nq");
  const Xep_read_file& as_read = missing;
  EXPECT_EQ(std::string(as_read.what()), "ERROR : File not found: 'a/b.txt' ");
}

TEST(LinkReaderErrors, WhatStaysValidInCopies) {
  const char* text = nullptr;
  std::string expected;
  {
    const Xep_wrong_line original("a line");
    const Xep_wrong_line copy = original;
    expected = original.what();
    text = copy.what();
    EXPECT_EQ(std::string(text), expected);
  }
  EXPECT_EQ(expected, Wrong_line_text("a line"));
}

TEST(LinkReader, MissingFileThrowsNotFoundAndLeavesTheLinks) {
  Test_dir dir;
  const std::string file = dir / "absent.txt";
  for (const bool weighted : {false, true}) {
    LinkMap links{{{"p", "q"}, 4.0}};
    try {
      if (weighted) {
        Read_weighted_links(file, links, false, 0, false, 0);
      } else {
        Read_unw_links(file, links);
      }
      ADD_FAILURE() << "no error";
    } catch (const Xep_file_not_found& e) {
      EXPECT_EQ(std::string(e.what()), "ERROR : File not found: '" + file + "' ");
    }
    EXPECT_EQ(links, (LinkMap{{{"p", "q"}, 4.0}}));
  }
}

TEST(LinkReader, UnreadableFileThrowsNotFound) {
  if (geteuid() == 0) GTEST_SKIP() << "root reads any file";
  Test_dir dir;
  const std::string file = dir / "secret";
  Write_file(file, "a b 1\n");
  ASSERT_EQ(chmod(file.c_str(), 0), 0);
  LinkMap links;
  EXPECT_THROW(Read_unw_links(file, links), Xep_file_not_found);
}

// A directory opens like a file but yields nothing; it must not pass as an empty link file.
TEST(LinkReader, DirectoryAsInputThrowsReadError) {
  Test_dir dir;
  std::filesystem::create_directory(dir / "sub");
  for (const bool weighted : {false, true}) {
    LinkMap links;
    try {
      if (weighted) {
        Read_weighted_links(dir / "sub", links, true, 0.5, false, 0);
      } else {
        Read_unw_links(dir / "sub", links);
      }
      ADD_FAILURE() << "no error";
    } catch (const Xep_read_file& e) {
      EXPECT_EQ(typeid(e), typeid(Xep_read_file));
      EXPECT_EQ(std::string(e.what()),
                "ERROR: Something went wrong when trying to read from " + dir / "sub");
    }
  }
}

TEST(LinkReader, InputErrorThrowsReadError) {
  // Reading this file fails with an input/output error at once.
  const std::string file = "/proc/self/mem";
  if (access(file.c_str(), R_OK) != 0) GTEST_SKIP() << "no " << file;
  LinkMap links;
  try {
    Read_unw_links(file, links);
    ADD_FAILURE() << "no error";
  } catch (const Xep_read_file& e) {
    EXPECT_EQ(typeid(e), typeid(Xep_read_file));
    EXPECT_EQ(std::string(e.what()),
              "ERROR: Something went wrong when trying to read from /proc/self/mem");
  }
}

TEST(LinkReader, EmptyAndCommentOnlyFilesGiveNoLinks) {
  EXPECT_TRUE(Unw("").empty());
  EXPECT_TRUE(Weighted("").empty());
  const std::string comments = "# header\n\n#a b 1\n\n#\n";
  EXPECT_TRUE(Unw(comments).empty());
  EXPECT_TRUE(Weighted(comments).empty());
}

TEST(LinkReader, OpenedFileClearsTheLinksFirst) {
  Test_dir dir;
  Write_file(dir / "links", "a b 1\n");
  LinkMap links{{{"old", "pair"}, 9.0}};
  Read_unw_links(dir / "links", links);
  EXPECT_EQ(links, (LinkMap{{{"a", "b"}, 0.0}}));
  links = {{{"old", "pair"}, 9.0}};
  Read_weighted_links(dir / "links", links, false, 0, false, 0);
  EXPECT_EQ(links, (LinkMap{{{"a", "b"}, 1.0}}));
}

TEST(LinkReader, RepeatedPairsAreSummedOnlyWhenWeighted) {
  const std::string content = "a b 0.5\na b 0.5\n";
  EXPECT_EQ(Weighted(content), (LinkMap{{{"a", "b"}, 1.0}}));
  EXPECT_EQ(Unw(content), (LinkMap{{{"a", "b"}, 0.0}}));
  EXPECT_EQ(Unw("a b 3\na b 7\n"), (LinkMap{{{"a", "b"}, 0.0}}));
}

TEST(LinkReader, ReversePairsStayTwoLinks) {
  EXPECT_EQ(Weighted("a b 1\nb a 2\n"), (LinkMap{{{"a", "b"}, 1.0}, {{"b", "a"}, 2.0}}));
  EXPECT_EQ(Unw("a b 1\nb a 2\n"), (LinkMap{{{"a", "b"}, 0.0}, {{"b", "a"}, 0.0}}));
}

TEST(LinkReader, SelfLinksAreDropped) {
  EXPECT_TRUE(Unw("a a 3\n").empty());
  EXPECT_TRUE(Weighted("a a 3\n").empty());
  // Dropped before the thresholds: no threshold decides about it.
  EXPECT_EQ(Weighted("x x 5\nx y 5\n", true, 1.0, true, 9.0), (LinkMap{{{"x", "y"}, 5.0}}));
  // Names are compared byte for byte.
  EXPECT_EQ(Unw("a A\n").size(), 1u);
}

TEST(LinkReader, ThresholdsAreStrictAndJudgeEachLine) {
  EXPECT_EQ(Weighted("a b 0.5\nc d 0.51\n", true, 0.5), (LinkMap{{{"c", "d"}, 0.51}}));
  EXPECT_EQ(Weighted("a b 2\nc d 1.99\n", false, 0, true, 2.0), (LinkMap{{{"c", "d"}, 1.99}}));
  // Two lines below the lower threshold add nothing although their sum would pass.
  EXPECT_TRUE(Weighted("a b 0.3\na b 0.3\n", true, 0.5).empty());
  // Each line passes the upper threshold; the sum may exceed it.
  EXPECT_EQ(Weighted("a b 1.5\na b 1.5\n", false, 0, true, 2.0), (LinkMap{{{"a", "b"}, 3.0}}));
  // A failing line of a pair leaves the passing ones alone.
  EXPECT_EQ(Weighted("a b 1\na b 7\na b 2\n", true, 0.5, true, 5.0), (LinkMap{{{"a", "b"}, 3.0}}));
}

TEST(LinkReader, LinkInInterval) {
  EXPECT_TRUE(Link_in_interval(-1e300, false, 0, false, 0));
  EXPECT_TRUE(Link_in_interval(0.6, true, 0.5, true, 0.7));
  EXPECT_FALSE(Link_in_interval(0.5, true, 0.5, false, 0));
  EXPECT_FALSE(Link_in_interval(0.7, true, 0.5, true, 0.7));
  EXPECT_FALSE(Link_in_interval(0.4, true, 0.5, true, 0.7));
  EXPECT_TRUE(Link_in_interval(100, true, 0.5, false, 0.7));
  EXPECT_TRUE(Link_in_interval(-100, false, 0.5, true, 0.7));
  EXPECT_TRUE(Link_in_interval(kNaN, false, 0, false, 0));
  EXPECT_FALSE(Link_in_interval(kNaN, true, 0, false, 0));
  EXPECT_FALSE(Link_in_interval(kNaN, false, 0, true, 1));
}

TEST(LinkReader, WrongLinesThrowTheLineAndKeepEarlierLinks) {
  LinkMap links;
  Xep_wrong_line e = Wrong_line("a b 1\nc d\ne f 2\n", Read_w, links);
  EXPECT_EQ(std::string(e.what()), Wrong_line_text("c d"));
  EXPECT_EQ(e.line, "c d");
  EXPECT_EQ(links, (LinkMap{{{"a", "b"}, 1.0}}));

  e = Wrong_line("a b\nlonely\nc d\n", Read_unw, links);
  EXPECT_EQ(std::string(e.what()), Wrong_line_text("lonely"));
  EXPECT_EQ(links, (LinkMap{{{"a", "b"}, 0.0}}));

  // Two tokens are a link for the unweighted reader but lack the weight for the weighted one.
  e = Wrong_line("lonely 1\n", Read_w, links);
  EXPECT_EQ(e.line, "lonely 1");
  e = Wrong_line("   \n", Read_unw, links);
  EXPECT_EQ(e.line, "   ");
  e = Wrong_line(" \t\n", Read_w, links);
  EXPECT_EQ(e.line, " \t");
}

TEST(LinkReader, LeadingBlankMakesHashAName) {
  EXPECT_EQ(Unw(" # x y\n"), (LinkMap{{{"#", "x"}, 0.0}}));
  EXPECT_EQ(Weighted(" #x y 2\n"), (LinkMap{{{"#x", "y"}, 2.0}}));
  EXPECT_TRUE(Unw("#x y\n").empty());
}

TEST(LinkReader, ExtraColumnsAreIgnored) {
  EXPECT_EQ(Unw("a b heavy\n"), (LinkMap{{{"a", "b"}, 0.0}}));
  EXPECT_EQ(Weighted("a b 2 note more\n"), (LinkMap{{{"a", "b"}, 2.0}}));
  EXPECT_EQ(Unw("a b 2 note\n"), (LinkMap{{{"a", "b"}, 0.0}}));
  LinkMap links;
  const Xep_wrong_line e = Wrong_line("a b heavy\n", Read_w, links);
  EXPECT_EQ(e.line, "a b heavy");
}

TEST(LinkReader, WeightIsReadAsTheStreamReadsANumber) {
  EXPECT_EQ(Weighted("a b 1.5abc\n"), (LinkMap{{{"a", "b"}, 1.5}}));
  EXPECT_EQ(Weighted("a b -2e-1\n"), (LinkMap{{{"a", "b"}, -0.2}}));
  EXPECT_EQ(Weighted("a b +3\n"), (LinkMap{{{"a", "b"}, 3.0}}));
  EXPECT_EQ(Weighted("a b .5\n"), (LinkMap{{{"a", "b"}, 0.5}}));
  EXPECT_EQ(Weighted("a b 1E2\n"), (LinkMap{{{"a", "b"}, 100.0}}));
  EXPECT_EQ(Weighted("a b 1e5x\n"), (LinkMap{{{"a", "b"}, 1e5}}));
  EXPECT_EQ(Weighted("a b 1,5\n"), (LinkMap{{{"a", "b"}, 1.0}}));
  EXPECT_EQ(Weighted("a b 1.2.3\n"), (LinkMap{{{"a", "b"}, 1.2}}));
  EXPECT_EQ(Weighted("a b 0x10\n"), (LinkMap{{{"a", "b"}, 0.0}}));
  EXPECT_EQ(Weighted("a b 1e-400\n"), (LinkMap{{{"a", "b"}, 0.0}}));
  // A started exponent without digits, a lone sign or point, words, and values beyond the
  // range of a double are not numbers.
  for (const std::string weight :
       {"1e", "1e+", "-", "+", ".", "abc", "inf", "nan", "1e400", "-1e400"}) {
    LinkMap links;
    const Xep_wrong_line e = Wrong_line("a b " + weight + "\n", Read_w, links);
    EXPECT_EQ(e.line, "a b " + weight);
    EXPECT_TRUE(links.empty());
  }
}

// The weight token must read exactly as extraction from the whole line does: same success, same
// bits. Tokens drawn from number characters and a few others hit every corner of the syntax.
TEST(LinkReader, WeightTokenMatchesStreamExtraction) {
  std::vector<std::string> tokens = {"0",
                                     "-0",
                                     "+0",
                                     "00012",
                                     "1.",
                                     ".5",
                                     "-.5e1",
                                     "1.e5",
                                     "1e",
                                     "1e+",
                                     "1e-",
                                     "1e+5",
                                     "1E-5",
                                     "e5",
                                     ".e5",
                                     "..5",
                                     "1..5",
                                     "1-2",
                                     "+-1",
                                     "-+1",
                                     "--1",
                                     "++1",
                                     "+",
                                     "-",
                                     ".",
                                     "+.",
                                     "-.",
                                     "1e400",
                                     "-1e400",
                                     "1e-400",
                                     "4.9e-324",
                                     "2.4e-324",
                                     "1e-310",
                                     "1.7976931348623157e308",
                                     "1.7976931348623159e308",
                                     "0.1",
                                     "0.30000000000000004",
                                     "123456789012345678901234567890",
                                     "9007199254740993",
                                     "1e5e5",
                                     "1.5abc",
                                     "0x1p3",
                                     "inf",
                                     "nan",
                                     "1,5",
                                     "١"};
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

TEST(LinkReader, AllCLocaleBlanksSeparateTokens) {
  EXPECT_EQ(Weighted("a\tb\t2\n"), (LinkMap{{{"a", "b"}, 2.0}}));
  EXPECT_EQ(Weighted("\v a \f\f b\r\r4\r\n"), (LinkMap{{{"a", "b"}, 4.0}}));
  EXPECT_EQ(Unw("  a   b  \n"), (LinkMap{{{"a", "b"}, 0.0}}));
}

TEST(LinkReader, CarriageReturnLineEnds) {
  EXPECT_EQ(Weighted("a b 1\r\nb c 2\r\n"), (LinkMap{{{"a", "b"}, 1.0}, {{"b", "c"}, 2.0}}));
  EXPECT_EQ(Unw("a b\r\nb c\r\n"), (LinkMap{{{"a", "b"}, 0.0}, {{"b", "c"}, 0.0}}));
  // An empty line holds a lone carriage return and is not empty.
  LinkMap links;
  const Xep_wrong_line e = Wrong_line("a b\r\n\r\nc d\r\n", Read_unw, links);
  EXPECT_EQ(e.line, "\r");
  EXPECT_EQ(std::string(e.what()), Wrong_line_text("\r"));
  EXPECT_EQ(links, (LinkMap{{{"a", "b"}, 0.0}}));
}

TEST(LinkReader, LastLineWithoutNewline) {
  EXPECT_EQ(Weighted("a b 1\nc d 2"), (LinkMap{{{"a", "b"}, 1.0}, {{"c", "d"}, 2.0}}));
  EXPECT_EQ(Unw("x y"), (LinkMap{{{"x", "y"}, 0.0}}));
}

TEST(LinkReader, NamesKeepEveryNonBlankByte) {
  const std::string accented = "\xc3\xa9t\xc3\xa9";
  const std::string high = "\xff\x80\xa0";
  const std::string with_nul = std::string("n\0ul", 4);
  EXPECT_EQ(Weighted(accented + " " + high + " 1\n" + with_nul + " b 2\n"),
            (LinkMap{{{accented, high}, 1.0}, {{with_nul, "b"}, 2.0}}));
  // Byte-wise order: upper case before lower case, high bytes last.
  const LinkMap links = Unw("b x\nB x\n\xe1 x\na x\n");
  std::string sources;
  for (const auto& [key, weight] : links) sources += key.first;
  EXPECT_EQ(sources, "Bab\xe1");
}

TEST(LinkReader, MegabyteLines) {
  const std::string long_name(1 << 20, 'x');
  EXPECT_EQ(Weighted(long_name + " b 3\n"), (LinkMap{{{long_name, "b"}, 3.0}}));
  EXPECT_EQ(Unw("a" + std::string(1 << 20, ' ') + "b\n"), (LinkMap{{{"a", "b"}, 0.0}}));
  LinkMap links;
  const Xep_wrong_line e = Wrong_line("a b\n" + long_name + "\n", Read_unw, links);
  EXPECT_EQ(e.line, long_name);
  EXPECT_EQ(std::string(e.what()), Wrong_line_text(long_name));
}

// Lines are read in blocks of a megabyte: lines cut by a block end read whole.
TEST(LinkReader, LinesAcrossBlockEnds) {
  std::string content;
  LinkMap expected;
  for (int i = 0; content.size() < 3u << 20; ++i) {
    const std::string source = "n" + std::to_string(i);
    const std::string target = std::string(i % 23, 't') + std::to_string(i);
    content += source + " " + target + (i % 7 == 0 ? "\r\n" : "\n");
    expected[{source, target}] = 0.0;
  }
  EXPECT_EQ(Unw(content), expected);
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

// Random bytes: every line that is not skipped must either read as a link or stop the read with
// the line itself in the message.
TEST(LinkReader, RandomBytesReadOrStopAtALine) {
  std::mt19937 random(2024);
  for (int round = 0; round < 20; ++round) {
    std::string content(4096 + round * 97, '\0');
    for (char& c : content) c = static_cast<char>(random() % 256);
    for (const bool weighted : {false, true}) {
      Test_dir dir;
      Write_file(dir / "links", content);
      LinkMap links;
      try {
        if (weighted) {
          Read_weighted_links(dir / "links", links, false, 0, false, 0);
        } else {
          Read_unw_links(dir / "links", links);
        }
      } catch (const Xep_wrong_line& e) {
        EXPECT_EQ(e.line.find('\n'), std::string::npos);
        EXPECT_NE(content.find(e.line), std::string::npos);
        // what() is a C string: a NUL byte of the line ends the text there.
        const std::string full = Wrong_line_text(e.line);
        EXPECT_EQ(std::string(e.what()), full.substr(0, full.find('\0')));
      }
      for (const auto& [key, weight] : links) {
        EXPECT_NE(key.first, key.second);
        EXPECT_FALSE(key.first.empty());
        EXPECT_FALSE(key.second.empty());
      }
    }
  }
  // A known binary line: a lone token of control bytes.
  LinkMap links;
  const std::string binary("\x01\x02\x7f\x00", 4);
  const Xep_wrong_line e = Wrong_line(binary + "\n", Read_unw, links);
  EXPECT_EQ(e.line, binary);
}

}  // namespace
}  // namespace kcp
