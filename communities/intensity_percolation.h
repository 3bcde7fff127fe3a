// Percolation of numbered k-cliques under a link-weight intensity threshold: two k-cliques are
// adjacent when they share k - 1 nodes whose own intensity exceeds I. Communities are keyed by
// their final label, ascending in the order of each community's first k-clique; a community's
// link list is grouped by k-clique, latest k-clique first, duplicates kept. Reports progress on
// standard output per k-clique; throws Xerror_msg on a missing link (see k_clique_intensity.h).
#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <vector>

#include "communities/k_clique_intensity.h"
#include "core/types.h"

namespace kcp {

// k-clique number -> its provisional community labels.
using LabelSets = std::map<std::uint32_t, std::set<std::uint32_t>>;
// label -> the label it is merged into.
using TransRules = std::map<std::uint32_t, std::uint32_t>;

// Clears and fills both outputs.
void Intensity_coms_from_k_cliques(const NumberedKCliques& k_cliques,
                                   std::map<std::uint32_t, NodeList>& communities,
                                   std::map<std::uint32_t, LinkList>& community_links,
                                   const std::uint32_t& k, const IndexLinkMap& links,
                                   const double& intensity);

namespace Coms_from_k_cls_sub {

// The label sets with more than one label, in ascending k-clique number, and for each label
// the entries holding it (ascending), so that shared labels are found without a full scan.
struct MultiLabelSets {
  std::vector<const std::set<std::uint32_t>*> sets;
  std::map<std::uint32_t, std::vector<std::uint32_t>> entries_of_label;
};

// Clears and fills `multi` from the label sets with more than one label.
void Collect_multi_label_sets(const LabelSets& label_sets, MultiLabelSets& multi);

// Clears and fills label_sets: every k-clique gets a set holding at least one label.
void Get_node_com_inds(const NumberedKCliques& k_cliques, const std::uint32_t& k,
                       LabelSets& label_sets, const IndexLinkMap& links, const double& intensity);

// True when the intensity of the ascending node set exceeds `intensity`.
bool Check_intersection(const NodeList& nodes, const IndexLinkMap& links, const double& intensity);

// Clears and fills the rules mapping every label of a group of connected multi-label sets to
// the smallest label of the group.
void Get_trans_rules(const LabelSets& label_sets, TransRules& trans_rules);

// Grows group g from entry `start`: marks (in `group_of`, -1 = none) and appends to groups[g]
// every unmarked entry sharing a label with it, ascending, then grows from each of those in
// the order they were marked (depth-first, kept on an explicit stack).
void Get_uni_rules_recur(const std::int32_t& g, std::vector<std::vector<std::uint32_t>>& groups,
                         std::vector<std::int32_t>& group_of, const std::uint32_t& start,
                         const MultiLabelSets& multi_label_sets);

}  // namespace Coms_from_k_cls_sub

}  // namespace kcp
