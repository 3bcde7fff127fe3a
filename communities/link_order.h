// Links gathered as positions in a community's ascending node list, put in the order of the
// community files: ascending by the smaller node, then the larger, each link once. Two counting
// passes over the positions: the work grows with the links and the nodes, not with a comparison
// sort. The scratch is kept between communities.
#pragma once

#include <cstdint>
#include <vector>

#include "core/types.h"

namespace kcp {

class LinkOrder {
 public:
  void Clear() { found_.clear(); }
  // A link between the nodes at positions a and b (a != b) of the node list.
  void Add(const std::uint32_t& a, const std::uint32_t& b) {
    found_.push_back(a < b ? Found{a, b} : Found{b, a});
  }
  // The links added since Clear, ordered and without repeats, as node pairs of `nodes`.
  void Sorted(const NodeList& nodes, LinkList& links);

 private:
  struct Found {
    std::uint32_t smaller;
    std::uint32_t larger;
  };
  std::vector<Found> found_;
  std::vector<Found> sorted_;
  std::vector<std::uint32_t> count_;
};

}  // namespace kcp
