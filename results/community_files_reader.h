// Reads the community list files of one k: [flag_]communities (member names),
// [flag_]communities_links (the links inside each community) and [flag_]communities_cliques (the
// cliques each is made of). Communities are numbered by position, exact ones first, approximate
// ones as "-p" (the first of them "-0" when none is exact). Each reader returns what the run's
// writer takes; names go through `numbering`, and a name a locked numbering does not know
// fails. Throws Xerror_msg naming the file and line on a bad file; given cut_files, a file cut
// inside its last line is read without that line (see LineTokeniser).
#pragma once

#include <cstdint>
#include <string>

#include "core/types.h"
#include "results/line_tokeniser.h"
#include "results/node_numbering.h"

namespace kcp {

// What Kiir_coms_VN takes.
struct CommunitiesFile {
  // "", "directed" or "intensity".
  std::string flag;
  std::uint32_t k = 0;
  std::string alap_szoveg;
  // Members in file order.
  CommunityList communities;
  std::uint32_t n_exact_coms = 0;
};

// What Kiir_com_links_VN takes, with Written_link_map. Each link is the pair (first node, second
// node) as the file writes it; the run's lists hold (smaller, larger) and let the IndexLinkMap
// decide the direction, but the writer needs only that the map holds the pair it is given.
struct CommunityLinksFile {
  std::string flag;
  std::uint32_t k = 0;
  std::string alap_szoveg;
  CommunityLinkLists community_links;
  std::uint32_t n_exact_coms = 0;
};

// What Kiir_coms_cliques_VN takes. Clique numbers are positions in the run's clique list; only
// approximate communities mark approximate cliques with "-", so n_exact (the number of exact
// cliques) is the smallest such clique, or one past the largest clique of an approximate
// community when none is marked, or 0 without approximate communities.
struct CommunityCliquesFile {
  std::string flag;
  std::uint32_t k = 0;
  std::string alap_szoveg;
  CommunityCliqueLists community_cliques;
  std::uint32_t n_exact_coms = 0;
  std::uint32_t n_exact = 0;
};

CommunitiesFile Read_communities_file(const std::string& path, NodeNumbering& numbering,
                                      CutFiles* cut_files = nullptr);
CommunityLinksFile Read_community_links_file(const std::string& path, NodeNumbering& numbering,
                                             CutFiles* cut_files = nullptr);
// The IndexLinkMap under which Kiir_com_links_VN writes every link of `file` as the file does.
IndexLinkMap Written_link_map(const CommunityLinksFile& file);
CommunityCliquesFile Read_community_cliques_file(const std::string& path,
                                                 CutFiles* cut_files = nullptr);

}  // namespace kcp
