#include "python/memory_run.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "core/xerror_msg.h"
#include "driver/k_stages.h"
#include "driver/network_stages.h"
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
  LinkMap link_map = Link_map(names, links, stop);
  NetworkSettings settings;
  settings.directed = directed;
  settings.time_limited = time_limit.has_value();
  settings.max_time = time_limit.value_or(0.0);
  // As a run over every k: pairs sharing one node matter to no k from 3 on.
  settings.min_shared = 2;
  settings.threads = threads;
  settings.stop = stop;
  NetworkHooks hooks;
  hooks.before = [&](const NetworkStage&) { Check_stop(stop); };
  hooks.after = [&](const NetworkStage& done, const Network& network) {
    if (done == NetworkStage::kConvert) positions_ = Positions_of(names, network.names);
  };
  Run_network_stages(link_map, settings, hooks, network_);
  network_.directed_vertices.clear();
}

KCommunities MemoryRun::Communities(std::uint32_t k, const StopRequest* stop) const {
  if (k < 3) throw Xerror_msg("ERROR: a run extracts communities at k = 3 and above only.");
  KCommunities found;
  CommunityLinkLists links;
  Coms_from_appr_ovlp_matr(found.communities, links, found.cliques, network_.cliques,
                           network_.overlaps, k, network_.n_exact, found.n_exact, stop);
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
  Run_k_stages(
      order.size(), threads, [](const std::size_t&) {},
      [&](const std::size_t& i) { found[order[i]] = Communities(ks[order[i]], stop); });
  return found;
}

CliqueList MemoryRun::Pair_cliques() const {
  if (directed_) return {};
  return kcp::Pair_cliques(network_.vertices, network_.index_links);
}

}  // namespace kcp
