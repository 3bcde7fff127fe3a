// The community stage for one k: extracts the communities (plain k-clique percolation over the
// overlap matrix, or the link-weight intensity variant), writes the community files, the
// community graph and the distributions into dir + "/k=" + k, and reports each step on standard
// output. Nothing is kept between calls and the inputs are not changed (names only gains the
// empty names it is asked for). Errors of the writers and of the statistics pass through.
#pragma once

#include <cstdint>
#include <ostream>
#include <string>

#include "core/types.h"
#include "graph/output_tables.h"

namespace kcp {

void Find_coms(const std::uint32_t& k, const CliqueList& cliques, const OverlapMatrix& overlaps,
               const std::uint32_t& n_exact, const std::string& flag,
               const std::string& alap_szoveg, const std::string& dir, NameMap& names,
               const std::uint32_t& node_count, const bool& intensity_flag, const double& intensity,
               const IndexLinkMap& links, const std::uint32_t& largest_clique_size);
// The same with the writers' look-up tables built once for every k of a run.
void Find_coms(const std::uint32_t& k, const CliqueList& cliques, const OverlapMatrix& overlaps,
               const std::uint32_t& n_exact, const std::string& flag,
               const std::string& alap_szoveg, const std::string& dir, NameMap& names,
               const std::uint32_t& node_count, const bool& intensity_flag, const double& intensity,
               const IndexLinkMap& links, const std::uint32_t& largest_clique_size,
               const OutputTables& tables);

namespace Coms_report_sub {

// Appends two lines: digits of k + 48 underscores, then " Extracting communities at k=" k
// " (completed P%)", P = ((largest - k) + 0.5) * 100 / (largest - 2) with 2 decimals, the
// differences taken in unsigned 32-bit arithmetic.
void Report_com_export(const std::uint32_t& k, const std::uint32_t& largest_clique_size,
                       std::ostream& out);

// The number of characters of n written in decimal.
std::size_t Num_width(const std::uint32_t& n);

}  // namespace Coms_report_sub

}  // namespace kcp
