// The community graph and distribution files of one k, written into dir + "/k=" + k (prepared
// with "keep"). The graph goes to graph_of_[flag_]communities, approximate communities written
// with a "-" before their position. The four distributions go to [flag_]<stem><suffix>, one line
// "value count" per entry in ascending value, each file closed by an empty line.
#pragma once

#include <cstdint>
#include <string>

#include "core/types.h"

namespace kcp {

void Kiir_com_graph_VN(const CommunityGraph& graph, const std::uint32_t& n_exact_coms,
                       const std::string& dir, const std::uint32_t& k, const std::string& flag,
                       const std::string& alap_szoveg);

// Writes membership, size, overlap and degree, in this order; note that the order of the
// arguments differs from the one Community_statistics returns them in.
void Kiir_stats_VN(const Distribution& membership, const Distribution& size,
                   const Distribution& overlap, const Distribution& degree, const std::string& dir,
                   const std::uint32_t& k, const std::string& flag, const std::string& suffix,
                   const std::string& alap_szoveg);

// One distribution file at `path` (its directory must exist): the header text, a line end, the
// entries, an empty line.
void Kiir_VN_dist(const std::string& path, const Distribution& distribution,
                  const std::string& header);

}  // namespace kcp
