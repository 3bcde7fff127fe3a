#include "communities/community_files.h"

#include <cstddef>
#include <span>

#include "core/result_layout.h"
#include "fsutil/result_file.h"
#include "text/conversions.h"

namespace kcp {

namespace {

// The flag string and one blank, or nothing for the empty flag.
std::string Flag_word(const std::string& flag) {
  return flag.empty() ? flag : flag + " ";
}

// Position p of a community: approximate communities keep their position behind a minus sign.
void Put_position(ResultFile& file, const std::size_t& p, const std::uint32_t& n_exact_coms) {
  if (layout::Is_approximate(p, n_exact_coms)) file << layout::kApproximateMark;
  file << p;
}

}  // namespace

void Kiir_coms_VN(const CommunityList& communities, const std::string& dir, const std::uint32_t& k,
                  NameMap& names, const std::uint32_t& n_exact_coms, const std::string& flag,
                  const std::string& alap_szoveg) {
  Kiir_coms_VN(communities, dir, k, NameTable(names), n_exact_coms, flag, alap_szoveg);
}

void Kiir_coms_VN(const CommunityList& communities, const std::string& dir, const std::uint32_t& k,
                  const NameTable& names, const std::uint32_t& n_exact_coms,
                  const std::string& flag, const std::string& alap_szoveg) {
  ResultFile file(layout::K_dir(dir, k), layout::Flag_file(flag, layout::kCommunities));
  file << layout::Title_line(layout::kCommunitiesTitle, flag, k) << '\n';
  file << '#' << alap_szoveg;
  if (n_exact_coms < communities.size()) {
    file << layout::kApproximateCommunitiesNote << '\n';
  }
  file << '\n';
  for (std::size_t p = 0; p < communities.size(); ++p) {
    Put_position(file, p, n_exact_coms);
    file << ": ";
    for (const NodeIndex& node : communities[p]) file << names[node] << ' ';
    file << '\n';
  }
  file.Close();
}

void Kiir_com_links_VN(const CommunityLinkLists& community_links, const std::string& dir,
                       const std::uint32_t& k, NameMap& names, const std::uint32_t& n_exact_coms,
                       const std::string& flag, const std::string& alap_szoveg,
                       const IndexLinkMap& links) {
  Kiir_com_links_VN(community_links, dir, k, OutputTables(names, links), n_exact_coms, flag,
                    alap_szoveg);
}

void Kiir_com_links_VN(const CommunityLinkLists& community_links, const std::string& dir,
                       const std::uint32_t& k, const OutputTables& tables,
                       const std::uint32_t& n_exact_coms, const std::string& flag,
                       const std::string& alap_szoveg) {
  const NameTable& names = tables.names;
  ResultFile file(layout::K_dir(dir, k), layout::Flag_file(flag, layout::kCommunityLinks));
  file << layout::Title_line(layout::kCommunityLinksTitle, flag, k) << '\n';
  file << '#' << alap_szoveg << '\n';
  for (std::size_t p = 0; p < community_links.size(); ++p) {
    Put_position(file, p, n_exact_coms);
    file << ":\n";
    // Links ascend by their smaller node, then the larger: the targets of one smaller node are
    // merged with its links rather than searched for each.
    std::span<const NodeIndex> targets;
    NodeIndex from = 0;
    std::size_t at = 0;
    for (const Link& link : community_links[p]) {
      if (at == 0 || link.first != from) {
        from = link.first;
        targets = tables.links.Targets(from);
        at = 1;
      }
      while (at <= targets.size() && targets[at - 1] < link.second) ++at;
      if (at <= targets.size() && targets[at - 1] == link.second) {
        file << names[link.first] << ' ' << names[link.second] << '\n';
      } else {
        file << names[link.second] << ' ' << names[link.first] << '\n';
      }
    }
  }
  file.Close();
}

void Kiir_coms_cliques_VN(const CommunityCliqueLists& community_cliques, const std::string& dir,
                          const std::uint32_t& k, const std::uint32_t& n_exact_coms,
                          const std::uint32_t& n_exact, const std::string& flag,
                          const std::string& alap_szoveg) {
  ResultFile file(layout::K_dir(dir, k), layout::Flag_file(flag, layout::kCommunityCliques));
  file << "# The contained " << Flag_word(flag) << "cliques in the " << Flag_word(flag)
       << "communities at k=" << k << '\n';
  file << '#' << alap_szoveg << '\n';
  for (std::size_t p = 0; p < community_cliques.size(); ++p) {
    const bool approximate = p >= n_exact_coms;
    Put_position(file, p, n_exact_coms);
    file << ": ";
    for (const std::uint32_t& clique : community_cliques[p]) {
      if (approximate && layout::Is_approximate(clique, n_exact)) file << layout::kApproximateMark;
      file << clique << ' ';
    }
    file << '\n';
  }
  file.Close();
}

}  // namespace kcp
