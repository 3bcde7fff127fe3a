// The graph layer: reading link files, numbering the nodes, the vertex maps. The end-to-end cases
// show the graph file (weights in the stream's six-digit form, both directions).
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <map>
#include <optional>
#include <random>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

#include "core/xerror_msg.h"
#include "graph/link_reader.h"
#include "graph/node_index.h"
#include "graph/vertex_map.h"
#include "tests/support/test_dir.h"
#include "tests/support/thrown.h"

namespace kcp {
namespace {

using testing::What;

using testing::TestDir;
using testing::Write_file;

using Thresholds = std::tuple<bool, double, bool, double>;  // lower flag and value, upper ones

// The links (in key order, exact weights) and the wrong line the read stopped at, if any.
std::string Show(const LinkMap& links, const std::string& wrong_line) {
  std::ostringstream out;
  for (const auto& [key, w] : links)
    out << key.first << " " << key.second << std::hexfloat << " " << w << "\n";
  return out.str() + wrong_line;
}

std::string Read(const std::string& content, const bool weighted, const Thresholds& t = {}) {
  TestDir dir;
  Write_file(dir / "links", content);
  LinkMap links;
  try {
    const auto& [lower_flag, lower, upper_flag, upper] = t;
    if (weighted) Read_weighted_links(dir / "links", links, lower_flag, lower, upper_flag, upper);
    if (!weighted) Read_unw_links(dir / "links", links);
  } catch (const Xep_wrong_line& e) {
    EXPECT_STREQ(e.what(),
                 ("ERROR: Wrong line found in ' the file I was reading' :\n" + e.line).c_str());
    return Show(links, "stopped at '" + e.line + "'");
  }
  return Show(links, "");
}

// The reading rules written plainly: a line that is empty or starts with '#' is skipped; the
// first two blank-separated words name the link, and the weighted reader reads a third as the
// stream reads a number; a link from a node to itself is dropped; each weighted line must lie
// strictly between the thresholds given, and the weights of a repeated pair add up.
std::string Reference(const std::string& content, const bool weighted, const Thresholds& t = {}) {
  const auto& [lower_flag, lower, upper_flag, upper] = t;
  LinkMap links;
  std::istringstream lines(content);
  for (std::string line; std::getline(lines, line);) {
    if (line.empty() || line[0] == '#') continue;
    std::istringstream in(line);
    std::string source, target;
    double w = 0.0;
    if (!(in >> source >> target) || (weighted && !(in >> w))) {
      return Show(links, "stopped at '" + line + "'");
    }
    if (source == target) continue;
    if (!weighted) links[{source, target}] = 0.0;
    if (weighted && (!lower_flag || w > lower) && (!upper_flag || w < upper)) {
      links[{source, target}] += w;
    }
  }
  return Show(links, "");
}

TEST(LinkReader, FollowsTheReadingRulesOnRandomFiles) {
  std::vector<std::string> words = {"a",     "b",  "c",  "#", "#x", "1",   "0.5",
                                    "-2e-1", "3x", "1e", ".", "+4", "2.5", "n"};
  // Bytes beyond ASCII, a NUL, and names sharing their first eight bytes.
  for (const std::string word :
       {"\xc3\xa9", "\xc3\xb1", "n\xff", "name_0001", "name_00012", "name_0001\xff"}) {
    words.push_back(word);
  }
  words.push_back(std::string("n\0", 2));
  const std::vector<std::string> blanks = {" ", "  ", "\t", "\v", "\f", "\r"};
  const std::vector<Thresholds> thresholds = {
      {}, {true, 0.5, false, 0}, {false, 0, true, 2.5}, {true, -1, true, 1}};
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
      const std::string expected = Reference(content, weighted, t);
      ASSERT_EQ(Read(content, weighted, t), expected) << "weighted " << weighted << ": " << content;
      (expected.ends_with("'") ? wrong : read) += 1;
    }
  }
  EXPECT_TRUE(wrong > 100 && read > 100) << "both kinds of outcome were met often";
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
  EXPECT_TRUE(Read(content + "\n" + long_name, false).ends_with("'" + long_name + "'"));
}

// A missing file, a directory (which opens but yields nothing), a file that fails to read and
// an input whose first line outgrows any link file are errors, never an empty link file; the
// links are left alone when the file does not open.
TEST(LinkReader, FilesThatCannotBeReadAreErrors) {
  TestDir dir;
  std::filesystem::create_directory(dir / "sub");
  LinkMap links{{{"p", "q"}, 4.0}};
  EXPECT_EQ(What<Xep_file_not_found>([&] { Read_weighted_links(dir / "no", links, 1, 0, 0, 0); }),
            "ERROR : File not found: '" + dir / "no" + "' ");
  EXPECT_EQ(links, (LinkMap{{{"p", "q"}, 4.0}}));
  for (const std::string& file : {dir / "sub", std::string("/proc/self/mem")}) {
    if (access(file.c_str(), R_OK) != 0) continue;
    EXPECT_EQ(What<Xep_read_file>([&] { Read_unw_links(file, links); }),
              "ERROR: Something went wrong when trying to read from " + file);
  }
  EXPECT_EQ(What<Xep_line_too_long>([&] { Read_unw_links("/dev/zero", links); }),
            "ERROR: Line 1 of '/dev/zero' is longer than 268435456 bytes: this is not a link "
            "file.");
  // what() stays valid in a copy that outlives the original.
  std::optional<Xep_wrong_line> copy;
  copy.emplace(Xep_wrong_line("a line", "f.txt"));
  EXPECT_STREQ(copy->what(), "ERROR: Wrong line found in 'f.txt' :\na line");
}

// Only a whole leading sequence of a compressed format refuses the file; a name that merely
// begins like one is read as a link.
TEST(LinkReader, RefusesCompressedFilesByTheirWholeLeadingBytes) {
  TestDir dir;
  const std::pair<std::string, std::string> refused[] = {
      {std::string("\x1f\x8b\x08\0", 4),
       "a gzip file, not a link file: decompress it first, "
       "for example with gunzip."},
      {"BZh11AY&SY x",
       "a bzip2 file, not a link file: decompress it first, for example with "
       "bunzip2."},
      {std::string("\xfd"
                   "7zXZ\0\0",
                   8),
       "a xz file, not a link file: decompress it first, "
       "for example with unxz."},
      {"\x28\xb5\x2f\xfd$",
       "a zstd file, not a link file: decompress it first, for example with "
       "unzstd."},
      {"PK\x03\x04\n\0",
       "a zip file, not a link file: decompress it first, for example with "
       "unzip."}};
  for (const auto& [start, message] : refused) {
    Write_file(dir / "f", start + "\na b\n");
    LinkMap links{{{"p", "q"}, 4.0}};
    EXPECT_EQ(What<Xep_compressed_file>([&] { Read_unw_links(dir / "f", links); }),
              "ERROR: '" + dir / "f" + "' is " + message);
    EXPECT_TRUE(links.empty());
  }
  const std::string near_misses = "BZh01AY&SY a\nBZh9 b\nPK c\n\x1f d\nPK\x03 e\n";
  const std::string read = Read(near_misses, false);
  EXPECT_EQ(read, Reference(near_misses, false));
  EXPECT_EQ(std::count(read.begin(), read.end(), '\n'), 5) << read;
}

// The weight token must read exactly as extraction from the whole line does: same success, same
// bits. Tokens drawn from number characters and a few others hit every corner of the syntax.
TEST(LinkReader, WeightTokenMatchesStreamExtraction) {
  std::vector<std::string> tokens;
  std::istringstream list(
      "0 -0 +0 00012 1. .5 -.5e1 1.e5 1e 1e+ 1e- 1e+5 1E-5 e5 .e5 ..5 1..5 1-2 +-1 -+1 --1 ++1 + - "
      ". +. -. 1e400 -1e400 1e-400 4.9e-324 2.4e-324 1e-310 1.7976931348623157e308 "
      "1.7976931348623159e308 0.1 0.30000000000000004 123456789012345678901234567890 "
      "9007199254740993 1e5e5 1.5abc 0x1p3 inf nan 1,5 ١");
  for (std::string token; list >> token;) tokens.push_back(token);
  std::mt19937 random(77);
  for (int i = 0; i < 22000; ++i) {
    std::string token(1 + random() % 9, ' ');
    for (char& c : token) c = "0123456789.eE+-x"[random() % 16];
    if (i % 10 == 0) {
      token = std::to_string(random()) + "." + std::to_string(random()) + "e" +
              std::to_string(static_cast<int>(random() % 700) - 350);
    }
    tokens.push_back(token);
  }
  for (const std::string& token : tokens) {
    std::istringstream line("a b " + token);
    std::string source, target;
    double expected = 0.0, weight = -7.0;
    line >> source >> target >> expected;
    ASSERT_EQ(Read_weight_token(token, weight), !line.fail()) << token;
    if (line.fail()) expected = -7.0;
    ASSERT_EQ(std::memcmp(&weight, &expected, sizeof weight), 0) << token;
  }
}

// Names numbered from 1 by first appearance over the links in key order (source, then target);
// undirected, a link and its reverse fold into one, smaller index first, weights added.
void Reference(const LinkMap& links, const bool directed, IndexLinkMap& out, NameMap& names) {
  std::map<std::string, NodeIndex> index;
  const auto number = [&](std::string_view name) {
    const auto [at, inserted] =
        index.emplace(std::string(name), static_cast<NodeIndex>(index.size() + 1));
    if (inserted) names.emplace(at->second, name);
    return at->second;
  };
  for (const auto& [key, weight] : links) {
    NodeIndex s = number(key.first), t = number(key.second);
    if (!directed && t < s) std::swap(s, t);
    out[{s, t}] += weight;
  }
}

TEST(NodeIndex, NumbersByFirstAppearanceAndFoldsReciprocalLinksWhenUndirected) {
  const std::string pool[] = {"k", "B", "z", "a", "#", "m", "\xc3\xa9", "b"};
  std::mt19937 random(99);
  for (int round = 0; round < 300; ++round) {
    LinkMap links;
    for (int l = random() % 15; l > 0; --l) {
      const std::string &s = pool[random() % 8], &t = pool[random() % 8];
      if (s != t) links[{s, t}] = random() % 2 == 0 ? 0.0 : 0.5 * (1 + random() % 4);
    }
    for (const bool directed : {false, true}) {
      IndexLinkMap out{{{40, 50}, 1.0}}, expected_out;  // stale content is cleared
      NameMap names{{1, "old"}}, expected_names;
      Convert_s_links(out, names, links, directed);
      Reference(links, directed, expected_out, expected_names);
      ASSERT_EQ(names, expected_names) << "round " << round;
      ASSERT_EQ(out, expected_out) << "round " << round << " directed " << directed;
    }
  }
}

// The nodes by ascending size of their set, ties by index.
NodeOrder Order_by(const std::map<NodeIndex, NodeSet>& sets, const std::vector<NodeIndex>& nodes) {
  NodeOrder order(nodes.begin(), nodes.end());
  std::stable_sort(order.begin(), order.end(), [&](NodeIndex a, NodeIndex b) {
    const std::size_t sa = sets.count(a) ? sets.at(a).size() : 0;
    const std::size_t sb = sets.count(b) ? sets.at(b).size() : 0;
    return sa != sb ? sa < sb : a < b;
  });
  return order;
}

TEST(VertexMap, RecordsAndOrdersFollowTheLinksOnRandomGraphs) {
  std::mt19937 random(31);
  for (int round = 0; round < 200; ++round) {
    IndexLinkMap undirected, directed;
    std::map<NodeIndex, NodeSet> neighs, out, in, all;
    for (int l = random() % 20; l > 0; --l) {
      const NodeIndex a = 1 + random() % 9, b = 1 + random() % 9;
      if (a == b) continue;
      directed[{a, b}] = 1.0;
      out[a].insert(b), in[b].insert(a), all[a].insert(b), all[b].insert(a);
      undirected[{std::min(a, b), std::max(a, b)}] = 0.5;
      neighs[a].insert(b), neighs[b].insert(a);
    }
    std::vector<NodeIndex> nodes;
    for (const auto& [n, set] : all) nodes.push_back(n);

    VtxMap vertices{{42, Vtx(42)}};  // stale content is cleared
    Vtx_map_from_link_map(vertices, undirected);
    ASSERT_EQ(vertices.size(), nodes.size());
    for (const NodeIndex n : nodes) {
      ASSERT_TRUE(vertices.at(n).Index() == n && vertices.at(n).Inc_neighs_c().empty()) << n;
      ASSERT_EQ(vertices.at(n).Neighs_c(), neighs[n]) << "round " << round;
    }
    NodeOrder order{9, 9, 9};
    Sort_Vtx_map(order, vertices);
    ASSERT_EQ(order, Order_by(neighs, nodes)) << "round " << round;

    VtxdMap dvertices{{42, Vtxd(42)}};
    Dir_vtx_map_from_link_map(dvertices, directed);
    ASSERT_EQ(dvertices.size(), nodes.size());
    for (const NodeIndex n : nodes) {
      const Vtxd& v = dvertices.at(n);
      ASSERT_EQ(std::tie(v.Oneighs_c(), v.Ineighs_c(), v.Neighs_c()),
                std::tie(out[n], in[n], all[n]));
    }
    for (const auto& [flag, sets] :
         {std::pair{"Oneighs", &out}, {"Ineighs", &in}, {"Neighs", &all}}) {
      Sort_dir_vtx_map(order, dvertices, flag);
      ASSERT_EQ(order, Order_by(*sets, nodes)) << flag << " round " << round;
    }
  }
}

TEST(VertexMap, MisuseIsRefusedWithItsMessageAndLeavesTheOrder) {
  VtxMap vertices;
  EXPECT_EQ(What<Xerror_msg>([&] {
              Vtx_map_from_link_map(vertices, IndexLinkMap{{{1, 2}, 0}, {{2, 1}, 0}});
            }),
            "ERROR: Vtx::Add_neigh() : attempt to add already exisiting neigh. ");
  VtxdMap directed;
  Dir_vtx_map_from_link_map(directed, IndexLinkMap{{{1, 2}, 0.0}});
  for (const std::string flag : {"neighs", "", "Neighs ", "NEIGHS"}) {
    NodeOrder order{7, 8};
    EXPECT_EQ(What<Xerror_msg>([&] { Sort_dir_vtx_map(order, directed, flag); }),
              " Invalid flag '" + flag + "' given in Sort_vtxd_gmap...\n");
    EXPECT_EQ(order, (NodeOrder{7, 8}));
  }
}

}  // namespace
}  // namespace kcp
