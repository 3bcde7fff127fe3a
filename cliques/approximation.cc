#include "cliques/approximation.h"

#include <algorithm>
#include <limits>
#include <vector>

namespace kcp {

namespace {

bool Is_subset(const Clique& small, const Clique& big) {
  return small.size() <= big.size() &&
         std::includes(big.begin(), big.end(), small.begin(), small.end());
}

// For a growing list of node lists, the positions of the lists holding each node of interest, so
// that "is S inside some list" looks only at the lists holding S's rarest node instead of at all.
class SupersetIndex {
 public:
  static constexpr std::uint32_t kNone = std::numeric_limits<std::uint32_t>::max();

  // Only nodes flagged in `interest` are indexed; queries ask only about such nodes.
  SupersetIndex(const CliqueList& lists, const std::vector<char>& interest)
      : lists_(lists), interest_(interest), positions_(interest.size()) {}

  // Indexes lists_[position]; positions are added in ascending order.
  void Add(const std::uint32_t& position) {
    ++count_;
    for (const NodeIndex& n : lists_[position]) {
      if (n < interest_.size() && interest_[n]) positions_[n].push_back(position);
    }
  }

  // True when s is a subset (equal included) of a list other than the one at `skip`.
  bool Has_superset(const Clique& s, const std::uint32_t& skip = kNone) const {
    if (s.empty()) return count_ > (skip == kNone ? 0u : 1u);
    const std::vector<std::uint32_t>* rarest = nullptr;
    for (const NodeIndex& n : s) {
      if (n >= positions_.size()) return false;
      const std::vector<std::uint32_t>& holders = positions_[n];
      if (rarest == nullptr || holders.size() < rarest->size()) rarest = &holders;
      if (rarest->empty()) return false;
    }
    for (const std::uint32_t& position : *rarest) {
      if (position != skip && Is_subset(s, lists_[position])) return true;
    }
    return false;
  }

 private:
  const CliqueList& lists_;
  const std::vector<char>& interest_;
  std::vector<std::vector<std::uint32_t>> positions_;
  std::size_t count_ = 0;
};

// Flags, by node index, every node that occurs in `lists`.
std::vector<char> Nodes_of(const CliqueList& lists) {
  std::vector<char> flags;
  for (const Clique& list : lists) {
    for (const NodeIndex& n : list) {
      if (n >= flags.size()) flags.resize(std::size_t{n} + 1, 0);
      flags[n] = 1;
    }
  }
  return flags;
}

template <typename CoreMap>
void Appr_core_cliques_of(const CoreMap& core, const CliqueList& exact_cliques,
                          CliqueList& approximate, const StopRequest* stop) {
  approximate.clear();
  // Every node a neighbourhood can hold; in a proper core these are core nodes only.
  std::vector<char> core_nodes;
  for (const auto& [n, vertex] : core) {
    for (const NodeIndex& neigh : vertex.Neighs_c()) {
      if (neigh >= core_nodes.size()) core_nodes.resize(std::size_t{neigh} + 1, 0);
      core_nodes[neigh] = 1;
    }
  }

  SupersetIndex exact_index(exact_cliques, core_nodes);
  for (std::uint32_t i = 0; i < exact_cliques.size(); ++i) exact_index.Add(i);

  // Candidate keys are their positions here: 0, 1, 2, ... in order of storing.
  CliqueList candidates;
  SupersetIndex candidate_index(candidates, core_nodes);
  for (const auto& [n, vertex] : core) {
    Check_stop(stop);
    // The neighbourhood alone, without n itself: deliberate.
    const NodeSet& neighs = vertex.Neighs_c();
    Clique s(neighs.begin(), neighs.end());
    if (candidate_index.Has_superset(s) || exact_index.Has_superset(s)) continue;
    candidates.push_back(std::move(s));
    candidate_index.Add(static_cast<std::uint32_t>(candidates.size() - 1));
  }

  std::vector<char> marked(candidates.size(), 0);
  for (std::uint32_t a = 0; a < candidates.size(); ++a) {
    Check_stop(stop);
    marked[a] = candidate_index.Has_superset(candidates[a], a) ? 1 : 0;
  }
  for (std::uint32_t a = 0; a < candidates.size(); ++a) {
    if (!marked[a]) approximate.push_back(std::move(candidates[a]));
  }
}

}  // namespace

void Appr_core_cliques(const VtxMap& core, const CliqueList& exact_cliques, CliqueList& approximate,
                       const StopRequest* stop) {
  Appr_core_cliques_of(core, exact_cliques, approximate, stop);
}

void Appr_core_cliques(const VtxdMap& core, const CliqueList& exact_cliques,
                       CliqueList& approximate, const StopRequest* stop) {
  Appr_core_cliques_of(core, exact_cliques, approximate, stop);
}

void Extend_clique_vec(CliqueList& cliques, std::uint32_t& n_exact, CliqueList& approximate) {
  const std::vector<char> approximate_nodes = Nodes_of(approximate);

  {
    SupersetIndex exact_index(cliques, approximate_nodes);
    for (std::uint32_t i = 0; i < cliques.size(); ++i) exact_index.Add(i);
    CliqueList kept;
    for (Clique& a : approximate) {
      if (!exact_index.Has_superset(a)) kept.push_back(std::move(a));
    }
    approximate = std::move(kept);
  }

  SupersetIndex approximate_index(approximate, approximate_nodes);
  for (std::uint32_t i = 0; i < approximate.size(); ++i) approximate_index.Add(i);
  CliqueList merged;
  for (Clique& e : cliques) {
    // A node of e outside every approximate clique rules it out at once.
    const bool covered = std::all_of(e.begin(), e.end(), [&](const NodeIndex& n) {
      return n < approximate_nodes.size() && approximate_nodes[n];
    });
    if (!covered || !approximate_index.Has_superset(e)) merged.push_back(std::move(e));
  }
  n_exact = static_cast<std::uint32_t>(merged.size());
  merged.insert(merged.end(), approximate.begin(), approximate.end());
  cliques = std::move(merged);
}

}  // namespace kcp
