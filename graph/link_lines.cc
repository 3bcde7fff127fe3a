#include "graph/link_lines.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "graph/counting_sort.h"

namespace kcp {

namespace {

using Entry = LinkMap::Entry;

// The pool numbers ordered by the bytes of their names.
std::vector<std::uint32_t> Byte_order(const NamePool& names) {
  std::vector<std::pair<std::uint64_t, std::uint32_t>> keyed(names.size());
  for (std::uint32_t id = 0; id < names.size(); ++id) keyed[id] = {Name_prefix_key(names[id]), id};
  std::sort(keyed.begin(), keyed.end(), [&](const auto& a, const auto& b) {
    return a.first != b.first ? a.first < b.first : names[a.second] < names[b.second];
  });
  std::vector<std::uint32_t> order(names.size());
  for (std::size_t r = 0; r < keyed.size(); ++r) order[r] = keyed[r].second;
  return order;
}

bool Same_key(const Entry& a, const Entry& b) {
  return a.source == b.source && a.target == b.target;
}

}  // namespace

void LinkLines::Add(std::string_view source, std::string_view target, const double& weight) {
  if (!has_last_ || last_source_name_ != source) {
    last_source_ = ids_.Intern(names_, source);
    last_source_name_.assign(source);
    has_last_ = true;
  }
  // Targets rarely repeat from line to line: theirs are the look-ups that wait for memory.
  if (waiting_count_ == kWaiting) Number_oldest_waiting();
  Waiting& next = waiting_[(first_waiting_ + waiting_count_) % kWaiting];
  ++waiting_count_;
  next.line = lines_.size();
  next.hash = NameIds::Hash(target);
  next.name.assign(target);
  ids_.Prefetch(next.hash);
  lines_.push_back(Entry{last_source_, 0, weight});
}

void LinkLines::Number_oldest_waiting() {
  const Waiting& oldest = waiting_[first_waiting_];
  lines_[oldest.line].target = ids_.Intern(names_, oldest.name, oldest.hash);
  first_waiting_ = (first_waiting_ + 1) % kWaiting;
  --waiting_count_;
}

void LinkLines::Move_to(LinkMap& links, const bool& sum) {
  while (waiting_count_ != 0) Number_oldest_waiting();
  ids_.Clear();
  has_last_ = false;
  // Renumber the names in byte order, so that the links sort by their numbers.
  const std::size_t count = names_.size();
  {
    const std::vector<std::uint32_t> order = Byte_order(names_);
    std::vector<std::uint32_t> rank(count);
    NamePool sorted;
    sorted.Reserve(count, names_.Bytes());
    for (std::uint32_t r = 0; r < count; ++r) {
      rank[order[r]] = r;
      sorted.Add(names_[order[r]]);
    }
    names_ = std::move(sorted);
    for (Entry& line : lines_) {
      line.source = rank[line.source];
      line.target = rank[line.target];
    }
  }

  // Target first, then source: both passes keep the order of equal keys, so the lines of one
  // pair stay in file order.
  const auto before = [](const Entry& a, const Entry& b) {
    return a.source != b.source ? a.source < b.source : a.target < b.target;
  };
  if (!std::is_sorted(lines_.begin(), lines_.end(), before)) {
    std::vector<Entry> scratch;
    Counting_sort(lines_, scratch, count, [](const Entry& e) { return e.target; });
    Counting_sort(lines_, scratch, count, [](const Entry& e) { return e.source; });
  }

  std::size_t kept = 0;
  for (std::size_t i = 0; i < lines_.size();) {
    Entry link = lines_[i];
    // A new pair starts at 0.0 and adds the weight of each of its lines, as a map entry would.
    double total = 0.0;
    for (; i < lines_.size() && Same_key(lines_[i], link); ++i) total += lines_[i].weight;
    link.weight = sum ? total : 0.0;
    lines_[kept++] = link;
  }
  lines_.resize(kept);
  if (lines_.capacity() - kept > kept / 8) lines_.shrink_to_fit();
  links = LinkMap(std::move(names_), std::move(lines_));
  names_ = NamePool();
  lines_ = std::vector<Entry>();
}

}  // namespace kcp
