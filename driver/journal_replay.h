// Printing and writing in its turn what a task on another thread recorded in a journal
// (core/output_journal.h): the text to standard output, the directories prepared with "keep" and
// the files written whole, in the journal's order and through the same functions, so that they
// meet the errors (a full disk, a file-size limit) that printing and writing at first hand would
// have met, at the same place. The first error ends the replay and leaves it.
#pragma once

#include "core/output_journal.h"

namespace kcp {

void Replay_journal(const OutputJournal& journal);

}  // namespace kcp
