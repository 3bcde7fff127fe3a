#include "graph/node_index.h"

#include <string_view>
#include <unordered_map>
#include <utility>

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
  for (const auto& [key, weight] : links) {
    const NodeIndex s = index(key.first);
    const NodeIndex t = index(key.second);
    if (!directed && t < s) {
      out[{t, s}] += weight;
    } else {
      out[{s, t}] += weight;
    }
  }
}

}  // namespace kcp
