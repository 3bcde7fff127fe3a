#include "export/export_network.h"

#include <algorithm>
#include <charconv>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "core/xerror_msg.h"
#include "export/safe_text.h"

namespace kcp {

namespace {

using NameIndex = std::unordered_map<std::string_view, std::uint32_t>;

std::uint64_t Pair_key(std::uint32_t a, std::uint32_t b) {
  return (static_cast<std::uint64_t>(a) << 32) | b;
}

NameIndex Index_names(const RunResults& results) {
  NameIndex index;
  index.reserve(results.nodes.size());
  for (std::uint32_t i = 0; i < results.nodes.size(); ++i) index.emplace(results.nodes[i], i);
  return index;
}

// k is empty for the links of the graph file itself.
std::uint32_t Node_of(const NameIndex& index, const std::string& name,
                      std::optional<std::uint32_t> k) {
  const auto found = index.find(name);
  if (found == index.end()) {
    const std::string holder =
        k ? "a community at k=" + std::to_string(*k) : std::string("a link of the graph");
    throw Xerror_msg(holder + " names the node \"" + Safe_text(name) +
                     "\", which is not among the nodes of the graph file");
  }
  return found->second;
}

void Check_distinct_safe_names(const std::vector<std::string>& names) {
  bool all_safe = true;
  for (const std::string& name : names) all_safe = all_safe && Is_safe_text(name);
  if (all_safe) return;  // names are distinct in the graph file, so their safe forms are too
  std::unordered_set<std::string> seen;
  for (const std::string& name : names) {
    if (!seen.insert(Safe_text(name)).second) {
      throw Xerror_msg("two node names are both written as \"" + Safe_text(name) +
                       "\" (bytes that are not UTF-8 are written as \\xHH)");
    }
  }
}

// Sorts (item, community position) entries, made in ascending position, by item with a
// counting sort (stable, so positions stay ascending) and drops repeated pairs. `counts` is
// scratch space of item_count + 1 slots, reused across k.
CommunityLists Pack(const std::vector<std::pair<std::uint32_t, std::uint32_t>>& entries,
                    std::vector<std::uint32_t>& counts) {
  std::fill(counts.begin(), counts.end(), 0);
  for (const auto& entry : entries) ++counts[entry.first + 1];
  for (std::size_t i = 1; i < counts.size(); ++i) counts[i] += counts[i - 1];
  std::vector<std::pair<std::uint32_t, std::uint32_t>> sorted(entries.size());
  for (const auto& entry : entries) sorted[counts[entry.first]++] = entry;
  CommunityLists lists;
  lists.items.reserve(sorted.size());
  lists.positions.reserve(sorted.size());
  for (std::size_t i = 0; i < sorted.size(); ++i) {
    if (i > 0 && sorted[i] == sorted[i - 1]) continue;
    lists.items.push_back(sorted[i].first);
    lists.positions.push_back(sorted[i].second);
  }
  return lists;
}

}  // namespace

ExportNetwork Build_export_network(const RunResults& results) {
  Check_distinct_safe_names(results.nodes);
  const NameIndex names = Index_names(results);
  ExportNetwork network;

  // Link position by (source, target); undirected runs key both orders to the same link.
  std::unordered_map<std::uint64_t, std::uint32_t> link_at;
  link_at.reserve(results.links.size() * (results.directed ? 1 : 2));
  for (const NamedLink& named : results.links) {
    const std::uint32_t source = Node_of(names, named.source, std::nullopt);
    const std::uint32_t target = Node_of(names, named.target, std::nullopt);
    const auto found = link_at.find(Pair_key(source, target));
    if (found != link_at.end()) {
      ExportLink& link = network.links[found->second];
      if (link.weight && named.weight) *link.weight += *named.weight;
      continue;
    }
    const auto position = static_cast<std::uint32_t>(network.links.size());
    network.links.push_back({source, target, named.weight});
    link_at.emplace(Pair_key(source, target), position);
    if (!results.directed) link_at.emplace(Pair_key(target, source), position);
  }

  std::vector<std::uint32_t> node_counts(results.nodes.size() + 1);
  std::vector<std::uint32_t> link_counts(network.links.size() + 1);
  for (const KResults& k_results : results.per_k) {
    const std::uint32_t k = k_results.k;
    std::vector<std::pair<std::uint32_t, std::uint32_t>> node_entries;
    std::vector<std::pair<std::uint32_t, std::uint32_t>> link_entries;
    for (std::uint32_t position = 0; position < k_results.communities.size(); ++position) {
      const CommunityRecord& community = k_results.communities[position];
      for (const std::string& name : community.nodes) {
        node_entries.emplace_back(Node_of(names, name, k), position);
      }
      for (const auto& [first, second] : community.links) {
        const std::uint32_t a = Node_of(names, first, k);
        const std::uint32_t b = Node_of(names, second, k);
        // A pair of a community is unordered; in a directed run it takes in both directions.
        for (const std::uint64_t key : {Pair_key(a, b), Pair_key(b, a)}) {
          const auto found = link_at.find(key);
          if (found != link_at.end()) link_entries.emplace_back(found->second, position);
          if (a == b) break;
        }
      }
    }
    KMemberships memberships;
    memberships.k = k;
    memberships.nodes = Pack(node_entries, node_counts);
    memberships.links = Pack(link_entries, link_counts);
    network.per_k.push_back(std::move(memberships));
  }
  return network;
}

std::span<const std::uint32_t> CommunityLists::of(std::size_t item) const {
  const auto [first, last] = std::equal_range(items.begin(), items.end(), item);
  const auto begin = static_cast<std::size_t>(first - items.begin());
  return {positions.data() + begin, static_cast<std::size_t>(last - first)};
}

std::span<const std::uint32_t> CommunityLists::of(std::size_t item, std::size_t& cursor) const {
  while (cursor < items.size() && items[cursor] < item) ++cursor;
  const std::size_t begin = cursor;
  while (cursor < items.size() && items[cursor] == item) ++cursor;
  return {positions.data() + begin, cursor - begin};
}

std::string Community_label(const CommunityRecord& community) {
  if (!community.approximate) return std::to_string(community.number);
  // Approximate numbers are negative, but for "-0", which has the flag only.
  const std::uint64_t magnitude = community.number < 0
                                      ? 0 - static_cast<std::uint64_t>(community.number)
                                      : static_cast<std::uint64_t>(community.number);
  return "-" + std::to_string(magnitude);
}

void Append_community_labels(std::string& out, std::span<const std::uint32_t> positions,
                             const KResults& at_k) {
  for (std::size_t i = 0; i < positions.size(); ++i) {
    if (i > 0) out += ',';
    out += Community_label(at_k.communities[positions[i]]);
  }
}

std::string Weight_text(double weight) {
  char buffer[64];
  const auto result = std::to_chars(buffer, buffer + sizeof buffer, weight);
  return std::string(buffer, result.ptr);
}

}  // namespace kcp
