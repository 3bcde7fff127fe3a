// Node names of record lines turned into the run's node indices.
#pragma once

#include <string_view>

#include "core/types.h"
#include "results/line_tokeniser.h"
#include "results/node_numbering.h"

namespace kcp {

// The index of `name`; fails through t when a locked numbering does not know it.
NodeIndex Node_of(const LineTokeniser& t, NodeNumbering& numbering, std::string_view name);

}  // namespace kcp
