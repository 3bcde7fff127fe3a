#include "python/memory_run.h"

#include <algorithm>
#include <exception>
#include <unordered_map>
#include <utility>

#include "cliques/clique_search_stage.h"
#include "cliques/overlap_matrix.h"
#include "core/ordered_tasks.h"
#include "core/xerror_msg.h"
#include "graph/link_lines.h"
#include "graph/node_index.h"
#include "python/pair_cliques.h"
#include "python/quiet_console.h"

namespace kcp {

namespace {

// The links as the link reader would have stored them: name pairs, self-links dropped.
LinkMap Link_map(const std::vector<std::string>& names, const std::vector<std::uint32_t>& links,
                 const StopRequest* stop) {
  if (links.size() % 2 != 0) throw Xerror_msg("ERROR: a link list needs two ends per link.");
  LinkLines lines;
  for (std::size_t i = 0; i < links.size(); i += 2) {
    if (i % 8192 == 0) Check_stop(stop);
    if (links[i] >= names.size() || links[i + 1] >= names.size()) {
      throw Xerror_msg("ERROR: a link names node position " +
                       std::to_string(std::max(links[i], links[i + 1])) + " of " +
                       std::to_string(names.size()) + ".");
    }
    if (links[i] == links[i + 1]) continue;
    lines.Add(names[links[i]], names[links[i + 1]], 0.0);
  }
  LinkMap map;
  lines.Move_to(map, false);
  return map;
}

// Positions()[i - 1] for every index the names were given.
std::vector<std::uint32_t> Positions_of(const std::vector<std::string>& names,
                                        const NameMap& indexed) {
  std::unordered_map<std::string_view, std::uint32_t> position;
  position.reserve(names.size());
  for (std::uint32_t p = 0; p < names.size(); ++p) {
    if (!position.try_emplace(names[p], p).second) {
      throw Xerror_msg("ERROR: the node name '" + names[p] + "' is given twice.");
    }
  }
  std::vector<std::uint32_t> positions;
  positions.reserve(indexed.size());
  for (const auto& [index, name] : indexed) positions.push_back(position.at(name));
  return positions;
}

}  // namespace

MemoryRun::MemoryRun(const std::vector<std::string>& names, const std::vector<std::uint32_t>& links,
                     bool directed, std::optional<double> time_limit, const StopRequest* stop,
                     const unsigned& threads)
    : directed_(directed) {
  const QuietConsole quiet;
  NameMap indexed;
  {
    const LinkMap link_map = Link_map(names, links, stop);
    Check_stop(stop);
    Convert_s_links(index_links_, indexed, link_map, directed);
  }
  Check_stop(stop);
  positions_ = Positions_of(names, indexed);
  Check_stop(stop);

  VtxdMap directed_vertices;
  if (directed) {
    Dir_vtx_map_from_link_map(directed_vertices, index_links_);
  } else {
    Vtx_map_from_link_map(vertices_, index_links_);
  }
  Check_stop(stop);
  // As a run over every k: pairs sharing one node matter to no k from 3 on.
  overlaps_ = Run_overlap_matrix(2);
  Find_cliques(time_limit.has_value(), directed, cliques_, overlaps_, directed_vertices, vertices_,
               n_exact_, time_limit.value_or(0.0), SearchClock(), stop, threads);
}

KCommunities MemoryRun::Communities(std::uint32_t k, const StopRequest* stop) const {
  if (k < 3) throw Xerror_msg("ERROR: a run extracts communities at k = 3 and above only.");
  KCommunities found;
  CommunityLinkLists links;
  Coms_from_appr_ovlp_matr(found.communities, links, found.cliques, cliques_, overlaps_, k,
                           n_exact_, found.n_exact, stop);
  return found;
}

std::vector<KCommunities> MemoryRun::Communities(const std::vector<std::uint32_t>& ks,
                                                 const unsigned& threads,
                                                 const StopRequest* stop) const {
  std::vector<std::size_t> order(ks.size());
  for (std::size_t i = 0; i < order.size(); ++i) order[i] = i;
  std::stable_sort(order.begin(), order.end(),
                   [&](const std::size_t& a, const std::size_t& b) { return ks[a] > ks[b]; });
  std::vector<KCommunities> found(ks.size());
  std::vector<std::exception_ptr> failed(ks.size());
  const OrderedTasks tasks{[&](const std::size_t& i) {
                             try {
                               found[order[i]] = Communities(ks[order[i]], stop);
                             } catch (...) {
                               failed[i] = std::current_exception();
                             }
                           },
                           [&](const std::size_t& i) {
                             if (failed[i]) std::rethrow_exception(failed[i]);
                           },
                           [](const std::size_t&) {}};
  Run_in_order(order.size(), threads, threads, tasks);
  return found;
}

CliqueList MemoryRun::Pair_cliques() const {
  if (directed_) return {};
  return kcp::Pair_cliques(vertices_, index_links_);
}

}  // namespace kcp
