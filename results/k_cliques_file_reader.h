// Reads the k-cliques file of an intensity run ("k-cliques" in the directory of one k): the
// k-cliques that passed the intensity threshold, numbered 0, 1, ... in ascending order of their
// node indices, each "n: " and its member names. With a locked numbering (that of the graph
// file) that order is checked; a k-clique listed twice fails in any case. Throws Xerror_msg
// naming the file and line on a bad file; given cut_files, a file cut inside its last line is
// read without that line (see LineTokeniser).
#pragma once

#include <cstdint>
#include <string>

#include "core/types.h"
#include "results/line_tokeniser.h"
#include "results/node_numbering.h"

namespace kcp {

// What Kiir_k_cliques_VN takes.
struct KCliquesFile {
  std::uint32_t k = 0;
  std::string alap_szoveg;
  KCliqueSet k_cliques;
};

KCliquesFile Read_k_cliques_file(const std::string& path, NodeNumbering& numbering,
                                 CutFiles* cut_files = nullptr);

}  // namespace kcp
