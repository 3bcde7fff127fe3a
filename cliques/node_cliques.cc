#include "cliques/node_cliques.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <span>
#include <string>

#include "cliques/node_bits.h"
#include "core/xerror_msg.h"
#include "graph/adjacency.h"

namespace kcp {

namespace {

const Vtx& Record(const VtxMap& map, const NodeIndex& n) {
  return Record_of(map, n, "Clique_find", "vertex map");
}

using Word = std::uint64_t;
constexpr std::size_t kWordBits = 64;

void Set_bit(Word* row, const std::size_t& i) {
  row[i / kWordBits] |= Word{1} << (i % kWordBits);
}
void Reset_bit(std::vector<Word>& row, const std::size_t& i) {
  row[i / kWordBits] &= ~(Word{1} << (i % kWordBits));
}
bool None(const std::vector<Word>& row) {
  return std::all_of(row.begin(), row.end(), [](const Word& w) { return w == 0; });
}
template <typename F>
void For_each_bit(const std::vector<Word>& row, F&& f) {
  for (std::size_t i = 0; i < row.size(); ++i) {
    for (Word w = row[i]; w != 0; w &= w - 1) {
      f(i * kWordBits + static_cast<std::size_t>(std::countr_zero(w)));
    }
  }
}

// Calls hit(p) for every position p of `all` whose node is in `linked`; both ascend. A list
// much shorter than the other is looked up in it, narrowing the range as the values ascend;
// otherwise the two are merged.
template <typename Hit>
void Intersect(std::span<const NodeIndex> linked, std::span<const NodeIndex> all, Hit&& hit) {
  if (linked.size() > 8 * all.size()) {
    auto from = linked.begin();
    for (std::size_t p = 0; p < all.size(); ++p) {
      from = std::lower_bound(from, linked.end(), all[p]);
      if (from == linked.end()) return;
      if (*from == all[p]) hit(p);
    }
  } else if (all.size() > 8 * linked.size()) {
    auto from = all.begin();
    for (const NodeIndex x : linked) {
      from = std::lower_bound(from, all.end(), x);
      if (from == all.end()) return;
      if (*from == x) hit(static_cast<std::size_t>(from - all.begin()));
    }
  } else {
    std::size_t p = 0;
    for (const NodeIndex x : linked) {
      while (p < all.size() && all[p] < x) ++p;
      if (p == all.size()) return;
      if (all[p] == x) hit(p);
    }
  }
}

// Splits the neighbours of v into the unprocessed ones (search.unprocessed, ascending), which
// get the first local numbers, and the processed ones (search.gone), numbered after them.
void Number_neighbours(std::span<const NodeIndex> all, NodeSearch& search) {
  search.unprocessed.clear();
  search.gone.clear();
  for (const NodeIndex n : all)
    (search.processed[n] ? search.gone : search.unprocessed).push_back(n);
}

// True when one registered clique holds every unprocessed neighbour of v: no new clique is left.
bool Known_clique_holds_all(const NodeIndex& v, const NodeList& N, const CliqueList& cliques,
                            const NodeCliqueMap& node_cliques) {
  for (const std::uint32_t c : node_cliques.index.Holders(v)) {
    const Clique& known = cliques[c];
    if (known.size() > N.size() && std::includes(known.begin(), known.end(), N.begin(), N.end())) {
      return true;
    }
  }
  return false;
}

// The bit rows of the local graph, `words` words per local number.
struct LocalRows {
  std::vector<Word>& rows;
  std::size_t words;
  Word* operator()(const std::size_t& i) const { return rows.data() + i * words; }
};

// Lays out the local numbers of the neighbours and the bit row of each: an unprocessed node's
// links to every neighbour, a processed one's links to the unprocessed ones.
LocalRows Lay_out_rows(std::span<const NodeIndex> all, NodeSearch& search) {
  const NodeList& N = search.unprocessed;
  const std::size_t n = N.size();
  const std::size_t m = all.size();
  const LocalRows row{search.rows, NodeBits::Words_for(m)};
  std::vector<std::uint32_t>& local = search.local;
  local.resize(m);
  std::uint32_t next_new = 0;
  auto next_gone = static_cast<std::uint32_t>(n);
  for (std::size_t p = 0; p < m; ++p)
    local[p] = search.processed[all[p]] ? next_gone++ : next_new++;

  // Every link counts as in the whole graph: the unprocessed nodes keep all their links among
  // themselves, and a processed neighbour is tested against them as it stands in the graph.
  search.rows.assign(m * row.words, 0);
  for (std::size_t i = 0; i < n; ++i) {
    Intersect(search.graph.Of(N[i]), all, [&](const std::size_t& p) {
      const std::uint32_t j = local[p];
      Set_bit(row(i), j);
      if (j >= n) Set_bit(row(j), i);
    });
  }
  return row;
}

// Readies `frame`, whose P and X are set: false when it has nothing to branch on, after
// adding R's clique to `found` when it is maximal and holds two or more neighbours.
bool Open_frame(NodeSearch::Frame& frame, const NodeSearch& search, const LocalRows& row,
                std::vector<NodeList>& found) {
  const std::vector<std::uint32_t>& R = search.R;
  if (None(frame.P)) {
    if (None(frame.X) && R.size() >= 2) {
      NodeList clique;
      clique.reserve(R.size() + 1);
      for (const std::uint32_t r : R) clique.push_back(search.unprocessed[r]);
      found.push_back(std::move(clique));
    }
    return false;
  }
  // Pivot: the node of P ∪ X linked to most candidates; only the others are branched on.
  std::size_t pivot = 0;
  std::size_t best = 0;
  bool chosen = false;
  const auto consider = [&](const std::size_t& u) {
    const Word* linked = row(u);
    std::size_t count = 0;
    for (std::size_t w = 0; w < row.words; ++w) {
      count += static_cast<std::size_t>(std::popcount(linked[w] & frame.P[w]));
    }
    if (!chosen || count > best) {
      pivot = u;
      best = count;
      chosen = true;
    }
  };
  For_each_bit(frame.P, consider);
  For_each_bit(frame.X, consider);
  frame.branches.clear();
  const Word* excluded = row(pivot);
  for (std::size_t w = 0; w < row.words; ++w) {
    for (Word bits = frame.P[w] & ~excluded[w]; bits != 0; bits &= bits - 1) {
      frame.branches.push_back(static_cast<std::uint32_t>(w * kWordBits + std::countr_zero(bits)));
    }
  }
  frame.next = 0;
  return true;
}

// The pivoting search over the local graph, depth first on search.frames: candidates start as
// the unprocessed neighbours, excluded as the processed ones. Appends the maximal cliques
// found, without v, in local numbering order of discovery.
void Pivot_search(NodeSearch& search, const std::size_t& m, const LocalRows& row,
                  std::vector<NodeList>& found) {
  const std::size_t n = search.unprocessed.size();
  std::vector<NodeSearch::Frame>& frames = search.frames;
  std::vector<std::uint32_t>& R = search.R;
  R.clear();
  if (frames.empty()) frames.resize(1);
  frames[0].P.assign(row.words, 0);
  frames[0].X.assign(row.words, 0);
  for (std::size_t i = 0; i < n; ++i) Set_bit(frames[0].P.data(), i);
  for (std::size_t j = n; j < m; ++j) Set_bit(frames[0].X.data(), j);
  std::size_t depth = 0;
  bool searching = Open_frame(frames[0], search, row, found);
  while (searching) {
    if (frames[depth].next == frames[depth].branches.size()) {
      if (depth == 0) break;
      --depth;
      R.pop_back();
      continue;
    }
    if (frames.size() <= depth + 1) frames.resize(depth + 2);
    NodeSearch::Frame& top = frames[depth];
    NodeSearch::Frame& child = frames[depth + 1];
    const std::uint32_t q = top.branches[top.next++];
    const Word* linked = row(q);
    child.P.resize(row.words);
    child.X.resize(row.words);
    for (std::size_t w = 0; w < row.words; ++w) {
      child.P[w] = top.P[w] & linked[w];
      child.X[w] = top.X[w] & linked[w];
    }
    Reset_bit(top.P, q);
    Set_bit(top.X.data(), q);
    R.push_back(q);
    if (Open_frame(child, search, row, found)) {
      ++depth;
    } else {
      R.pop_back();
    }
  }
}

// Puts the cliques in the order of the literal search and adds v to each.
void In_search_order(const NodeIndex& v, std::vector<NodeList>& found) {
  // Local numbers follow node order, so the clique lists compare like the search's paths.
  for (NodeList& clique : found) std::sort(clique.begin(), clique.end());
  std::sort(found.begin(), found.end());
  for (NodeList& clique : found)
    clique.insert(std::upper_bound(clique.begin(), clique.end(), v), v);
}

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
  Number_neighbours(all, search);
  std::vector<NodeList> found;
  if (search.unprocessed.size() < 2 ||
      Known_clique_holds_all(v, search.unprocessed, cliques, node_cliques)) {
    return found;
  }
  const LocalRows row = Lay_out_rows(all, search);
  Pivot_search(search, all.size(), row, found);
  In_search_order(v, found);
  return found;
}

}  // namespace kcp
