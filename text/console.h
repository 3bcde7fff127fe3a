// Console output of a run. Every line goes to standard output followed by a newline and a flush,
// so progress shows at once even when the output is piped; steps are framed by underscore lines.
// Under a JournalScope (core/output_journal.h) the text is recorded instead, to be printed in turn.
#pragma once

#include <string>
#include <string_view>

namespace kcp {

// Writes text, a newline, and flushes.
void Print_line(std::string_view text);
// Writes text exactly as given (it carries its own newlines) and flushes.
void Print_text(std::string_view text);
// Print_text for what is printed once per node of a search, hundreds of thousands of times in a
// run: flushed once kProgressFlush has passed since the last flush (and by any other print), so
// that progress still shows at once to the eye without a write call per node.
void Print_progress(std::string_view text);
// A run of n underscores; at least one, also for n == 0.
std::string Underscores(std::size_t n);
// Print_line(Underscores(n)).
void Print_underscores(std::size_t n);

}  // namespace kcp
