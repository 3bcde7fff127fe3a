// The run's own thread's side of a task's journal (core/output_journal.h): printing in its turn
// the text the task recorded, or taking back what it wrote, so that the task can be done again
// on this thread in the order of a run on one thread.
#pragma once

#include "core/output_journal.h"

namespace kcp {

// Prints the recorded text to standard output, in the journal's order.
void Replay_journal(const OutputJournal& journal);

// Removes the files the task opened and the directories it made (those still empty), last
// first. What cannot be removed is left; nothing is reported.
void Undo_journal(const OutputJournal& journal);

}  // namespace kcp
