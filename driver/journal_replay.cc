#include "driver/journal_replay.h"

#include <filesystem>
#include <system_error>

#include "text/console.h"

namespace kcp {

void Replay_journal(const OutputJournal& journal) {
  for (const OutputJournal::Entry& entry : journal.Entries()) {
    if (entry.kind == OutputJournal::Kind::kText) Print_text(entry.text);
  }
}

void Undo_journal(const OutputJournal& journal) {
  const auto& entries = journal.Entries();
  for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry) {
    std::error_code ignored;
    if (entry->kind != OutputJournal::Kind::kText) std::filesystem::remove(entry->path, ignored);
  }
}

}  // namespace kcp
