// The program's fixed console texts: the banner that opens and closes a run, the usage shown
// with the collected command-line errors, and the detailed help of -h. Each prints whole lines on
// standard output through the console helpers and never throws.
#pragma once

#include <string>

namespace kcp {

// A line of 52 underscores and three lines naming the program and what it does.
void Print_banner();
// Banner, " Error:", the error text as collected (its own newlines end its lines), the usage.
void Print_usage(const std::string& prog, const std::string& errors);
// The help of every switch with examples for `prog`, closed by the banner.
void Print_detailed_usage(const std::string& prog);

}  // namespace kcp
