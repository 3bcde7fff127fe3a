#include "cliques/on_demand_index.h"

#include <utility>

namespace kcp {

std::shared_ptr<const CliqueProfile> OnDemandIndex::Profile(const CliqueList& cliques) {
  const std::lock_guard<std::mutex> lock(mutex_);
  if (!profile_ || !profile_->Describes(cliques)) {
    // The old profile goes first: two at once would double the peak.
    profile_.reset();
    carries_.clear();
    profile_ = std::make_shared<const CliqueProfile>(cliques);
  }
  return profile_;
}

std::unique_ptr<PrefixLists> OnDemandIndex::Borrow_lists() {
  const std::lock_guard<std::mutex> lock(mutex_);
  if (spare_lists_.empty()) return std::make_unique<PrefixLists>();
  std::unique_ptr<PrefixLists> lists = std::move(spare_lists_.back());
  spare_lists_.pop_back();
  return lists;
}

void OnDemandIndex::Return_lists(std::unique_ptr<PrefixLists> lists) {
  const std::lock_guard<std::mutex> lock(mutex_);
  spare_lists_.push_back(std::move(lists));
}

std::shared_ptr<const LevelCarry> OnDemandIndex::Carry_above(
    const std::uint32_t& below, const std::uint32_t& n_exact,
    const std::shared_ptr<const CliqueProfile>& profile) {
  const std::lock_guard<std::mutex> lock(mutex_);
  std::shared_ptr<const LevelCarry> nearest;
  for (const std::shared_ptr<const LevelCarry>& carry : carries_) {
    if (carry->k > below && carry->n_exact == n_exact && carry->profile == profile &&
        (!nearest || carry->k < nearest->k)) {
      nearest = carry;
    }
  }
  return nearest;
}

void OnDemandIndex::Keep_carry(std::shared_ptr<const LevelCarry> carry) {
  const std::lock_guard<std::mutex> lock(mutex_);
  if (carries_.size() == kCarries) carries_.erase(carries_.begin());
  carries_.push_back(std::move(carry));
}

}  // namespace kcp
