// The answers of the terminal dialogues of the directory operations. Both read standard input
// with formatted extraction (leading white space, newlines included, is skipped; the rest of the
// line stays unread). At end of input there is no answer, which counts as the user stopping:
// Xerror_msg "stopped interactively by user." is thrown.
#pragma once

#include <string>

namespace kcp {

// One non-blank character, case kept.
char Read_answer_char();
// One whitespace-delimited word.
std::string Read_answer_word();
// The text every dialogue throws when the user stops.
[[noreturn]] void Stop_interactively();

}  // namespace kcp
