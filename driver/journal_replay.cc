#include "driver/journal_replay.h"

#include "fsutil/dir_prepare.h"
#include "fsutil/result_file.h"
#include "text/console.h"

namespace kcp {

void Replay_journal(const OutputJournal& journal) {
  for (const OutputJournal::Entry& entry : journal.Entries()) {
    switch (entry.kind) {
      case OutputJournal::Kind::kText:
        Print_text(entry.text);
        break;
      case OutputJournal::Kind::kDirectory:
        Dir_prepare(entry.path, "keep");
        break;
      case OutputJournal::Kind::kFile: {
        Result_file file(entry.path);
        file << entry.text;
        file.Close();
        break;
      }
    }
  }
}

}  // namespace kcp
