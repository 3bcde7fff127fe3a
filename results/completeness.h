// Whether a results directory holds everything its run writes. A finished run leaves the clique
// file and a "k=" directory for each k it extracted: every k from the largest clique size down
// to 3, or the one k of a run at a fixed k. Each "k=" directory holds the communities, their
// links, their cliques (the k-cliques in an intensity run), the community graph and the four
// distributions, either plain or as merged, exact and approximate ones. Every one of these files
// starts with a header line, so an empty one was cut short too. An interrupted run leaves some
// of them missing or empty; Missing_results names each such item, in the order the run writes.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace kcp {

struct ResultsLayout {
  std::string dir;
  // "", "directed" or "intensity".
  std::string flavour;
  // The run description the files repeat (tells a run at a fixed k).
  std::string alap_szoveg;
  // The largest clique of the clique file; unset when the clique file is missing or empty.
  std::optional<std::uint32_t> largest_clique;
  bool clique_file_present = false;
};

// Items as "cliques", "k=5/communities_links (empty)" or "k=4 (no directory)". With only_k set,
// only that k's directory is examined besides the clique file.
std::vector<std::string> Missing_results(const ResultsLayout& found,
                                         const std::optional<std::uint32_t>& only_k);

// The k values the run extracted, descending: the fixed k of its description, else every k
// from the largest clique down to 3.
std::vector<std::uint32_t> Extracted_ks(const std::string& alap_szoveg,
                                        const std::optional<std::uint32_t>& largest_clique);

// The files a complete "k=" directory of the flavour holds, without the distributions.
std::vector<std::string> K_dir_files(const std::string& flavour);

// One line naming the first items of `missing` and how many more there are.
std::string Missing_summary(const std::vector<std::string>& missing);

}  // namespace kcp
