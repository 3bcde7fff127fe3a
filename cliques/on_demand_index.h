// What percolation keeps from one k to the next over an overlap matrix kept on demand: the
// profile of the run's cliques, made when a k first needs it and kept while the clique list stays
// the same, and the prefix lists of finished k, whose memory the next k reuses instead of
// allocating it afresh. Safe to share between threads.
#pragma once

#include <memory>
#include <mutex>
#include <vector>

#include "cliques/clique_profile.h"
#include "cliques/prefix_lists.h"
#include "core/types.h"

namespace kcp {

class OnDemandIndex {
 public:
  // The profile of `cliques`: the one kept when it describes them, else a new one, kept.
  std::shared_ptr<const CliqueProfile> Profile(const CliqueList& cliques);
  // Lists to build on: those of a finished k when there are any.
  std::unique_ptr<PrefixLists> Borrow_lists();
  void Return_lists(std::unique_ptr<PrefixLists> lists);

 private:
  std::mutex mutex_;
  std::shared_ptr<const CliqueProfile> profile_;
  std::vector<std::unique_ptr<PrefixLists>> spare_lists_;
};

}  // namespace kcp
