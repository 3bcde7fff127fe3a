// Writes the clique file of a run: "cliques", or "<flag>_cliques" for a directed run (an
// intensity run shares the plain file). One clique a line, "<position>: " and the member names
// in ascending index order, each followed by a blank; approximate cliques (positions n_exact on)
// carry a minus sign before their position. Names are looked up with an inserting access.
#pragma once

#include <cstdint>
#include <string>

#include "core/types.h"

namespace kcp {

void Kiir_cliques_VN(const std::string& dir, const CliqueList& cliques, NameMap& names,
                     const std::uint32_t& n_exact, const std::string& flag,
                     const std::string& alap_szoveg);

}  // namespace kcp
