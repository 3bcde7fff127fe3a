// Takes apart the header of a result file: the first line (what the file holds, the flag word,
// k) and the run description alap_szoveg, which every writer repeats and which a rewrite needs
// back byte for byte. Every failure throws Xerror_msg through the tokeniser, naming the line.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "results/line_tokeniser.h"

namespace kcp {

// Consume a fixed text at the front or at the back of `text`; false (text unchanged) without it.
bool Take_prefix(std::string_view& text, std::string_view prefix);
bool Take_suffix(std::string_view& text, std::string_view suffix);
// Consumes "directed " or "intensity " at the front when there; flag gets the word or "".
void Take_flag_word(std::string_view& text, std::string& flag);
// Consumes the decimal digits of k at the front; false when there are none or k is too large.
bool Take_k(std::string_view& text, std::uint32_t& k);

// The first header line; fails with "expected <what>" when the file has no header.
std::string_view First_header_line(const LineTokeniser& t, const std::string& what);

// `rest` is the header text (Header_text) after the words the writer puts before the
// description, which begins on header line `first_line`: alap_szoveg, then optionally the line
// `extra`, then the line end of the closing empty or "." line. Returns alap_szoveg and sets
// extra_found. Fails when the header is not closed or the description lacks " from ".
std::string Take_alap_szoveg(const LineTokeniser& t, std::string_view rest,
                             const std::uint64_t& first_line, std::string_view extra,
                             bool& extra_found);

// The same for the files of one k, whose description stands behind a "#" on line 2.
std::string Take_k_file_alap_szoveg(const LineTokeniser& t, std::string_view extra,
                                    bool& extra_found);

// Checks the first line "<before>[flag ]<after>k=<k>" of a file of one k; fails with
// "expected \"<before>[flag ]<after>k=<k>\"" otherwise.
void Parse_k_title(const LineTokeniser& t, std::string_view before, std::string_view after,
                   std::string& flag, std::uint32_t& k);

}  // namespace kcp
