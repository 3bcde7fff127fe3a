// The console blocks of the clique searches and of the k-clique generation: progress before each
// node, the closing count, and the notes of the time-limited search about nodes found too slow.
// Each routine writes whole lines, every one ending in '\n', into `out`; the caller prints the
// text with Print_text. Underscore lines are never empty. Percentages have 2 decimals.
#pragma once

#include <cstdint>
#include <ostream>
#include <string>

#include "core/types.h"

namespace kcp::Clique_find_report_sub_routines {

// Underscores as long as the header, the header, then
// " <remaining> of <total> <unit> to do (<done>% done)".
void Report_progress(const std::string& header, const std::string& unit,
                     const std::uint32_t& remaining, const std::uint32_t& total, std::ostream& out);
// The same under a two-line header, underlined as long as the longer of the two.
void Report_progress(const std::string& header, const std::string& second_header,
                     const std::string& unit, const std::uint32_t& remaining,
                     const std::uint32_t& total, std::ostream& out);

// Underscores, then " Altogether <count> <word> found."; the second form adds `note` as a line.
void Report_clique_search_end(const std::string& word, const std::size_t& count, std::ostream& out);
void Report_clique_search_end(const std::string& word, const std::size_t& count,
                              const std::string& note, std::ostream& out);

// Two lines naming the node given up and the skips in a row out of the remaining nodes.
void Report_hard_node(const NodeIndex& v, const std::uint32_t& skipped,
                      const std::uint32_t& remaining, std::ostream& out);

// Three lines: underscores, and the note that every node left was too slow.
void Report_all_rem_nodes_to_hard(const std::string& word, std::ostream& out);

}  // namespace kcp::Clique_find_report_sub_routines
