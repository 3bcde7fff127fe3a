// The SVG export, a self-contained picture of a run: with more than one k, the number and mean
// size of the communities against k; then one row per k with the size, degree, overlap and
// membership distributions of all communities (the "_merged" files when some are approximate) on
// log-log axes shared by the rows. A value of 0 has no place on a log axis: its count is written
// under the panel title, and the page says so.
#pragma once

#include <ostream>
#include <string>

#include "results/run_results.h"

namespace kcp {

// `name` names the results in the page title (the directory's name, say).
void Write_svg_plots(const RunResults& results, const std::string& name, std::ostream& out);

}  // namespace kcp
