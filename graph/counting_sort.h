// Sorting by a small number: entries whose key(entry) lies below `bound` (node indices, name
// numbers) are ordered by it in two linear passes, equal keys keeping their order. Sorting by a
// second key and then by a first one thus orders by the pair, as the link tables need.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace kcp {

namespace Counting_sort_sub {

template <typename Count, typename Entry, typename Key>
void Sort_by(std::vector<Entry>& entries, std::vector<Entry>& scratch, const std::size_t& bound,
             Key& key) {
  std::vector<Count> start(bound + 1, 0);
  for (const Entry& e : entries) ++start[key(e) + std::size_t{1}];
  for (std::size_t k = 0; k < bound; ++k) start[k + 1] += start[k];
  scratch.resize(entries.size());
  for (const Entry& e : entries) scratch[start[key(e)]++] = e;
  entries.swap(scratch);
}

}  // namespace Counting_sort_sub

// `scratch` is working memory; on return it holds the old entries' storage.
template <typename Entry, typename Key>
void Counting_sort(std::vector<Entry>& entries, std::vector<Entry>& scratch,
                   const std::size_t& bound, Key&& key) {
  // The positions are counted in 32 bits whenever they fit.
  if (entries.size() <= UINT32_MAX) {
    Counting_sort_sub::Sort_by<std::uint32_t>(entries, scratch, bound, key);
  } else {
    Counting_sort_sub::Sort_by<std::size_t>(entries, scratch, bound, key);
  }
}

}  // namespace kcp
