// Gives every node name of the LinkMap an index 1..N by first appearance in the LinkMap's key
// order (source before target) and rewrites the links as the IndexLinkMap. Undirected: each key
// is (smaller, larger) and a link and its reverse fold into one key with the summed weight;
// directed: keys keep their direction. Both outputs are cleared first; throws nothing of its own.
#pragma once

#include "core/types.h"

namespace kcp {

void Convert_s_links(IndexLinkMap& out, NameMap& names, const LinkMap& links, const bool& directed);

}  // namespace kcp
