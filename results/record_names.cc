#include "results/record_names.h"

#include <string>

namespace kcp {

NodeIndex Node_of(const LineTokeniser& t, NodeNumbering& numbering, std::string_view name) {
  const NodeIndex index = numbering.Index(name);
  if (index == 0) {
    t.Fail("the node \"" + std::string(name) + "\" does not occur in the graph file");
  }
  return index;
}

}  // namespace kcp
