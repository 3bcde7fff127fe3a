#include "communities/percolation.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "cliques/on_demand_index.h"
#include "communities/community_assembly.h"
#include "communities/nested_assembly.h"

namespace kcp {

namespace Coms_from_appr_cl_ovlp_sub {

namespace {

// Labels are kept per overlap-matrix row. A symmetric matrix never names a clique without a row;
// should one be named anyway, the label vector grows to hold it rather than being read past its
// end, and the clique counts as free.
std::int32_t& Label(CliqueLabels& labels, const std::uint32_t& clique) {
  if (clique >= labels.size()) labels.resize(std::size_t{clique} + 1, -1);
  return labels[clique];
}

// Labels clique m with the community, lists it, and marks the community approximate for an
// approximate clique. After the approximation the matrix may hold more rows than the list holds
// cliques. A row without a clique in the list is a clique without nodes: it is labelled and
// listed like any other member (its index is at or above n_exact, so the community is
// approximate), but it adds no node and no link (community_assembly.h).
void Take_clique(const std::uint32_t& m, const std::int32_t& counter, OverlapRows& rows,
                 CliqueLabels& labels, CliqueIndexList& members, bool& approximate,
                 const std::uint32_t& n_exact) {
  Label(labels, m) = counter;
  rows.Taken(m);
  members.push_back(m);
  if (m >= n_exact) approximate = true;
}

}  // namespace

void Look_for_new_com(OverlapRows& rows, const std::uint32_t& seed, std::int32_t& counter,
                      CliqueLabels& labels, CliqueIndexList& members, bool& approximate,
                      const std::uint32_t& n_exact) {
  if (seed >= rows.Row_count()) return;
  CliqueIndexList candidates;
  // No label test at the seed: with a symmetric matrix none of its candidates is labelled yet.
  const bool qualifies = rows.Row(seed, labels, false, candidates);
  if (!qualifies) return;
  ++counter;
  for (const std::uint32_t& j : candidates) {
    Take_clique(j, counter, rows, labels, members, approximate, n_exact);
  }
  for (const std::uint32_t& j : candidates) {
    Extend_com(j, rows, counter, labels, members, approximate, n_exact);
  }
}

void Extend_com(const std::uint32_t& clique, OverlapRows& rows, const std::int32_t& counter,
                CliqueLabels& labels, CliqueIndexList& members, bool& approximate,
                const std::uint32_t& n_exact) {
  // The depth-first growth: each frame is one level of the recursion, holding the candidates
  // that level took (all labelled before any of them grows) and the next one to grow. The
  // candidates of all open levels share one vector, each level owning a slice at its top.
  struct Frame {
    std::size_t begin;
    std::size_t next;
    std::size_t end;
  };
  CliqueIndexList pending;
  CliqueIndexList row;
  std::vector<Frame> frames;

  auto open_level = [&](const std::uint32_t& c) {
    const std::size_t begin = pending.size();
    rows.Row(c, labels, true, row);
    pending.insert(pending.end(), row.begin(), row.end());
    for (std::size_t p = begin; p < pending.size(); ++p) {
      Take_clique(pending[p], counter, rows, labels, members, approximate, n_exact);
    }
    frames.push_back(Frame{begin, begin, pending.size()});
  };

  open_level(clique);
  while (!frames.empty()) {
    Frame& top = frames.back();
    if (top.next == top.end) {
      pending.resize(top.begin);
      frames.pop_back();
      continue;
    }
    const std::uint32_t c = pending[top.next++];
    open_level(c);  // may reallocate `frames`; `top` is not used after this
  }
}

void Look_for_new_com(const OverlapMatrix& overlaps, const std::uint32_t& seed,
                      const std::uint32_t& k, std::int32_t& counter, CliqueLabels& labels,
                      const CliqueList& cliques, CliqueIndexList& members, bool& approximate,
                      const std::uint32_t& n_exact) {
  OverlapRows rows(cliques, overlaps, k, n_exact);
  Look_for_new_com(rows, seed, counter, labels, members, approximate, n_exact);
}

void Extend_com(const std::uint32_t& clique, const OverlapMatrix& overlaps,
                const std::int32_t& counter, CliqueLabels& labels, const std::uint32_t& k,
                const CliqueList& cliques, CliqueIndexList& members, bool& approximate,
                const std::uint32_t& n_exact) {
  OverlapRows rows(cliques, overlaps, k, n_exact);
  Extend_com(clique, rows, counter, labels, members, approximate, n_exact);
}

}  // namespace Coms_from_appr_cl_ovlp_sub

void Coms_from_appr_ovlp_matr(CommunityList& communities, CommunityLinkLists& community_links,
                              CommunityCliqueLists& community_cliques, const CliqueList& cliques,
                              const OverlapMatrix& overlaps, const std::uint32_t& k,
                              const std::uint32_t& n_exact, std::uint32_t& n_exact_coms,
                              const StopRequest* stop) {
  using namespace Coms_from_appr_cl_ovlp_sub;
  communities.clear();
  community_links.clear();
  community_cliques.clear();

  OverlapRows overlap_rows(cliques, overlaps, k, n_exact);
  const std::size_t rows = overlap_rows.Row_count();
  CliqueLabels labels(rows, -1);
  std::int32_t counter = -1;

  // Exact communities go to the outputs as they are completed; approximate ones wait here.
  CommunityList appr_communities;
  CommunityLinkLists appr_links;
  CommunityCliqueLists appr_cliques;

  // Over a matrix kept on demand, the communities of a larger k done before, the nearest one, are
  // the bulk of the communities of k: each is assembled from those inside it and its other
  // members.
  const CliqueProfile* const profile = overlap_rows.Profile().get();
  const std::shared_ptr<OnDemandIndex>& index = overlaps.On_demand() ? overlaps.index : nullptr;
  std::shared_ptr<const LevelCarry> carry;
  if (index && profile) carry = index->Carry_above(k, n_exact, overlap_rows.Profile());
  CommunityAssembly assembly;
  NestedAssembly nested;
  NodeList nodes;
  LinkList links;
  CliqueIndexList members;
  for (std::size_t i = 0; i < rows; ++i) {
    members.clear();
    bool approximate = false;
    // A row beyond the clique list has no clique, hence no nodes: it never seeds a community.
    const std::size_t size = i < cliques.size() ? cliques[i].size() : 0;
    if (labels[i] < 0 && size >= k) {
      Check_stop(stop);
      Look_for_new_com(overlap_rows, static_cast<std::uint32_t>(i), counter, labels, members,
                       approximate, n_exact);
    }
    if (members.empty()) continue;
    if (carry) {
      nested.Assemble(members, *carry, cliques, profile, assembly, nodes, links);
    } else {
      assembly.Assemble(members, cliques, nodes, links, profile);
    }
    if (nodes.empty()) continue;
    if (approximate) {
      appr_communities.push_back(nodes);
      appr_links.push_back(links);
      appr_cliques.push_back(members);
    } else {
      communities.push_back(nodes);
      community_links.push_back(links);
      community_cliques.push_back(members);
    }
  }

  n_exact_coms = static_cast<std::uint32_t>(communities.size());
  for (std::size_t c = 0; c < appr_communities.size(); ++c) {
    communities.emplace_back(std::move(appr_communities[c]));
    community_links.emplace_back(std::move(appr_links[c]));
    community_cliques.emplace_back(std::move(appr_cliques[c]));
  }
  if (index && profile) {
    auto found = std::make_shared<LevelCarry>();
    found->k = k;
    found->n_exact = n_exact;
    found->profile = overlap_rows.Profile();
    found->community_of.assign(cliques.size(), -1);
    for (std::size_t c = 0; c < community_cliques.size(); ++c) {
      for (const std::uint32_t& m : community_cliques[c]) {
        if (m < cliques.size()) found->community_of[m] = static_cast<std::int32_t>(c);
      }
    }
    found->nodes = communities;
    found->links = community_links;
    index->Keep_carry(std::move(found));
  }
}

}  // namespace kcp
