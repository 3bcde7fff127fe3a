#include "results/k_dir_reader.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <limits>
#include <system_error>
#include <vector>

#include "core/result_layout.h"
#include "results/community_files_reader.h"
#include "results/k_cliques_file_reader.h"
#include "results/line_tokeniser.h"
#include "results/stats_files_reader.h"

namespace kcp {

namespace {

bool Exists(const std::string& path) {
  std::error_code error;
  return std::filesystem::exists(path, error);
}

// Whether an optional file is there to be read; one cut to nothing by an interrupted run is not,
// when the caller reads what such a run left.
bool Present(const std::string& path, const RunContext& run) {
  std::error_code error;
  return Exists(path) && !(run.empty_is_absent && std::filesystem::file_size(path, error) == 0);
}

std::string Run_kind(const std::string& flag) {
  return flag.empty() ? "a plain run" : "a " + flag + " run";
}

std::string Community_count(const std::size_t& count, const std::uint32_t& n_exact) {
  return std::to_string(count) + " communities (" + std::to_string(count - n_exact) +
         " of them approximate)";
}

// The description sits on line 1 of the k-cliques file and on line 2 of the others.
// A file listing something per community must list as many communities, as many exact, as the
// communities file; one cut short, the first of them.
void Check_community_count(const std::string& path, const std::size_t& count,
                           const std::uint32_t& n_exact, const CommunitiesFile& communities,
                           const RunContext& run) {
  const bool cut =
      run.cut_files != nullptr &&
      std::find(run.cut_files->begin(), run.cut_files->end(), path) != run.cut_files->end();
  const std::size_t expected =
      cut ? std::min(count, communities.communities.size()) : communities.communities.size();
  const std::size_t expected_exact = std::min<std::size_t>(expected, communities.n_exact_coms);
  if (count != expected || n_exact != expected_exact) {
    Fail_in_file(path, 0,
                 "it lists " + Community_count(count, n_exact) +
                     ", but the communities file lists " +
                     Community_count(communities.communities.size(), communities.n_exact_coms));
  }
}

void Check_frame(const std::string& path, const std::string* flag, const std::uint32_t& file_k,
                 const std::string& alap_szoveg, const std::uint64_t& description_line,
                 const std::uint32_t& k, const RunContext& run) {
  if (flag != nullptr && *flag != run.flavour) {
    Fail_in_file(path, 1,
                 "the header is that of " + Run_kind(*flag) + ", but the graph file is that of " +
                     Run_kind(run.flavour));
  }
  if (file_k != k) {
    Fail_in_file(path, 1,
                 "the header names k=" + std::to_string(file_k) +
                     ", but the file lies in the directory k=" + std::to_string(k));
  }
  if (alap_szoveg != run.alap_szoveg) {
    Fail_in_file(path, description_line,
                 "the run description differs from that of the graph file: this file belongs to "
                 "another run");
  }
}

std::vector<std::string> Names_of(const NodeList& nodes, const std::vector<std::string>& names) {
  std::vector<std::string> result;
  result.reserve(nodes.size());
  for (const NodeIndex node : nodes) result.push_back(names[node]);
  return result;
}

void Read_links(const std::string& path, const std::uint32_t& k, const RunContext& run,
                const CommunitiesFile& communities, KResults& result) {
  const std::vector<std::string>& names = run.numbering->Names();
  const CommunityLinksFile file = Read_community_links_file(path, *run.numbering, run.cut_files);
  Check_frame(path, &file.flag, file.k, file.alap_szoveg, 2, k, run);
  Check_community_count(path, file.community_links.size(), file.n_exact_coms, communities, run);
  // Member marks: member[node] holds the position of the last community that listed the node.
  std::vector<std::size_t> member(names.size(), std::numeric_limits<std::size_t>::max());
  for (std::size_t p = 0; p < file.community_links.size(); ++p) {
    for (const NodeIndex node : communities.communities[p]) member[node] = p;
    CommunityRecord& record = result.communities[p];
    record.links.reserve(file.community_links[p].size());
    for (const auto& [from, to] : file.community_links[p]) {
      if (member[from] != p || member[to] != p) {
        Fail_in_file(path, 0,
                     "the link \"" + names[from] + " " + names[to] + "\" of community " +
                         (p >= file.n_exact_coms ? "-" : "") + std::to_string(p) +
                         " joins a node that the communities file does not list in it");
      }
      record.links.emplace_back(names[from], names[to]);
    }
  }
}

void Read_community_cliques(const std::string& path, const std::uint32_t& k, const RunContext& run,
                            const CommunitiesFile& communities, KResults& result) {
  const CommunityCliquesFile file = Read_community_cliques_file(path, run.cut_files);
  Check_frame(path, &file.flag, file.k, file.alap_szoveg, 2, k, run);
  Check_community_count(path, file.community_cliques.size(), file.n_exact_coms, communities, run);
  for (std::size_t p = 0; p < file.community_cliques.size(); ++p) {
    const bool approximate = p >= file.n_exact_coms;
    const std::string community = (approximate ? "-" : "") + std::to_string(p);
    for (const std::uint32_t clique : file.community_cliques[p]) {
      if (run.cliques == nullptr) continue;
      if (clique >= run.cliques->cliques.size()) {
        Fail_in_file(path, 0,
                     "community " + community + " lists clique " + std::to_string(clique) +
                         ", which the clique file does not hold");
      }
      // Only approximate communities mark approximate cliques.
      if (approximate && (clique >= file.n_exact) != (clique >= run.cliques->n_exact)) {
        Fail_in_file(path, 0,
                     "community " + community + " lists clique " + std::to_string(clique) +
                         (clique >= file.n_exact ? " as approximate" : " as exact") +
                         ", but the clique file says otherwise");
      }
    }
    result.communities[p].cliques = file.community_cliques[p];
  }
}

void Read_community_graph(const std::string& path, const std::uint32_t& k, const RunContext& run,
                          const CommunitiesFile& communities, KResults& result) {
  const CommunityGraphFile file = Read_community_graph_file(path, run.cut_files);
  Check_frame(path, &file.flag, file.k, file.alap_szoveg, 2, k, run);
  const std::size_t count = communities.communities.size();
  const std::uint32_t n_exact = communities.n_exact_coms;
  result.community_graph.reserve(file.graph.size());
  for (const auto& [pair, shared] : file.graph) {
    for (const std::uint32_t p : {pair.first, pair.second}) {
      const bool marked = p >= file.n_exact_coms;
      const std::string community = (marked ? "-" : "") + std::to_string(p);
      if (p >= count || marked != (p >= n_exact)) {
        Fail_in_file(path, 0,
                     "community " + community + " is not in the communities file, which lists " +
                         Community_count(count, n_exact));
      }
    }
    CommunityEdge edge;
    edge.first_approximate = pair.first >= n_exact;
    edge.second_approximate = pair.second >= n_exact;
    edge.first = edge.first_approximate ? -std::int64_t{pair.first} : std::int64_t{pair.first};
    edge.second = edge.second_approximate ? -std::int64_t{pair.second} : std::int64_t{pair.second};
    edge.shared = shared;
    result.community_graph.push_back(edge);
  }
}

void Read_distributions(const std::string& k_dir, const std::uint32_t& k, const RunContext& run,
                        KResults& result) {
  for (const std::string_view suffix : layout::kDistributionSuffixes) {
    for (const layout::DistributionKind& kind : layout::kDistributions) {
      const std::string key = std::string(kind.stem) + std::string(suffix);
      const std::string path = k_dir + "/" + layout::Flag_file(run.flavour, key);
      if (!Present(path, run)) continue;
      DistributionFile file = Read_distribution_file(path, run.cut_files);
      Check_frame(path, &file.flag, file.k, file.alap_szoveg, 2, k, run);
      if (file.stem + file.suffix != key) {
        Fail_in_file(path, 1,
                     "the header names the distribution \"" + file.stem + file.suffix +
                         "\", but the file name says \"" + key + "\"");
      }
      result.distributions[key] = std::move(file.distribution);
    }
  }
}

}  // namespace

KResults Read_k_dir(const std::string& k_dir, const std::uint32_t& k, const RunContext& run) {
  const std::vector<std::string>& names = run.numbering->Names();
  KResults result;
  result.k = k;

  const std::string communities_path =
      k_dir + "/" + layout::Flag_file(run.flavour, layout::kCommunities);
  const std::string links_path =
      k_dir + "/" + layout::Flag_file(run.flavour, layout::kCommunityLinks);
  for (const std::string& path : {communities_path, links_path}) {
    if (!Exists(path)) Fail_in_file(path, 0, "the file is missing");
  }
  const CommunitiesFile communities =
      Read_communities_file(communities_path, *run.numbering, run.cut_files);
  Check_frame(communities_path, &communities.flag, communities.k, communities.alap_szoveg, 2, k,
              run);
  result.communities.resize(communities.communities.size());
  for (std::size_t p = 0; p < communities.communities.size(); ++p) {
    CommunityRecord& record = result.communities[p];
    record.approximate = p >= communities.n_exact_coms;
    record.number =
        record.approximate ? -static_cast<std::int64_t>(p) : static_cast<std::int64_t>(p);
    record.nodes = Names_of(communities.communities[p], names);
  }
  Read_links(links_path, k, run, communities, result);

  if (run.flavour == layout::kIntensity) {
    const std::string path = k_dir + "/" + std::string(layout::kKCliques);
    if (Present(path, run)) {
      const KCliquesFile file = Read_k_cliques_file(path, *run.numbering, run.cut_files);
      Check_frame(path, nullptr, file.k, file.alap_szoveg, 1, k, run);
      result.k_cliques.reserve(file.k_cliques.size());
      for (const NodeList& k_clique : file.k_cliques) {
        result.k_cliques.push_back(Names_of(k_clique, names));
      }
    }
  } else {
    const std::string path =
        k_dir + "/" + layout::Flag_file(run.flavour, layout::kCommunityCliques);
    if (Present(path, run)) Read_community_cliques(path, k, run, communities, result);
  }

  const std::string graph_path = k_dir + "/" + layout::Community_graph_file(run.flavour);
  if (Present(graph_path, run)) Read_community_graph(graph_path, k, run, communities, result);
  Read_distributions(k_dir, k, run, result);
  return result;
}

}  // namespace kcp
