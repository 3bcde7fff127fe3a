// The network of a run as the exporters write it: the graph file's nodes and links (reciprocal
// lines of an undirected run are one link with the summed weight, as in the run) and, per k, the
// communities holding each node and each link (a link is in a community when its link list joins
// the two ends, either way round). Throws Xerror_msg when a community names a node the graph file
// lacks, or when two node names have the same safe form (safe_text.h).
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "results/run_results.h"

namespace kcp {

struct ExportLink {
  std::uint32_t source = 0;  // index into RunResults::nodes
  std::uint32_t target = 0;
  std::optional<double> weight;
};

// Community positions per item, kept sparse (most items are in no community at most k): the
// (item, position) pairs sorted by item, then position, none twice, in two parallel vectors.
struct CommunityLists {
  std::vector<std::uint32_t> items;
  std::vector<std::uint32_t> positions;

  // The positions of `item`, ascending; empty when it is in no community.
  std::span<const std::uint32_t> of(std::size_t item) const;
  // The same for a walk over ascending items: `cursor` starts at 0 and is moved past `item`, so
  // a whole walk takes linear time.
  std::span<const std::uint32_t> of(std::size_t item, std::size_t& cursor) const;
};

struct KMemberships {
  std::uint32_t k = 0;
  CommunityLists nodes;  // items are node indices
  CommunityLists links;  // items are positions in ExportNetwork::links
};

struct ExportNetwork {
  std::vector<ExportLink> links;
  // Ascending k, parallel to RunResults::per_k.
  std::vector<KMemberships> per_k;
};

ExportNetwork Build_export_network(const RunResults& results);

// A walk over the nodes (or the links) in ascending order giving, per k, the communities of each;
// linear in the size of the network and the lists over the whole walk.
class MembershipWalk {
 public:
  MembershipWalk(const ExportNetwork& network, bool links)
      : network_(network), links_(links), cursors_(network.per_k.size(), 0) {}

  // The positions of `item` at network.per_k[k_index]; items must come in ascending order.
  std::span<const std::uint32_t> at(std::size_t k_index, std::size_t item) {
    const KMemberships& at_k = network_.per_k[k_index];
    return (links_ ? at_k.links : at_k.nodes).of(item, cursors_[k_index]);
  }

 private:
  const ExportNetwork& network_;
  bool links_;
  std::vector<std::size_t> cursors_;
};

// The community's number as the files write it: "5", "-12", "-0".
std::string Community_label(const CommunityRecord& community);

// "0,5,-12": the labels of the communities at `positions` joined by commas; "" for none.
void Append_community_labels(std::string& out, std::span<const std::uint32_t> positions,
                             const KResults& at_k);

// Shortest text that reads back as the same double ("1", "0.15", "2e+06").
std::string Weight_text(double weight);

}  // namespace kcp
