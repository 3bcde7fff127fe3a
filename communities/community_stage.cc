#include "communities/community_stage.h"

#include <iomanip>
#include <limits>
#include <map>
#include <sstream>
#include <utility>

#include "communities/community_files.h"
#include "communities/community_statistics.h"
#include "communities/intensity_percolation.h"
#include "communities/k_clique_intensity.h"
#include "communities/k_cliques_file.h"
#include "communities/percolation.h"
#include "communities/stats_files.h"
#include "core/result_layout.h"
#include "text/console.h"

namespace kcp {

namespace Coms_report_sub {

std::size_t Num_width(const std::uint32_t& n) {
  std::ostringstream text;
  text << n;
  return text.str().size();
}

void Report_com_export(const std::uint32_t& k, const std::uint32_t& largest_clique_size,
                       std::ostream& out) {
  // Both differences are unsigned on purpose: a k above the largest clique size (or a largest
  // size below 2) wraps and prints a huge or odd percentage.
  const std::uint32_t remaining = largest_clique_size - k;
  const std::uint32_t span = largest_clique_size - 2;
  const double done = static_cast<double>(remaining) + 0.5;
  // The numerator is always positive, so a span of 0 gives +infinity, printed "inf"; it is
  // spelt out to keep the division by zero off the floating-point unit's exception path.
  const double percent =
      span == 0 ? std::numeric_limits<double>::infinity() : done * 100 / static_cast<double>(span);
  std::ostringstream line;
  line << " Extracting communities at k=" << k << " (completed " << std::fixed
       << std::setprecision(2) << percent << "%)";
  out << Underscores(Num_width(k) + 48) << '\n' << line.str() << '\n';
}

}  // namespace Coms_report_sub

namespace {

// Community extraction of an intensity run: the qualifying k-cliques, their file, and their
// percolation. Intensity runs have no approximate communities and no clique lists.
void Intensity_communities(const std::uint32_t& k, const CliqueList& cliques,
                           const std::string& alap_szoveg, const std::string& dir, NameMap& names,
                           const double& intensity, const IndexLinkMap& links,
                           CommunityList& communities, CommunityLinkLists& community_links,
                           std::uint32_t& n_exact_coms) {
  NumberedKCliques numbered;
  {
    KCliqueSet k_cliques;
    Generate_k_cls_from_cls(cliques, links, k_cliques, k, intensity);
    Print_underscores(26);
    Print_line(" Writing k-clques to disk.");
    Kiir_k_cliques_VN(dir, k_cliques, k, names, alap_szoveg);
    std::uint32_t number = 0;
    while (!k_cliques.empty()) {
      auto node = k_cliques.extract(k_cliques.begin());
      numbered.emplace_hint(numbered.end(), number++, std::move(node.value()));
    }
  }
  std::map<std::uint32_t, NodeList> com_map;
  std::map<std::uint32_t, LinkList> link_map;
  Intensity_coms_from_k_cliques(numbered, com_map, link_map, k, links, intensity);
  communities.clear();
  community_links.clear();
  communities.reserve(com_map.size());
  for (auto& [label, nodes] : com_map) communities.push_back(std::move(nodes));
  community_links.reserve(link_map.size());
  for (auto& [label, com_links] : link_map) community_links.push_back(std::move(com_links));
  n_exact_coms = static_cast<std::uint32_t>(communities.size());
}

}  // namespace

void Find_coms(const std::uint32_t& k, const CliqueList& cliques, const OverlapMatrix& overlaps,
               const std::uint32_t& n_exact, const std::string& flag,
               const std::string& alap_szoveg, const std::string& dir, NameMap& names,
               const std::uint32_t& node_count, const bool& intensity_flag, const double& intensity,
               const IndexLinkMap& links, const std::uint32_t& largest_clique_size) {
  Find_coms(k, cliques, overlaps, n_exact, flag, alap_szoveg, dir, names, node_count,
            intensity_flag, intensity, links, largest_clique_size, OutputTables(names, links));
}

void Find_coms(const std::uint32_t& k, const CliqueList& cliques, const OverlapMatrix& overlaps,
               const std::uint32_t& n_exact, const std::string& flag,
               const std::string& alap_szoveg, const std::string& dir, NameMap& names,
               const std::uint32_t& node_count, const bool& intensity_flag, const double& intensity,
               const IndexLinkMap& links, const std::uint32_t& largest_clique_size,
               const OutputTables& tables) {
  CommunityList communities;
  CommunityCliqueLists community_cliques;
  CommunityLinkLists community_links;
  std::uint32_t n_exact_coms = 0;

  if (!intensity_flag) {
    std::ostringstream report;
    Coms_report_sub::Report_com_export(k, largest_clique_size, report);
    Print_text(report.str());
    Coms_from_appr_ovlp_matr(communities, community_links, community_cliques, cliques, overlaps, k,
                             n_exact, n_exact_coms);
    Print_line(" done.");
  } else {
    Intensity_communities(k, cliques, alap_szoveg, dir, names, intensity, links, communities,
                          community_links, n_exact_coms);
  }

  // Three m's, kept deliberately.
  Print_line(" Writing commmunities to disk...");
  Kiir_coms_VN(communities, dir, k, tables.names, n_exact_coms, flag, alap_szoveg);
  if (!intensity_flag) {
    Kiir_coms_cliques_VN(community_cliques, dir, k, n_exact_coms, n_exact, flag, alap_szoveg);
  }
  Kiir_com_links_VN(community_links, dir, k, tables, n_exact_coms, flag, alap_szoveg);
  Print_line(" done.");

  {
    CommunityGraph graph;
    Prepare_community_graph(graph, communities);
    Kiir_com_graph_VN(graph, n_exact_coms, dir, k, flag, alap_szoveg);
  }

  Print_line(" Calculating statistics...");
  Distribution size, degree, overlap, membership;
  Community_statistics(size, degree, overlap, membership, communities, node_count);
  if (communities.size() > n_exact_coms) {
    const auto split = communities.begin() + n_exact_coms;
    const CommunityList exact(communities.begin(), split);
    const CommunityList approximate(split, communities.end());
    Distribution size_e, degree_e, overlap_e, membership_e;
    Community_statistics(size_e, degree_e, overlap_e, membership_e, exact, node_count);
    Distribution size_a, degree_a, overlap_a, membership_a;
    Community_statistics(size_a, degree_a, overlap_a, membership_a, approximate, node_count);
    Print_line(" done.");
    Kiir_stats_VN(membership, size, overlap, degree, dir, k, flag,
                  std::string(layout::kMergedSuffix), alap_szoveg);
    Kiir_stats_VN(membership_e, size_e, overlap_e, degree_e, dir, k, flag,
                  std::string(layout::kExactSuffix), alap_szoveg);
    Kiir_stats_VN(membership_a, size_a, overlap_a, degree_a, dir, k, flag,
                  std::string(layout::kApproximateSuffix), alap_szoveg);
  } else {
    Print_line(" done.");
    Kiir_stats_VN(membership, size, overlap, degree, dir, k, flag, "", alap_szoveg);
  }
}

}  // namespace kcp
