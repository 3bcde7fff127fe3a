#include "graph/node_index.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace kcp {

void Convert_s_links(IndexLinkMap& out, NameMap& names, const LinkMap& links,
                     const bool& directed) {
  names.clear();
  out.clear();
  // Keys view the names held by the LinkMap, which outlives this call.
  std::unordered_map<std::string_view, NodeIndex> index_of;
  index_of.reserve(2 * links.size());
  const auto index = [&](const std::string& name) {
    const auto [it, inserted] =
        index_of.try_emplace(name, static_cast<NodeIndex>(index_of.size() + 1));
    if (inserted) names.emplace_hint(names.end(), it->second, name);
    return it->second;
  };

  // The keys in walk order; a stable sort keeps the walk order among equal keys, so each sum
  // below adds its weights in the same order as adding them one by one during the walk would.
  std::vector<std::pair<std::pair<NodeIndex, NodeIndex>, double>> keyed;
  keyed.reserve(links.size());
  const std::string* last_source = nullptr;
  NodeIndex s = 0;
  for (const auto& [key, weight] : links) {
    // The walk meets each source name in one run of entries.
    if (last_source == nullptr || *last_source != key.first) {
      s = index(key.first);
      last_source = &key.first;
    }
    const NodeIndex t = index(key.second);
    if (!directed && t < s) {
      keyed.push_back({{t, s}, weight});
    } else {
      keyed.push_back({{s, t}, weight});
    }
  }
  std::stable_sort(keyed.begin(), keyed.end(),
                   [](const auto& a, const auto& b) { return a.first < b.first; });
  for (const auto& [key, weight] : keyed) {
    // Keys arrive in ascending order, so a new key always goes last.
    const auto it = out.emplace_hint(out.end(), key, 0.0);
    it->second += weight;
  }
}

}  // namespace kcp
