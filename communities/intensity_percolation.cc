#include "communities/intensity_percolation.h"

#include <algorithm>
#include <cmath>
#include <iomanip>
#include <sstream>
#include <string>

#include "cliques/search_report.h"
#include "text/console.h"
#include "text/conversions.h"

namespace kcp {

namespace Coms_from_k_cls_sub {

namespace {

// The link count n(n-1)/2 in floating point, in the form the thresholds are defined with.
double Link_count(const std::size_t& n) {
  return static_cast<double>(n) * 0.5 * (static_cast<double>(n) - 1);
}

// The nodes of a and b that both hold (ascending) into `shared`.
void Shared_nodes(const NodeList& a, const NodeList& b, NodeList& shared) {
  shared.clear();
  std::set_intersection(a.begin(), a.end(), b.begin(), b.end(), std::back_inserter(shared));
}

}  // namespace

bool Check_intersection(const NodeList& nodes, const IndexLinkMap& links, const double& intensity) {
  const double l = Link_count(nodes.size());
  const double log_threshold = std::log(std::pow(intensity, l));
  SubLinkTable sub_links;
  double min_log_w = 0;
  Get_sub_links_and_min_link_w(nodes, links, sub_links, min_log_w);
  double sum = 0;
  std::size_t j = 1;
  for (std::size_t current = 1; current < nodes.size(); ++current) {
    // Even at the minimal weight the links still missing from the sum would lift it over the
    // threshold.
    if (sum + min_log_w * (l - static_cast<double>(j * (j - 1) / 2)) > log_threshold) {
      return true;
    }
    for (std::size_t before = 0; before < current; ++before) {
      sum += sub_links.At(current, before);
    }
    ++j;
  }
  return sum > log_threshold;
}

void Get_node_com_inds(const NumberedKCliques& k_cliques, const std::uint32_t& k,
                       LabelSets& label_sets, const IndexLinkMap& links, const double& intensity) {
  namespace report = Clique_find_report_sub_routines;
  label_sets.clear();
  std::ostringstream intensity_text;
  intensity_text << std::fixed << std::setprecision(6) << intensity;
  const std::string header =
      " Extracting communities from the k-cliques at k=" + int2string(k) + ",";
  // "threshlod" is the program's own spelling, kept.
  const std::string second_header =
      " and a link weight intensity threshlod I=" + intensity_text.str() + ":";
  const std::uint32_t total = static_cast<std::uint32_t>(k_cliques.size());

  std::uint32_t next_label = 0;
  NodeList shared;
  for (auto a_it = k_cliques.begin(); a_it != k_cliques.end(); ++a_it) {
    std::ostringstream progress;
    report::Report_progress(header, second_header, "k-cliques", total - a_it->first, total,
                            progress);
    Print_text(progress.str());

    std::set<std::uint32_t>& own = label_sets[a_it->first];
    if (own.empty()) own.insert(next_label++);
    const std::uint32_t label = *own.begin();

    const NodeList& a = a_it->second;
    // A set of fewer than two nodes has no second-smallest node and no neighbour to look for.
    if (a.size() < 2) continue;
    const NodeIndex second_smallest = a[1];
    for (auto b_it = std::next(a_it); b_it != k_cliques.end(); ++b_it) {
      const NodeList& b = b_it->second;
      // An empty set has no smallest node; it shares nothing and does not end the walk.
      if (b.empty()) continue;
      // Later k-cliques miss both of a's two smallest nodes: none can share k - 1 with a.
      if (b.front() > second_smallest) break;
      Shared_nodes(a, b, shared);
      if (shared.size() + 1 == k && Check_intersection(shared, links, intensity)) {
        label_sets[b_it->first].insert(label);
      }
    }
  }
}

void Collect_multi_label_sets(const LabelSets& label_sets, MultiLabelSets& multi) {
  multi.sets.clear();
  multi.entries_of_label.clear();
  for (const auto& [number, labels] : label_sets) {
    if (labels.size() < 2) continue;
    const std::uint32_t entry = static_cast<std::uint32_t>(multi.sets.size());
    multi.sets.push_back(&labels);
    for (const std::uint32_t& label : labels) multi.entries_of_label[label].push_back(entry);
  }
}

void Get_uni_rules_recur(const std::int32_t& g, std::vector<std::vector<std::uint32_t>>& groups,
                         std::vector<std::int32_t>& group_of, const std::uint32_t& start,
                         const MultiLabelSets& multi_label_sets) {
  const std::size_t group = static_cast<std::size_t>(g);
  if (groups.size() <= group) groups.resize(group + 1);
  // Once the entries holding a label have been marked, the label cannot reach an unmarked entry
  // again, so each label's entries are looked at once; this keeps the growth linear in the
  // total size of the sets instead of scanning every entry from every entry.
  std::set<std::uint32_t> labels_done;
  std::vector<std::uint32_t> stack{start};
  std::vector<std::uint32_t> found;
  while (!stack.empty()) {
    const std::uint32_t entry = stack.back();
    stack.pop_back();
    found.clear();
    for (const std::uint32_t& label : *multi_label_sets.sets[entry]) {
      if (!labels_done.insert(label).second) continue;
      const auto holders = multi_label_sets.entries_of_label.find(label);
      if (holders == multi_label_sets.entries_of_label.end()) continue;
      for (const std::uint32_t& other : holders->second) {
        if (group_of[other] == -1) found.push_back(other);
      }
    }
    std::sort(found.begin(), found.end());
    found.erase(std::unique(found.begin(), found.end()), found.end());
    for (const std::uint32_t& other : found) {
      group_of[other] = g;
      groups[group].push_back(other);
    }
    // Depth-first: the first entry marked here is grown completely before the second.
    stack.insert(stack.end(), found.rbegin(), found.rend());
  }
}

void Get_trans_rules(const LabelSets& label_sets, TransRules& trans_rules) {
  trans_rules.clear();
  MultiLabelSets multi;
  Collect_multi_label_sets(label_sets, multi);
  std::vector<std::int32_t> group_of(multi.sets.size(), -1);
  std::vector<std::vector<std::uint32_t>> groups;
  std::int32_t g = 0;
  for (std::uint32_t i = 0; i < multi.sets.size(); ++i) {
    if (group_of[i] != -1) continue;
    group_of[i] = g;
    groups.push_back({i});
    Get_uni_rules_recur(g, groups, group_of, i, multi);
    ++g;
  }
  for (const std::vector<std::uint32_t>& members : groups) {
    std::set<std::uint32_t> labels;
    for (const std::uint32_t& entry : members) {
      labels.insert(multi.sets[entry]->begin(), multi.sets[entry]->end());
    }
    const std::uint32_t smallest = *labels.begin();
    for (const std::uint32_t& label : labels) {
      if (label != smallest) trans_rules[label] = smallest;
    }
  }
}

}  // namespace Coms_from_k_cls_sub

void Intensity_coms_from_k_cliques(const NumberedKCliques& k_cliques,
                                   std::map<std::uint32_t, NodeList>& communities,
                                   std::map<std::uint32_t, LinkList>& community_links,
                                   const std::uint32_t& k, const IndexLinkMap& links,
                                   const double& intensity) {
  communities.clear();
  community_links.clear();
  LabelSets label_sets;
  Coms_from_k_cls_sub::Get_node_com_inds(k_cliques, k, label_sets, links, intensity);
  TransRules trans_rules;
  Coms_from_k_cls_sub::Get_trans_rules(label_sets, trans_rules);

  // final label -> its k-cliques in ascending number
  std::map<std::uint32_t, std::vector<const NodeList*>> members;
  for (const auto& [number, k_clique] : k_cliques) {
    std::uint32_t label = *label_sets.at(number).begin();
    const auto rule = trans_rules.find(label);
    if (rule != trans_rules.end()) label = rule->second;
    members[label].push_back(&k_clique);
  }
  for (const auto& [label, member_k_cliques] : members) {
    NodeList& nodes = communities[label];
    for (const NodeList* k_clique : member_k_cliques) {
      nodes.insert(nodes.end(), k_clique->begin(), k_clique->end());
    }
    std::sort(nodes.begin(), nodes.end());
    nodes.erase(std::unique(nodes.begin(), nodes.end()), nodes.end());

    // Each k-clique's pairs go in front of those of the k-cliques before it: built here from
    // the latest k-clique backwards, which gives the same list without shifting it each time.
    // Links shared by several k-cliques are listed once for each, deliberately.
    LinkList& list = community_links[label];
    for (auto it = member_k_cliques.rbegin(); it != member_k_cliques.rend(); ++it) {
      const NodeList& k_clique = **it;
      for (std::size_t a = 0; a < k_clique.size(); ++a) {
        for (std::size_t b = a + 1; b < k_clique.size(); ++b) {
          list.emplace_back(k_clique[a], k_clique[b]);
        }
      }
    }
  }
}

}  // namespace kcp
