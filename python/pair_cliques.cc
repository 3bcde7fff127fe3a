#include "python/pair_cliques.h"

namespace kcp {

namespace {

bool Share_a_node(const NodeSet& a, const NodeSet& b) {
  auto i = a.begin();
  auto j = b.begin();
  while (i != a.end() && j != b.end()) {
    if (*i < *j) {
      ++i;
    } else if (*j < *i) {
      ++j;
    } else {
      return true;
    }
  }
  return false;
}

}  // namespace

CliqueList Pair_cliques(const VtxMap& vertices, const IndexLinkMap& links) {
  CliqueList pairs;
  for (const auto& [key, weight] : links) {
    const auto& [s, t] = key;
    if (!Share_a_node(vertices.at(s).Neighs_c(), vertices.at(t).Neighs_c())) {
      pairs.push_back({s, t});
    }
  }
  return pairs;
}

}  // namespace kcp
