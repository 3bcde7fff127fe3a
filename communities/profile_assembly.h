// The node set and the link list of a community, as CommunityAssembly makes them (nodes
// ascending; links the distinct (smaller, larger) node pairs of the member cliques, ascending),
// from the profile of the run's cliques. Links between two hot nodes are or-ed into one row of
// hot bits per hot node, a clique's hot bitset at a time: the many large cliques of a dense core
// then cost a few words per member rather than their pairs. Links with a cold node are listed
// under that node and kept once. The work grows with the members' hot nodes, the pairs of their
// cold ones, and the links found (link_order.h); the scratch is kept between communities.
#pragma once

#include <array>
#include <cstdint>
#include <utility>
#include <vector>

#include "cliques/clique_profile.h"
#include "communities/link_order.h"
#include "core/types.h"

namespace kcp {

class ProfileAssembly {
 public:
  // Member positions at or beyond the profile's cliques stand for cliques without nodes.
  void Assemble(const CliqueIndexList& members, const CliqueProfile& profile, NodeList& nodes,
                LinkList& links);

 private:
  using HotBits = CliqueProfile::HotBits;
  void Hot_links(const CliqueIndexList& members, const CliqueProfile& profile);
  void Cold_links(const CliqueIndexList& members, const CliqueProfile& profile);
  void Add_link(const std::uint32_t& rank_a, const std::uint32_t& rank_b) {
    order_.Add(position_[rank_a], position_[rank_b]);
  }

  std::array<HotBits, CliqueProfile::kHot> rows_{};
  std::vector<std::uint32_t> cold_ranks_;  // the cold nodes of the community, by rank
  std::vector<std::uint32_t> local_;       // rank -> position in cold_ranks_ plus one; 0 elsewhere
  std::vector<std::uint32_t> bucket_;      // cold node -> first of its partners in later_
  std::vector<std::uint32_t> later_;
  std::vector<std::uint32_t> seen_;  // rank -> stamp of the bucket that listed it
  std::uint32_t stamp_ = 0;
  std::vector<std::pair<NodeIndex, std::uint32_t>> by_node_;  // (node, rank), ascending
  std::vector<std::uint32_t> position_;  // rank -> position in the community's node list
  LinkOrder order_;
};

}  // namespace kcp
