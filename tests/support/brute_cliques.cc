#include "tests/support/brute_cliques.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <iterator>
#include <map>
#include <stdexcept>
#include <utility>
#include <vector>

namespace kcp::testing {

namespace {

// The nodes of the links, ascending, and each node's out-links as a bit mask over their
// positions.
struct Bit_graph {
  std::vector<NodeIndex> nodes;
  std::vector<std::uint32_t> out;
};

Bit_graph Make_bit_graph(const IndexLinkMap& links) {
  std::map<NodeIndex, std::size_t> position;
  for (const auto& [link, weight] : links) {
    position.emplace(link.first, 0);
    position.emplace(link.second, 0);
  }
  if (position.size() > 20) throw std::invalid_argument("brute force needs at most 20 nodes");
  Bit_graph graph;
  for (auto& [node, at] : position) {
    at = graph.nodes.size();
    graph.nodes.push_back(node);
  }
  graph.out.assign(graph.nodes.size(), 0);
  for (const auto& [link, weight] : links) {
    graph.out[position[link.first]] |= 1u << position[link.second];
  }
  return graph;
}

NodeList Members(const Bit_graph& graph, std::uint32_t mask) {
  NodeList members;
  for (std::size_t i = 0; i < graph.nodes.size(); ++i) {
    if ((mask >> i) & 1u) members.push_back(graph.nodes[i]);
  }
  return members;
}

template <typename IsClique>
std::set<NodeList> Maximal_sets(const Bit_graph& graph, const IsClique& is_clique) {
  std::set<NodeList> result;
  const std::size_t n = graph.nodes.size();
  for (std::uint32_t mask = 0; mask < (1u << n); ++mask) {
    if (std::popcount(mask) < 3 || !is_clique(mask)) continue;
    bool maximal = true;
    for (std::size_t i = 0; i < n && maximal; ++i) {
      if (!((mask >> i) & 1u) && is_clique(mask | (1u << i))) maximal = false;
    }
    if (maximal) result.insert(Members(graph, mask));
  }
  return result;
}

}  // namespace

std::set<NodeList> Brute_maximal_cliques(const IndexLinkMap& links) {
  Bit_graph graph = Make_bit_graph(links);
  std::vector<std::uint32_t> adjacent(graph.nodes.size(), 0);
  for (std::size_t i = 0; i < graph.nodes.size(); ++i) {
    for (std::size_t j = 0; j < graph.nodes.size(); ++j) {
      if ((graph.out[i] >> j) & 1u) {
        adjacent[i] |= 1u << j;
        adjacent[j] |= 1u << i;
      }
    }
  }
  return Maximal_sets(graph, [&](std::uint32_t mask) {
    for (std::size_t i = 0; i < graph.nodes.size(); ++i) {
      if (((mask >> i) & 1u) && (mask & ~(adjacent[i] | (1u << i))) != 0) return false;
    }
    return true;
  });
}

std::set<NodeList> Brute_directed_cliques(const IndexLinkMap& links) {
  Bit_graph graph = Make_bit_graph(links);
  // A set can be ordered exactly when it keeps having a member that links to all the others:
  // that member goes first, and what is left must be orderable again.
  return Maximal_sets(graph, [&](std::uint32_t mask) {
    std::uint32_t left = mask;
    while (left != 0) {
      bool found = false;
      for (std::size_t i = 0; i < graph.nodes.size() && !found; ++i) {
        const std::uint32_t bit = 1u << i;
        if ((left & bit) && (left & ~bit & ~graph.out[i]) == 0) {
          left &= ~bit;
          found = true;
        }
      }
      if (!found) return false;
    }
    return true;
  });
}

}  // namespace kcp::testing

namespace kcp::testing {

namespace {

using Adjacency = std::map<NodeIndex, NodeSet>;

bool Inside_a_known(const std::vector<NodeSet>& known, const NodeSet& S) {
  for (const NodeSet& k : known) {
    if (std::includes(k.begin(), k.end(), S.begin(), S.end())) return true;
  }
  return false;
}

NodeSet Common(const NodeSet& a, const NodeSet& b) {
  NodeSet result;
  std::set_intersection(a.begin(), a.end(), b.begin(), b.end(),
                        std::inserter(result, result.end()));
  return result;
}

std::vector<NodeIndex> Order_by_degree(const Adjacency& neighs) {
  std::vector<std::pair<std::size_t, NodeIndex>> keyed;
  for (const auto& [node, set] : neighs) keyed.emplace_back(set.size(), node);
  std::sort(keyed.begin(), keyed.end());
  std::vector<NodeIndex> order;
  for (const auto& [degree, node] : keyed) order.push_back(node);
  return order;
}

struct Undirected_walk {
  Adjacency working;
  std::map<NodeIndex, std::vector<NodeSet>> holding;  // cliques holding each node
  CliqueList result;
  std::vector<NodeSet> known;

  void Register(const NodeSet& clique) {
    result.emplace_back(clique.begin(), clique.end());
    for (const NodeIndex m : clique) holding[m].push_back(clique);
    known.push_back(clique);
  }

  void Extend(const NodeIndex& x, NodeSet C, const NodeSet& P) {
    NodeSet T = Common(working[x], P);
    for (const NodeIndex c : C) T.erase(c);
    C.insert(x);
    if (T.empty()) {
      if (!Inside_a_known(known, C)) Register(C);
      return;
    }
    NodeSet reach = T;
    reach.insert(C.begin(), C.end());
    if (Inside_a_known(known, reach)) return;
    while (!T.empty()) {
      const NodeIndex y = *T.begin();
      T.erase(T.begin());
      Extend(y, C, T);
    }
  }

  void Node(const NodeIndex& v) {
    const NodeSet N = working[v];
    known = holding[v];
    NodeSet P = N;
    while (P.size() > 1) {
      const NodeIndex w = *P.begin();
      const NodeSet C{v, w};
      NodeSet T = Common(working[w], P);
      T.erase(v);
      T.erase(w);
      P.erase(w);
      NodeSet reach = T;
      reach.insert(C.begin(), C.end());
      if (Inside_a_known(known, reach)) continue;
      while (!T.empty()) {
        const NodeIndex x = *T.begin();
        T.erase(T.begin());
        Extend(x, C, T);
      }
    }
    for (const NodeIndex n : N) {
      working[v].erase(n);
      working[n].erase(v);
    }
    working.erase(v);
  }
};

struct Gap_set {
  NodeIndex label;
  NodeSet candidates;
};
using Gaps = std::vector<Gap_set>;

struct Directed_walk {
  Adjacency outs;
  Adjacency ins;
  std::map<NodeIndex, std::vector<NodeSet>> holding;
  CliqueList result;
  std::vector<NodeSet> known;
  std::map<std::uint32_t, NodeSet> found;

  Gaps Insert(const Gaps& gaps, const std::size_t& at, const NodeIndex& x) {
    Gaps next;
    for (std::size_t i = 0; i < at; ++i) {
      next.push_back({gaps[i].label, Common(gaps[i].candidates, ins[x])});
    }
    next.push_back({x, Common(gaps[at].candidates, ins[x])});
    for (std::size_t i = at; i < gaps.size(); ++i) {
      next.push_back({gaps[i].label, Common(gaps[i].candidates, outs[x])});
    }
    return next;
  }

  static NodeSet Reach(const Gaps& gaps) {
    NodeSet S;
    for (const Gap_set& gap : gaps) {
      S.insert(gap.label);
      S.insert(gap.candidates.begin(), gap.candidates.end());
    }
    return S;
  }

  void Record(const Gaps& gaps) {
    NodeSet K;
    for (std::size_t i = 0; i + 1 < gaps.size(); ++i) K.insert(gaps[i].label);
    known.push_back(K);
    std::uint32_t last = 0;
    std::vector<std::uint32_t> inside;
    for (const auto& [key, set] : found) {
      last = key;
      if (std::includes(K.begin(), K.end(), set.begin(), set.end())) inside.push_back(key);
    }
    for (const std::uint32_t key : inside) found.erase(key);
    found[last + 1] = K;
  }

  void Try_all(Gaps& gaps) {
    for (std::size_t f = 0; f < gaps.size(); ++f) {
      while (!gaps[f].candidates.empty()) {
        const NodeIndex y = *gaps[f].candidates.begin();
        Gaps next = Insert(gaps, f, y);
        gaps[f].candidates.erase(y);
        Extend(next);
      }
    }
  }

  void Extend(Gaps& gaps) {
    if (Inside_a_known(known, Reach(gaps))) return;
    bool more = false;
    for (const Gap_set& gap : gaps) more = more || !gap.candidates.empty();
    if (!more) {
      Record(gaps);
      return;
    }
    Try_all(gaps);
  }

  void Node(const NodeIndex& v) {
    known = holding[v];
    found.clear();
    Gaps L{{v, ins[v]}, {v, outs[v]}};
    for (std::size_t e = 0; e < L.size(); ++e) {
      while (!L[e].candidates.empty()) {
        const NodeIndex w = *L[e].candidates.begin();
        Gaps R = Insert(L, e, w);
        L[e].candidates.erase(w);
        if (Inside_a_known(known, Reach(R))) continue;
        Try_all(R);
      }
    }
    for (const auto& [key, clique] : found) {
      result.emplace_back(clique.begin(), clique.end());
      for (const NodeIndex m : clique) holding[m].push_back(clique);
    }
    NodeSet N = outs[v];
    N.insert(ins[v].begin(), ins[v].end());
    for (const NodeIndex n : N) {
      outs[n].erase(v);
      ins[n].erase(v);
    }
    outs.erase(v);
    ins.erase(v);
  }
};

}  // namespace

CliqueList Plain_clique_walk(const IndexLinkMap& links) {
  Undirected_walk walk;
  for (const auto& [link, weight] : links) {
    walk.working[link.first].insert(link.second);
    walk.working[link.second].insert(link.first);
  }
  for (const NodeIndex v : Order_by_degree(walk.working)) walk.Node(v);
  return walk.result;
}

CliqueList Plain_directed_clique_walk(const IndexLinkMap& links) {
  Directed_walk walk;
  Adjacency neighs;
  for (const auto& [link, weight] : links) {
    walk.outs[link.first].insert(link.second);
    walk.ins[link.second].insert(link.first);
    walk.outs[link.second];
    walk.ins[link.first];
    neighs[link.first].insert(link.second);
    neighs[link.second].insert(link.first);
  }
  for (const NodeIndex v : Order_by_degree(neighs)) walk.Node(v);
  return walk.result;
}

}  // namespace kcp::testing
