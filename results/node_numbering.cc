#include "results/node_numbering.h"

#include <functional>

namespace kcp {

namespace {

std::uint32_t Hash_of(std::string_view name) {
  return static_cast<std::uint32_t>(std::hash<std::string_view>()(name));
}

}  // namespace

NodeIndex NodeNumbering::Index(std::string_view name) {
  // Link lines come sorted by their first node, so the name asked last is often asked again.
  if (last_ != 0 && names_[last_] == name) return last_;
  const std::uint32_t hash = Hash_of(name);
  const std::size_t mask = slots_.size() - 1;
  std::size_t at = hash & mask;
  for (; slots_[at].index != 0; at = (at + 1) & mask) {
    if (slots_[at].hash == hash && names_[slots_[at].index] == name) {
      return last_ = slots_[at].index;
    }
  }
  if (locked_) return 0;
  const NodeIndex index = static_cast<NodeIndex>(names_.size());
  names_.emplace_back(name);
  slots_[at] = Slot{hash, index};
  // At most half full, so that probe runs stay short.
  if (2 * names_.size() > slots_.size()) Grow();
  return last_ = index;
}

void NodeNumbering::Grow() {
  std::vector<Slot> old(slots_.size() * 2);
  old.swap(slots_);
  const std::size_t mask = slots_.size() - 1;
  for (const Slot& slot : old) {
    if (slot.index == 0) continue;
    std::size_t at = slot.hash & mask;
    while (slots_[at].index != 0) at = (at + 1) & mask;
    slots_[at] = slot;
  }
}

NameMap NodeNumbering::Name_map() const {
  NameMap map;
  for (std::size_t i = 1; i < names_.size(); ++i) {
    map.emplace_hint(map.end(), static_cast<NodeIndex>(i), names_[i]);
  }
  return map;
}

}  // namespace kcp
