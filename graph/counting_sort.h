// Sorting by a small number: entries whose key(entry) lies below `bound` (node indices, name
// numbers) are ordered by it in two linear passes, equal keys keeping their order. Sorting by a
// second key and then by a first one thus orders by the pair, as the link tables need.
#pragma once

#include <cstddef>
#include <vector>

namespace kcp {

// `scratch` is working memory; on return it holds the old entries' storage.
template <typename Entry, typename Key>
void Counting_sort(std::vector<Entry>& entries, std::vector<Entry>& scratch,
                   const std::size_t& bound, Key&& key) {
  std::vector<std::size_t> start(bound + 1, 0);
  for (const Entry& e : entries) ++start[key(e) + std::size_t{1}];
  for (std::size_t k = 0; k < bound; ++k) start[k + 1] += start[k];
  scratch.resize(entries.size());
  for (const Entry& e : entries) scratch[start[key(e)]++] = e;
  entries.swap(scratch);
}

}  // namespace kcp
