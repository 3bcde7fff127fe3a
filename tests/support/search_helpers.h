// Small builders and text helpers shared by the clique and community tests: link maps written as
// pairs, overlap rows written as (clique, shared) pairs, the underlined progress block the
// searches print, and a filter for the console lines that start with given words.
#pragma once

#include <initializer_list>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "core/types.h"

namespace kcp::testing {

// Each pair (a, b) becomes the key (a, b) with weight 1, as written.
inline IndexLinkMap Links(std::initializer_list<std::pair<NodeIndex, NodeIndex>> pairs) {
  IndexLinkMap links;
  for (const auto& [a, b] : pairs) links[{a, b}] = 1.0;
  return links;
}

// The same from a text of "a-b" words separated by blanks: "1-2 2-3 1-3".
inline IndexLinkMap Parse_links(const std::string& text) {
  IndexLinkMap links;
  std::istringstream in(text);
  NodeIndex a = 0;
  NodeIndex b = 0;
  char dash = 0;
  while (in >> a >> dash >> b) links[{a, b}] = 1.0;
  return links;
}

// Links every ordered pair of distinct nodes of the list.
inline void Both_ways(IndexLinkMap& links, std::initializer_list<NodeIndex> nodes) {
  for (const NodeIndex a : nodes) {
    for (const NodeIndex b : nodes) {
      if (a != b) links[{a, b}] = 1.0;
    }
  }
}

inline OverlapRow Row(std::initializer_list<std::pair<std::uint32_t, std::uint32_t>> entries) {
  OverlapRow row;
  for (const auto& [clique, shared] : entries) row.push_back(Overlap{clique, shared});
  return row;
}

// A header underlined by as many underscores as it is long, then the count line.
inline std::string Block(const std::string& header, const std::string& count_line) {
  return std::string(header.size(), '_') + "\n" + header + "\n" + count_line + "\n";
}

inline std::vector<std::string> Lines_starting(const std::string& text,
                                               std::initializer_list<std::string> starts) {
  std::vector<std::string> lines;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) {
    for (const std::string& start : starts) {
      if (line.rfind(start, 0) == 0) lines.push_back(line);
    }
  }
  return lines;
}

// The last `size` characters of `text`, or all of it when shorter.
inline std::string Tail(const std::string& text, const std::size_t& size) {
  return text.size() <= size ? text : text.substr(text.size() - size);
}

}  // namespace kcp::testing
