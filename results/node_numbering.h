// The node indices of a run, rebuilt from node names. A new name gets the next index, from 1 on,
// so names taken in the order of the graph file get the indices the run gave them (it numbered
// them by first appearance in the name-sorted links, the order of that file). Once locked, no
// name is added any more and an unknown name answers 0, so readers can report it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/types.h"

namespace kcp {

class NodeNumbering {
 public:
  // The index of `name`; a new name is added unless locked, when 0 is returned instead.
  NodeIndex Index(std::string_view name);
  void Lock() { locked_ = true; }
  bool Locked() const { return locked_; }
  // Number of names known; their indices run from 1 to Size().
  std::size_t Size() const { return names_.size() - 1; }
  // Index to name; entry 0 is empty.
  const std::vector<std::string>& Names() const { return names_; }
  // The index-to-name map the run's writers take.
  NameMap Name_map() const;

 private:
  // Open addressing over the names: every lookup of a result file goes through here, tens of
  // millions of times for a large run, so the table is flat.
  struct Slot {
    std::uint32_t hash = 0;
    NodeIndex index = 0;  // 0: free
  };
  void Grow();

  std::vector<std::string> names_ = std::vector<std::string>(1);
  std::vector<Slot> slots_ = std::vector<Slot>(64);
  bool locked_ = false;
  NodeIndex last_ = 0;
};

}  // namespace kcp
