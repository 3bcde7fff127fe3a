// Reads the community graph file (graph_of_[flag_]communities) and the distribution files
// ([flag_]<stem><suffix>: membership, size, overlap and degree distributions, with the suffix
// "", "_merged", "_exact" or "_appr") of one k. Community numbers in the graph are positions,
// approximate ones behind "-"; entries and distribution values ascend as the writers put them.
// Each reader returns what the run's writer takes. Throws Xerror_msg naming the file and line;
// given cut_files, a file cut inside its last line is read without that line (see
// LineTokeniser), and a distribution file so cut lacks its closing empty line too.
#pragma once

#include <cstdint>
#include <string>

#include "core/types.h"
#include "results/line_tokeniser.h"

namespace kcp {

// What Kiir_com_graph_VN takes. The file does not say how many communities are exact: the
// smallest marked position is taken, or one past the largest position when none is marked.
struct CommunityGraphFile {
  std::string flag;
  std::uint32_t k = 0;
  std::string alap_szoveg;
  CommunityGraph graph;
  std::uint32_t n_exact_coms = 0;
};

// What Kiir_VN_dist takes (path aside), and what Kiir_stats_VN takes for one of its four files.
struct DistributionFile {
  std::string flag;
  std::uint32_t k = 0;
  // "membership_distribution", "size_distribution", "overlap_distribution" or
  // "degree_distribution", and the suffix as the header writes it.
  std::string stem;
  std::string suffix;
  std::string alap_szoveg;
  // The header text Kiir_VN_dist takes.
  std::string header;
  Distribution distribution;
};

CommunityGraphFile Read_community_graph_file(const std::string& path,
                                             CutFiles* cut_files = nullptr);
DistributionFile Read_distribution_file(const std::string& path, CutFiles* cut_files = nullptr);

}  // namespace kcp
