// Writes the links a run will use, as read and thresholded, into the results directory: the file
// "graph" (undirected) or "directed_graph" (directed), with node names, in the LinkMap's key
// order, one "source target" or "source target weight" line per link. Directory failures throw
// as Dir_prepare does; a file that cannot be opened is silently left out.
#pragma once

#include <string>

#include "core/types.h"

namespace kcp {

void Kiir_graph(const LinkMap& links, const std::string& dir, const bool& directed,
                const std::string& alap_szoveg, const bool& weighted);

}  // namespace kcp
