// The node set and the link list of a community at k from the communities found at a larger k,
// which lie each inside one community at k: the union of the nodes and links of those among its
// members' and of the members that were in none, the latter assembled afresh. The
// result is CommunityAssembly's; the work grows with the nodes and links brought together rather
// than with the pairs of the members. The scratch is kept between communities.
#pragma once

#include <cstdint>
#include <vector>

#include "cliques/clique_profile.h"
#include "cliques/on_demand_index.h"
#include "communities/community_assembly.h"
#include "communities/link_order.h"
#include "core/types.h"

namespace kcp {

class NestedAssembly {
 public:
  // carry holds the communities of a larger k over the same cliques; fresh assembles the members
  // outside them (with the profile, when given).
  void Assemble(const CliqueIndexList& members, const LevelCarry& carry, const CliqueList& cliques,
                const CliqueProfile* profile, CommunityAssembly& fresh, NodeList& nodes,
                LinkList& links);

 private:
  void Add_links(const LinkList& from);

  std::vector<std::uint32_t> sources_;  // positions of the carried communities met
  std::vector<std::uint32_t> met_;      // community -> stamp of the community that met it
  std::uint32_t stamp_ = 0;
  CliqueIndexList fresh_members_;
  NodeList fresh_nodes_;
  LinkList fresh_links_;
  std::vector<std::uint32_t> position_;  // node -> its position in the node list
  LinkOrder order_;
};

}  // namespace kcp
