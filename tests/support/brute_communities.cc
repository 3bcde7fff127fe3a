#include "tests/support/brute_communities.h"

#include <map>

namespace kcp::testing {

OverlapMatrix Brute_overlap_matrix(const CliqueList& cliques, const std::uint32_t& min_shared) {
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

struct ReferenceState {
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

  void Take(const CliqueIndexList& candidates) {
    for (std::uint32_t m : candidates) {
      labels[m] = counter;
      members.push_back(m);
      if (m >= n_exact) approximate = true;
      if (m >= cliques.size()) continue;
      const Clique& c = cliques[m];
      for (std::size_t a = 0; a < c.size(); ++a) {
        ++node_tally[c[a]];
        for (std::size_t b = a + 1; b < c.size(); ++b) ++link_tally[Link(c[a], c[b])];
      }
    }
    for (std::uint32_t m : candidates) Extend(m);
  }

  void Extend(std::uint32_t c) {
    CliqueIndexList candidates;
    for (const Overlap& e : overlaps.rows[c]) {
      if (e.shared >= k - 1 && labels[e.clique] < 0) candidates.push_back(e.clique);
    }
    Take(candidates);
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
    Take(candidates);
  }
};

}  // namespace

void Reference_percolation(CommunityList& communities, CommunityLinkLists& community_links,
                           CommunityCliqueLists& community_cliques, const CliqueList& cliques,
                           const OverlapMatrix& overlaps, std::uint32_t k, std::uint32_t n_exact,
                           std::uint32_t& n_exact_coms) {
  ReferenceState state{cliques, overlaps, k, n_exact, {}, -1, {}, {}, {}, false};
  state.labels.assign(overlaps.rows.size(), -1);
  communities.clear();
  community_links.clear();
  community_cliques.clear();
  // Exact communities in the first pass, approximate ones in the second.
  for (int pass = 0; pass < 2; ++pass) {
    if (pass == 1) n_exact_coms = static_cast<std::uint32_t>(communities.size());
    std::fill(state.labels.begin(), state.labels.end(), -1);
    for (std::uint32_t i = 0; i < overlaps.rows.size(); ++i) {
      state.node_tally.clear();
      state.link_tally.clear();
      state.members.clear();
      state.approximate = false;
      if (state.labels[i] < 0 && i < cliques.size() && cliques[i].size() >= k) state.Look(i);
      if (state.node_tally.empty() || state.approximate != (pass == 1)) continue;
      communities.emplace_back();
      community_links.emplace_back();
      for (const auto& [node, count] : state.node_tally) communities.back().push_back(node);
      for (const auto& [link, count] : state.link_tally) community_links.back().push_back(link);
      community_cliques.push_back(state.members);
    }
  }
}

}  // namespace kcp::testing
