// What the writers look up for every record, made contiguous once per run: node names by index,
// and whether the IndexLinkMap holds a link in a given direction. Both borrow from the maps they
// are built from, which must outlive them.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "core/types.h"

namespace kcp {

class NameTable {
 public:
  explicit NameTable(const NameMap& names) : names_(names) {}
  // The name of node n; an index without a name reads as the empty name.
  std::string_view operator[](const NodeIndex& n) const { return names_[n]; }

 private:
  // Node numbering fills the map densely from 1, where it finds a name in one step.
  const NameMap& names_;
};

class LinkLookup {
 public:
  explicit LinkLookup(const IndexLinkMap& links);
  // True when the map holds the key (a, b).
  bool Holds(const NodeIndex& a, const NodeIndex& b) const;
  // The b of every key (a, b), ascending.
  std::span<const NodeIndex> Targets(const NodeIndex& a) const;

 private:
  std::vector<std::uint32_t> begin_;  // node -> first of its targets; size nodes + 1
  std::vector<NodeIndex> targets_;    // ascending per node, as the map's keys are
};

// The two together, as the community writers take them.
struct OutputTables {
  OutputTables(const NameMap& names, const IndexLinkMap& links) : names(names), links(links) {}
  NameTable names;
  LinkLookup links;
};

}  // namespace kcp
