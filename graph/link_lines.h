// Gathers the links of a link file line by line and turns them into the LinkMap in one go: each
// name is numbered once as it is met, the lines are kept in file order (sixteen bytes each), and
// Move_to sorts them once by (source name, target name), byte-wise, and merges the lines of a
// repeated pair into one link. What Move_to gives equals inserting the lines one by one into an
// ordered map: weights summed from 0.0 in file order, or 0.0 for every link.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "core/link_map.h"
#include "core/name_ids.h"
#include "core/name_pool.h"

namespace kcp {

class LinkLines {
 public:
  void Add(std::string_view source, std::string_view target, const double& weight);
  std::size_t size() const { return lines_.size(); }

  // Replaces the content of `links` by the lines gathered, and empties this. sum: the weights of
  // the lines of a pair are added up; otherwise every link weighs 0.0.
  void Move_to(LinkMap& links, const bool& sum);

 private:
  // A target name waiting to be numbered: the memory of its look-up is fetched meanwhile.
  struct Waiting {
    std::size_t line;
    std::size_t hash;
    std::string name;
  };
  static constexpr std::size_t kWaiting = 16;

  void Number_oldest_waiting();

  NamePool names_;
  NameIds ids_;
  std::vector<LinkMap::Entry> lines_;
  // Lines often share their source with the line before: such a source needs no look-up.
  std::string last_source_name_;
  std::uint32_t last_source_ = 0;
  bool has_last_ = false;
  std::array<Waiting, kWaiting> waiting_;
  std::size_t first_waiting_ = 0;
  std::size_t waiting_count_ = 0;
};

}  // namespace kcp
