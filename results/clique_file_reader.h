// Reads the clique file of a run ("cliques", or "directed_cliques" for a directed run; an
// intensity run writes the plain one): one clique a line, "p: " and the member names, exact
// cliques numbered 0, 1, ... first, then the approximate ones as "-p" (the first of them "-0"
// when no clique is exact), announced by the header line "# Negative indices indicate
// approximate cliques.". Members are taken through `numbering`: a name it does not know and
// cannot add fails. Throws Xerror_msg naming the file and line on a bad file; given cut_files,
// a file cut inside its last line is read without that line (see LineTokeniser).
#pragma once

#include <cstdint>
#include <string>

#include "core/types.h"
#include "results/line_tokeniser.h"
#include "results/node_numbering.h"

namespace kcp {

// What Kiir_cliques_VN takes.
struct CliqueFile {
  // "" or "directed".
  std::string flag;
  std::string alap_szoveg;
  // Members in file order.
  CliqueList cliques;
  std::uint32_t n_exact = 0;
};

CliqueFile Read_clique_file(const std::string& path, NodeNumbering& numbering,
                            CutFiles* cut_files = nullptr);

}  // namespace kcp
