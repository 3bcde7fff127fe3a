// The community stages of a run, one per k, on up to `threads` threads, with the console lines
// and the error of a run on one thread. Stages run side by side in the order given, a bounded
// number ahead of the one whose turn it is; each prints into a journal (core/output_journal.h)
// and writes its own files at once, and its lines are printed in its turn. A stage that failed is
// not reported from its thread: what it and the stages after it wrote is removed, and from it on
// the stages are done again one after the other on the calling thread, so that an error (a full
// disk, a file-size limit, memory running out) is met where a run on one thread meets it.
#pragma once

#include <cstddef>
#include <functional>

namespace kcp {

// enter(i) is called on the calling thread when stage i's turn comes, before its lines are
// printed or, on the calling thread, before work(i) runs; work(i) does stage i.
void Run_k_stages(const std::size_t& count, const unsigned& threads,
                  const std::function<void(std::size_t)>& enter,
                  const std::function<void(std::size_t)>& work);

}  // namespace kcp
