// Small builders and text helpers shared by the clique tests: link maps written as "a-b" words,
// the underlined progress block the searches print, a filter for the console lines that start
// with given words, and the scripted clocks of the time-limited searches.
#pragma once

#include <ctime>
#include <initializer_list>
#include <memory>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "core/types.h"

namespace kcp::testing {

// "1-2 2-3 1-3": each word a-b becomes the key (a, b) with weight 1.
inline IndexLinkMap Links(const std::string& text) {
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

// Readings of the clocks below, shared by the copies the searches make of them.
struct ReadingCount {
  int processor = 0;
  int monotonic = 0;
};

// A processor clock that gains one second at every reading except the listed ones (counted from
// 1), where it stands still: against a limit below a second every check after a node's start
// exceeds it unless the check is a listed reading.
inline auto Racing_clock(const std::shared_ptr<ReadingCount>& count, std::set<int> still = {}) {
  auto ticks = std::make_shared<std::clock_t>(0);
  return [=] {
    if (still.count(++count->processor) == 0) *ticks += 1000000;
    return *ticks;
  };
}

// A processor clock that gains a whole second at a random half of its readings (seeded), so
// against a limit of 0.5 s some checks find it exceeded and others do not.
inline auto Dice_clock(const std::uint32_t& seed, const std::shared_ptr<ReadingCount>& count) {
  auto ticks = std::make_shared<std::clock_t>(0);
  auto random = std::make_shared<std::mt19937>(seed);
  return [=] {
    ++count->processor;
    if ((*random)() % 2 == 0) *ticks += 1000000;
    return *ticks;
  };
}

// A processor clock that never moves.
inline auto Stopped_clock(const std::shared_ptr<ReadingCount>& count) {
  return [=] {
    ++count->processor;
    return std::clock_t{4000000};
  };
}

// A monotonic clock that jumps by 10^6 s at every reading (it never rules a check out), or that
// stands still (it rules every check out).
inline auto Monotonic_clock(const std::shared_ptr<ReadingCount>& count, const bool& jumping) {
  return [=] { return jumping ? 1e6 * ++count->monotonic : (++count->monotonic, 5.0); };
}

}  // namespace kcp::testing
