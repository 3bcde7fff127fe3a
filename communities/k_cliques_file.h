// Writes the k-cliques of an intensity run into dir + "/k=" + k + "/k-cliques": the line
// "# The k-cliques at k=" k followed by alap_szoveg, an empty line, then one record per
// k-clique in the set's order, numbered from 0: "n: " and each node name followed by a blank.
// Directory errors of Dir_prepare and write errors of ResultFile pass through.
#pragma once

#include <cstdint>
#include <string>

#include "communities/k_clique_intensity.h"
#include "core/types.h"

namespace kcp {

void Kiir_k_cliques_VN(const std::string& dir, const KCliqueSet& k_cliques, const std::uint32_t& k,
                       NameMap& names, const std::string& alap_szoveg);

}  // namespace kcp
