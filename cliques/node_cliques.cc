#include "cliques/node_cliques.h"

#include <algorithm>
#include <cstdint>
#include <string>

#include "cliques/node_bits.h"
#include "core/xerror_msg.h"
#include "graph/adjacency.h"

namespace kcp {

namespace {

const Vtx& Record(const VtxMap& map, const NodeIndex& n) {
  return Record_of(map, n, "Clique_find", "vertex map");
}

using Bits = NodeBits;

// One level of the pivoting search: candidates P, excluded X, the branches still to take.
struct Frame {
  Bits P;
  Bits X;
  std::vector<std::uint32_t> branches;
  std::size_t next = 0;
};

}  // namespace

std::vector<NodeList> Node_cliques_in_order(const NodeIndex& v, const VtxMap& working,
                                            const VtxMap& vertices, const CliqueList& cliques,
                                            const NodeCliqueMap& node_cliques) {
  Record(working, v);
  Record(vertices, v);
  const Adjacency graph(vertices);
  NodeSearch search(graph);
  for (const auto& [index, record] : vertices) {
    if (working.count(index) == 0) search.processed[index] = 1;
  }
  return Node_cliques_in_order(v, search, cliques, node_cliques);
}

std::vector<NodeList> Node_cliques_in_order(const NodeIndex& v, NodeSearch& search,
                                            const CliqueList& cliques,
                                            const NodeCliqueMap& node_cliques) {
  const std::span<const NodeIndex> all = search.graph.Of(v);
  // Local numbers: the unprocessed neighbours first, ascending, then the processed ones.
  NodeList N;
  NodeList gone;
  for (const NodeIndex n : all) (search.processed[n] ? gone : N).push_back(n);
  std::vector<NodeList> found;
  if (N.size() < 2) return found;

  // When one registered clique holds every unprocessed neighbour, no new clique is left here.
  for (const std::uint32_t c : node_cliques.index.Holders(v)) {
    const Clique& known = cliques[c];
    if (known.size() > N.size() && std::includes(known.begin(), known.end(), N.begin(), N.end())) {
      return found;
    }
  }

  const std::size_t n = N.size();
  const std::size_t m = n + gone.size();
  const std::size_t words = NodeBits::Words_for(m);
  for (std::size_t i = 0; i < n; ++i) search.local[N[i]] = static_cast<std::int32_t>(i);
  for (std::size_t i = 0; i < gone.size(); ++i)
    search.local[gone[i]] = static_cast<std::int32_t>(n + i);

  // Every link counts as in the whole graph: the unprocessed nodes keep all their links among
  // themselves, and a processed neighbour is tested against them as it stands in the graph.
  std::vector<Bits> adj(m, Bits(words));
  for (std::size_t i = 0; i < n; ++i) {
    const std::span<const NodeIndex> linked = search.graph.Of(N[i]);
    if (linked.size() < 4 * m) {
      for (const NodeIndex other : linked) {
        const std::int32_t j = search.local[other];
        if (j >= 0) adj[i].Set(static_cast<std::size_t>(j));
      }
    } else {
      for (std::size_t j = 0; j < m; ++j) {
        if (std::binary_search(linked.begin(), linked.end(), j < n ? N[j] : gone[j - n])) {
          adj[i].Set(j);
        }
      }
    }
    adj[i].For_each([&](std::size_t j) {
      if (j >= n) adj[j].Set(i);
    });
  }
  for (const NodeIndex node : N) search.local[node] = -1;
  for (const NodeIndex node : gone) search.local[node] = -1;

  std::vector<std::uint32_t> R;
  std::vector<Frame> stack;
  const auto push = [&](Bits P, Bits X) {
    if (P.None()) {
      if (X.None() && R.size() >= 2) {
        NodeList clique;
        clique.reserve(R.size() + 1);
        for (const std::uint32_t r : R) clique.push_back(N[r]);
        found.push_back(std::move(clique));
      }
      return false;
    }
    // Pivot: the node of P ∪ X linked to most candidates; only the others are branched on.
    std::size_t pivot = 0;
    std::size_t best = 0;
    bool chosen = false;
    const auto consider = [&](std::size_t u) {
      const std::size_t count = adj[u].Count_and(P);
      if (!chosen || count > best) {
        pivot = u;
        best = count;
        chosen = true;
      }
    };
    P.For_each(consider);
    X.For_each(consider);
    Frame frame{std::move(P), std::move(X), {}, 0};
    frame.branches = frame.P.Minus_list(adj[pivot]);
    stack.push_back(std::move(frame));
    return true;
  };

  Bits P(words);
  for (std::size_t i = 0; i < n; ++i) P.Set(i);
  Bits X(words);
  for (std::size_t j = n; j < m; ++j) X.Set(j);
  push(std::move(P), std::move(X));
  while (!stack.empty()) {
    Frame& top = stack.back();
    if (top.next == top.branches.size()) {
      stack.pop_back();
      if (!R.empty() && !stack.empty()) R.pop_back();
      continue;
    }
    const std::uint32_t q = top.branches[top.next++];
    Bits P_q = top.P.And(adj[q]);
    Bits X_q = top.X.And(adj[q]);
    top.P.Reset(q);
    top.X.Set(q);
    R.push_back(q);
    if (!push(std::move(P_q), std::move(X_q))) R.pop_back();
  }

  // Local numbers follow node order, so the clique lists compare like the search's paths.
  for (NodeList& clique : found) std::sort(clique.begin(), clique.end());
  std::sort(found.begin(), found.end());
  for (NodeList& clique : found)
    clique.insert(std::upper_bound(clique.begin(), clique.end(), v), v);
  return found;
}

}  // namespace kcp
