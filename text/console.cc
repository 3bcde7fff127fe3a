#include "text/console.h"

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

std::string Underscores(std::size_t n) {
  return std::string(n == 0 ? 1 : n, '_');
}

void Print_underscores(std::size_t n) {
  Print_line(Underscores(n));
}

}  // namespace kcp
