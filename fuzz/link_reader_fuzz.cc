// Fuzz target: the link readers. The first byte chooses the reader and the thresholds in force;
// with thresholds the next sixteen bytes are their values. The rest is the link file. A reader
// either reads every line or stops with one of its own exceptions; what it keeps must be links
// between two different, non-empty names, weighted 0 by the unweighted reader.
#include <cstdlib>
#include <cstring>

#include "fuzz/fuzz_files.h"
#include "graph/link_reader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kcp;
  if (size < 1) return 0;
  const std::uint8_t mode = data[0];
  std::string_view rest(reinterpret_cast<const char*>(data) + 1, size - 1);
  const bool weighted = (mode & 1) != 0;
  const bool lower_flag = weighted && (mode & 2) != 0;
  const bool upper_flag = weighted && (mode & 4) != 0;
  double lower = 0.0;
  double upper = 0.0;
  if (lower_flag || upper_flag) {
    if (rest.size() < 16) return 0;
    std::memcpy(&lower, rest.data(), 8);
    std::memcpy(&upper, rest.data() + 8, 8);
    rest.remove_prefix(16);
  }
  if ((mode & 8) != 0) {
    // The weight token alone, as the weighted reader reads a third column.
    double weight = 0.0;
    Read_weight_token(rest, weight);
    return 0;
  }
  const std::string path = fuzz::Write_scratch("links", rest);
  LinkMap links;
  try {
    if (weighted) {
      Read_weighted_links(path, links, lower_flag, lower, upper_flag, upper);
    } else {
      Read_unw_links(path, links);
    }
  } catch (const Xep_read_file&) {
  }
  for (const auto& [pair, weight] : links) {
    if (pair.first.empty() || pair.second.empty() || pair.first == pair.second) std::abort();
    if (!weighted && weight != 0.0) std::abort();
  }
  return 0;
}
