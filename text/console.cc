#include "text/console.h"

#include <chrono>
#include <iostream>

#include "core/output_journal.h"

namespace kcp {

void Print_line(std::string_view text) {
  if (OutputJournal* const journal = OutputJournal::Current()) {
    journal->Text(text);
    journal->Text("\n");
    return;
  }
  std::cout << text << '\n';
  std::cout.flush();
}

void Print_text(std::string_view text) {
  if (OutputJournal* const journal = OutputJournal::Current()) {
    journal->Text(text);
    return;
  }
  std::cout << text;
  std::cout.flush();
}

void Print_progress(std::string_view text) {
  if (OutputJournal* const journal = OutputJournal::Current()) {
    journal->Text(text);
    return;
  }
  constexpr auto kProgressFlush = std::chrono::milliseconds(50);
  thread_local auto last_flush = std::chrono::steady_clock::time_point();
  std::cout << text;
  const auto now = std::chrono::steady_clock::now();
  if (now - last_flush >= kProgressFlush) {
    std::cout.flush();
    last_flush = now;
  }
}

std::string Underscores(std::size_t n) {
  return std::string(n == 0 ? 1 : n, '_');
}

void Print_underscores(std::size_t n) {
  Print_line(Underscores(n));
}

}  // namespace kcp
