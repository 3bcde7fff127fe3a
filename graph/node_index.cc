#include "graph/node_index.h"

#include <cstddef>
#include <utility>
#include <vector>

#include "graph/counting_sort.h"

namespace kcp {

namespace {

using Keyed = std::pair<std::pair<NodeIndex, NodeIndex>, double>;

}  // namespace

void Convert_s_links(IndexLinkMap& out, NameMap& names, const LinkMap& links,
                     const bool& directed) {
  names.clear();
  out.clear();
  const NamePool& pool = links.Names();
  // Pool number -> index, 0 while the name has none.
  std::vector<NodeIndex> index_of(pool.size(), 0);
  names.reserve(pool.size(), pool.Bytes());
  NodeIndex last = 0;
  const auto index = [&](const std::uint32_t& id) {
    if (index_of[id] == 0) {
      index_of[id] = ++last;
      names.emplace(last, pool[id]);
    }
    return index_of[id];
  };

  // The keys in walk order; both sorting passes keep the walk order among equal keys, so each
  // sum below adds its weights in the order the walk meets them.
  std::vector<Keyed> keyed;
  keyed.reserve(links.size());
  for (const LinkMap::Entry& link : links.Entries()) {
    const NodeIndex s = index(link.source);
    const NodeIndex t = index(link.target);
    if (!directed && t < s) {
      keyed.push_back({{t, s}, link.weight});
    } else {
      keyed.push_back({{s, t}, link.weight});
    }
  }
  std::vector<NodeIndex>().swap(index_of);
  {
    std::vector<Keyed> scratch;
    const std::size_t bound = std::size_t{last} + 1;
    Counting_sort(keyed, scratch, bound, [](const Keyed& e) { return e.first.second; });
    Counting_sort(keyed, scratch, bound, [](const Keyed& e) { return e.first.first; });
  }

  // A new key starts at 0.0 and adds the weight of each link folded into it.
  std::size_t kept = 0;
  for (std::size_t i = 0; i < keyed.size();) {
    Keyed key = keyed[i];
    double total = 0.0;
    for (; i < keyed.size() && keyed[i].first == key.first; ++i) total += keyed[i].second;
    key.second = total;
    keyed[kept++] = key;
  }
  keyed.resize(kept);
  if (keyed.capacity() - kept > kept / 8) keyed.shrink_to_fit();
  out = IndexLinkMap::From_sorted(std::move(keyed));
}

}  // namespace kcp
