#include "tests/support/brute_communities.h"

#include <bit>
#include <map>
#include <numeric>
#include <random>
#include <stdexcept>

namespace kcp::testing {

namespace {

std::uint32_t Mask_of(const NodeList& nodes) {
  std::uint32_t mask = 0;
  for (NodeIndex v : nodes) mask |= 1u << (v - 1);
  return mask;
}

NodeList Nodes_of(std::uint32_t mask) {
  NodeList nodes;
  for (NodeIndex v = 1; mask != 0; ++v, mask >>= 1) {
    if (mask & 1u) nodes.push_back(v);
  }
  return nodes;
}

bool Is_clique(const Small_graph& graph, std::uint32_t mask) {
  for (NodeIndex u = 1; u <= graph.n; ++u) {
    if (!((mask >> (u - 1)) & 1u)) continue;
    const std::uint32_t others = mask & ~(1u << (u - 1));
    if ((graph.adjacency[u - 1] & others) != others) return false;
  }
  return true;
}

std::uint32_t Find(std::vector<std::uint32_t>& parent, std::uint32_t x) {
  while (parent[x] != x) x = parent[x] = parent[parent[x]];
  return x;
}

}  // namespace

void Small_graph::Link(NodeIndex u, NodeIndex v) {
  adjacency[u - 1] |= 1u << (v - 1);
  adjacency[v - 1] |= 1u << (u - 1);
}

Small_graph Random_small_graph(std::uint32_t n, double p, std::uint32_t seed) {
  if (n > 20) throw std::invalid_argument("Random_small_graph: at most 20 nodes");
  Small_graph graph;
  graph.n = n;
  graph.adjacency.assign(n, 0);
  std::mt19937 random(seed);
  std::bernoulli_distribution coin(p);
  for (NodeIndex u = 1; u <= n; ++u) {
    for (NodeIndex v = u + 1; v <= n; ++v) {
      if (coin(random)) graph.Link(u, v);
    }
  }
  return graph;
}

CliqueList Brute_maximal_cliques(const Small_graph& graph, std::uint32_t min_size) {
  CliqueList cliques;
  const std::uint32_t all = graph.n == 0 ? 0 : (1u << graph.n) - 1;
  for (std::uint32_t mask = 1; mask != 0 && mask <= all; ++mask) {
    if (static_cast<std::uint32_t>(std::popcount(mask)) < min_size) continue;
    if (!Is_clique(graph, mask)) continue;
    bool maximal = true;
    for (NodeIndex v = 1; v <= graph.n && maximal; ++v) {
      if (!((mask >> (v - 1)) & 1u) && (graph.adjacency[v - 1] & mask) == mask) maximal = false;
    }
    if (maximal) cliques.push_back(Nodes_of(mask));
  }
  return cliques;
}

std::vector<NodeList> Brute_k_cliques(const Small_graph& graph, std::uint32_t k) {
  std::vector<NodeList> k_cliques;
  const std::uint32_t all = graph.n == 0 ? 0 : (1u << graph.n) - 1;
  for (std::uint32_t mask = 1; mask != 0 && mask <= all; ++mask) {
    if (static_cast<std::uint32_t>(std::popcount(mask)) == k && Is_clique(graph, mask)) {
      k_cliques.push_back(Nodes_of(mask));
    }
  }
  return k_cliques;
}

std::set<NodeList> Brute_k_clique_communities(const Small_graph& graph, std::uint32_t k) {
  const std::vector<NodeList> k_cliques = Brute_k_cliques(graph, k);
  std::vector<std::uint32_t> masks;
  for (const NodeList& c : k_cliques) masks.push_back(Mask_of(c));
  std::vector<std::uint32_t> parent(masks.size());
  std::iota(parent.begin(), parent.end(), 0u);
  for (std::uint32_t a = 0; a < masks.size(); ++a) {
    for (std::uint32_t b = a + 1; b < masks.size(); ++b) {
      if (static_cast<std::uint32_t>(std::popcount(masks[a] & masks[b])) + 1 == k) {
        parent[Find(parent, a)] = Find(parent, b);
      }
    }
  }
  std::map<std::uint32_t, std::uint32_t> union_of_root;
  for (std::uint32_t a = 0; a < masks.size(); ++a) union_of_root[Find(parent, a)] |= masks[a];
  std::set<NodeList> communities;
  for (const auto& [root, mask] : union_of_root) communities.insert(Nodes_of(mask));
  return communities;
}

OverlapMatrix Brute_overlap_matrix(const CliqueList& cliques, std::uint32_t min_shared) {
  OverlapMatrix overlaps;
  overlaps.min_shared = min_shared;
  overlaps.rows.resize(cliques.size());
  for (std::uint32_t i = 0; i < cliques.size(); ++i) {
    const NodeSet a(cliques[i].begin(), cliques[i].end());
    for (std::uint32_t j = 0; j < cliques.size(); ++j) {
      std::uint32_t shared = 0;
      for (NodeIndex v : cliques[j]) shared += a.count(v);
      if (i == j || shared >= min_shared) overlaps.rows[i].push_back(Overlap{j, shared});
    }
  }
  return overlaps;
}

namespace {

struct Reference_state {
  const CliqueList& cliques;
  const OverlapMatrix& overlaps;
  std::uint32_t k;
  std::uint32_t n_exact;
  std::vector<std::int32_t> labels;
  std::int32_t counter = -1;
  std::map<NodeIndex, std::uint32_t> node_tally;
  std::map<Link, std::uint32_t> link_tally;
  CliqueIndexList members;
  bool approximate = false;

  void Take(std::uint32_t m) {
    labels[m] = counter;
    members.push_back(m);
    if (m >= n_exact) approximate = true;
    const Clique& c = cliques[m];
    for (std::size_t a = 0; a < c.size(); ++a) {
      ++node_tally[c[a]];
      for (std::size_t b = a + 1; b < c.size(); ++b) ++link_tally[Link(c[a], c[b])];
    }
  }

  void Extend(std::uint32_t c) {
    CliqueIndexList candidates;
    for (const Overlap& e : overlaps.rows[c]) {
      if (e.shared >= k - 1 && labels[e.clique] < 0) candidates.push_back(e.clique);
    }
    for (std::uint32_t m : candidates) Take(m);
    for (std::uint32_t m : candidates) Extend(m);
  }

  void Look(std::uint32_t seed) {
    CliqueIndexList candidates;
    bool qualifies = false;
    for (const Overlap& e : overlaps.rows[seed]) {
      if (e.shared >= k - 1) candidates.push_back(e.clique);
      if (e.shared >= k) qualifies = true;
    }
    if (!qualifies) return;
    ++counter;
    for (std::uint32_t m : candidates) Take(m);
    for (std::uint32_t m : candidates) Extend(m);
  }
};

}  // namespace

void Reference_percolation(CommunityList& communities, CommunityLinkLists& community_links,
                           CommunityCliqueLists& community_cliques, const CliqueList& cliques,
                           const OverlapMatrix& overlaps, std::uint32_t k, std::uint32_t n_exact,
                           std::uint32_t& n_exact_coms) {
  Reference_state state{cliques, overlaps, k, n_exact, {}, -1, {}, {}, {}, false};
  state.labels.assign(overlaps.rows.size(), -1);
  struct Staged {
    Community nodes;
    LinkList links;
    CliqueIndexList members;
    bool approximate;
  };
  std::vector<Staged> staged;
  for (std::uint32_t i = 0; i < overlaps.rows.size(); ++i) {
    state.node_tally.clear();
    state.link_tally.clear();
    state.members.clear();
    state.approximate = false;
    if (state.labels[i] < 0 && cliques[i].size() >= k) state.Look(i);
    if (state.node_tally.empty()) continue;
    Staged s{{}, {}, state.members, state.approximate};
    for (const auto& [node, count] : state.node_tally) s.nodes.push_back(node);
    for (const auto& [link, count] : state.link_tally) s.links.push_back(link);
    staged.push_back(std::move(s));
  }
  communities.clear();
  community_links.clear();
  community_cliques.clear();
  for (int pass = 0; pass < 2; ++pass) {
    if (pass == 1) n_exact_coms = static_cast<std::uint32_t>(communities.size());
    for (const Staged& s : staged) {
      if (s.approximate != (pass == 1)) continue;
      communities.push_back(s.nodes);
      community_links.push_back(s.links);
      community_cliques.push_back(s.members);
    }
  }
}

}  // namespace kcp::testing
