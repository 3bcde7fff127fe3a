#include "driver/k_stages.h"

#include <exception>
#include <vector>

#include "core/ordered_tasks.h"
#include "core/output_journal.h"
#include "driver/journal_replay.h"

namespace kcp {

namespace {

// Thrown by the delivery of a stage that failed on its thread, to stop the others.
struct RedoFrom {
  std::size_t stage;
};

}  // namespace

void Run_k_stages(const std::size_t& count, const unsigned& threads,
                  const std::function<void(std::size_t)>& enter,
                  const std::function<void(std::size_t)>& work) {
  std::size_t next = 0;
  if (threads > 1 && count > 1) {
    std::vector<OutputJournal> journals(count);
    std::vector<std::exception_ptr> failed(count);
    const OrderedTasks tasks{[&](const std::size_t& i) {
                               const JournalScope scope(journals[i]);
                               try {
                                 work(i);
                               } catch (...) {
                                 failed[i] = std::current_exception();
                               }
                             },
                             [&](const std::size_t& i) {
                               if (failed[i]) throw RedoFrom{i};
                               enter(i);
                               Replay_journal(journals[i]);
                               journals[i] = OutputJournal();
                             },
                             [](const std::size_t&) {}};
    try {
      Run_in_order(count, threads, threads, tasks);
      return;
    } catch (const RedoFrom& redo) {
      next = redo.stage;
    }
    for (std::size_t j = next; j < count; ++j) Undo_journal(journals[j]);
  }
  for (; next < count; ++next) {
    enter(next);
    work(next);
  }
}

}  // namespace kcp
