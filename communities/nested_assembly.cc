#include "communities/nested_assembly.h"

#include <algorithm>

namespace kcp {

void NestedAssembly::Assemble(const CliqueIndexList& members, const LevelCarry& carry,
                              const CliqueList& cliques, const CliqueProfile* profile,
                              CommunityAssembly& fresh, NodeList& nodes, LinkList& links) {
  if (met_.size() < carry.nodes.size()) met_.resize(carry.nodes.size(), 0);
  if (++stamp_ == 0) {
    std::fill(met_.begin(), met_.end(), 0);
    stamp_ = 1;
  }
  sources_.clear();
  fresh_members_.clear();
  for (const std::uint32_t& m : members) {
    const std::int32_t q = m < carry.community_of.size() ? carry.community_of[m] : -1;
    if (q < 0) {
      fresh_members_.push_back(m);
    } else if (met_[static_cast<std::uint32_t>(q)] != stamp_) {
      met_[static_cast<std::uint32_t>(q)] = stamp_;
      sources_.push_back(static_cast<std::uint32_t>(q));
    }
  }
  if (fresh_members_.empty() && sources_.size() == 1) {
    nodes = carry.nodes[sources_[0]];
    links = carry.links[sources_[0]];
    return;
  }
  fresh_nodes_.clear();
  fresh_links_.clear();
  if (!fresh_members_.empty()) {
    fresh.Assemble(fresh_members_, cliques, fresh_nodes_, fresh_links_, profile);
  }

  nodes.assign(fresh_nodes_.begin(), fresh_nodes_.end());
  for (const std::uint32_t& q : sources_) {
    nodes.insert(nodes.end(), carry.nodes[q].begin(), carry.nodes[q].end());
  }
  std::sort(nodes.begin(), nodes.end());
  nodes.erase(std::unique(nodes.begin(), nodes.end()), nodes.end());

  if (!nodes.empty() && position_.size() <= nodes.back()) {
    position_.resize(std::size_t{nodes.back()} + 1, 0);
  }
  for (std::size_t i = 0; i < nodes.size(); ++i)
    position_[nodes[i]] = static_cast<std::uint32_t>(i);
  order_.Clear();
  Add_links(fresh_links_);
  for (const std::uint32_t& q : sources_) Add_links(carry.links[q]);
  order_.Sorted(nodes, links);
}

void NestedAssembly::Add_links(const LinkList& from) {
  for (const Link& link : from) order_.Add(position_[link.first], position_[link.second]);
}

}  // namespace kcp
