// What percolation keeps from one k to the next over an overlap matrix kept on demand: the
// profile of the run's cliques, made when a k first needs it and kept while the clique list stays
// the same; the prefix lists of finished k, whose memory the next k reuses instead of allocating
// it afresh; and the communities a finished k found, which the next smaller k assembles its own
// from (communities nest: each community at a larger k lies inside one community at k). Safe to
// share between threads.
#pragma once

#include <memory>
#include <mutex>
#include <vector>

#include "cliques/clique_profile.h"
#include "cliques/prefix_lists.h"
#include "core/types.h"

namespace kcp {

// The communities one k found: for each clique the position of the community that took it
// (-1 for none), and each community's nodes and links, as percolation gives them.
struct LevelCarry {
  std::uint32_t k = 0;
  std::uint32_t n_exact = 0;
  std::shared_ptr<const CliqueProfile> profile;  // of the cliques behind the positions
  std::vector<std::int32_t> community_of;
  CommunityList nodes;
  CommunityLinkLists links;
};

class OnDemandIndex {
 public:
  // The profile of `cliques`: the one kept when it describes them, else a new one, kept.
  std::shared_ptr<const CliqueProfile> Profile(const CliqueList& cliques);
  // Lists to build on: those of a finished k when there are any.
  std::unique_ptr<PrefixLists> Borrow_lists();
  void Return_lists(std::unique_ptr<PrefixLists> lists);

  // Of the communities kept for a k above `below` over the cliques of `profile` with n_exact
  // exact ones, those of the smallest such k (each lies inside one community at `below`); null
  // when none are kept.
  std::shared_ptr<const LevelCarry> Carry_above(
      const std::uint32_t& below, const std::uint32_t& n_exact,
      const std::shared_ptr<const CliqueProfile>& profile);
  // Keeps the communities of a finished k, in place of the oldest when kCarries are kept.
  void Keep_carry(std::shared_ptr<const LevelCarry> carry);

 private:
  static constexpr std::size_t kCarries = 3;

  std::mutex mutex_;
  std::shared_ptr<const CliqueProfile> profile_;
  std::vector<std::unique_ptr<PrefixLists>> spare_lists_;
  std::vector<std::shared_ptr<const LevelCarry>> carries_;
};

}  // namespace kcp
