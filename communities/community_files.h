// The community list files of one k, written into dir + "/k=" + k (prepared with "keep"): the
// communities by node names, the links inside them, and the cliques they are made of. Files are
// named [flag_]communities, [flag_]communities_links and [flag_]communities_cliques. Exact
// communities are numbered by position; approximate ones (positions >= n_exact_coms) carry a
// "-" before their position. Names are looked up with a subscript: a missing one is written empty.
#pragma once

#include <cstdint>
#include <string>

#include "core/types.h"
#include "graph/output_tables.h"

namespace kcp {

void Kiir_coms_VN(const CommunityList& communities, const std::string& dir, const std::uint32_t& k,
                  NameMap& names, const std::uint32_t& n_exact_coms, const std::string& flag,
                  const std::string& alap_szoveg);
void Kiir_coms_VN(const CommunityList& communities, const std::string& dir, const std::uint32_t& k,
                  const NameTable& names, const std::uint32_t& n_exact_coms,
                  const std::string& flag, const std::string& alap_szoveg);

// Each link is written in the direction in which the IndexLinkMap holds it.
void Kiir_com_links_VN(const CommunityLinkLists& community_links, const std::string& dir,
                       const std::uint32_t& k, NameMap& names, const std::uint32_t& n_exact_coms,
                       const std::string& flag, const std::string& alap_szoveg,
                       const IndexLinkMap& links);
void Kiir_com_links_VN(const CommunityLinkLists& community_links, const std::string& dir,
                       const std::uint32_t& k, const OutputTables& tables,
                       const std::uint32_t& n_exact_coms, const std::string& flag,
                       const std::string& alap_szoveg);

// Clique indices at or above n_exact get a "-", but only in approximate communities.
void Kiir_coms_cliques_VN(const CommunityCliqueLists& community_cliques, const std::string& dir,
                          const std::uint32_t& k, const std::uint32_t& n_exact_coms,
                          const std::uint32_t& n_exact, const std::string& flag,
                          const std::string& alap_szoveg);

}  // namespace kcp
