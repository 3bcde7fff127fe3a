// One long CSV table of the communities: the header "k,community,approximate,node", then per k
// (ascending), per community (file order) and per node (file order) one row, such as
// "3,-12,true,Valjean" (the community as the files number it, "-0" included). Rows end with a line
// feed. A node name holding a comma or a double quote is put in double quotes with its quotes
// doubled (RFC 4180); otherwise the bytes are written as they are, whatever their encoding.
#pragma once

#include <ostream>
#include <string>
#include <string_view>

#include "results/run_results.h"

namespace kcp {

void Write_community_csv(const RunResults& results, std::ostream& out);

// The field as RFC 4180 needs it: quoted only when it holds a comma, quote, CR or LF.
void Append_csv_field(std::string& out, std::string_view field);

}  // namespace kcp
