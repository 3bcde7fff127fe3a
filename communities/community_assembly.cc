#include "communities/community_assembly.h"

#include <algorithm>

namespace kcp {

void CommunityAssembly::Assemble(const CliqueIndexList& members, const CliqueList& cliques,
                                 NodeList& nodes, LinkList& links) {
  nodes.clear();
  links.clear();
  for (const std::uint32_t& m : members) {
    if (m >= cliques.size()) continue;
    for (const NodeIndex& v : cliques[m]) {
      if (v >= local_.size()) local_.resize(std::size_t{v} + 1, 0);
      if (local_[v] == 0) {
        local_[v] = 1;
        nodes.push_back(v);
      }
    }
  }
  std::sort(nodes.begin(), nodes.end());
  const std::size_t n = nodes.size();
  for (std::size_t i = 0; i < n; ++i) local_[nodes[i]] = static_cast<std::uint32_t>(i + 1);

  // Every pair of a member clique, bucketed by its smaller node: members ascend, so a node's
  // later members in a clique are the larger nodes of its pairs.
  bucket_.assign(n + 1, 0);
  for (const std::uint32_t& m : members) {
    if (m >= cliques.size()) continue;
    const Clique& clique = cliques[m];
    for (std::size_t i = 0; i < clique.size(); ++i) {
      bucket_[local_[clique[i]]] += static_cast<std::uint32_t>(clique.size() - i - 1);
    }
  }
  // bucket_[a + 1] counts the pairs of local node a; turn the counts into starts.
  for (std::size_t a = 0; a < n; ++a) bucket_[a + 1] += bucket_[a];
  later_.resize(bucket_[n]);
  for (const std::uint32_t& m : members) {
    if (m >= cliques.size()) continue;
    const Clique& clique = cliques[m];
    for (std::size_t i = 0; i < clique.size(); ++i) {
      std::uint32_t& at = bucket_[local_[clique[i]] - 1];
      for (std::size_t j = i + 1; j < clique.size(); ++j) later_[at++] = local_[clique[j]] - 1;
    }
  }
  // Placing moved each start to the next bucket's start: bucket a now begins at bucket_[a - 1].
  if (seen_.size() < n) seen_.resize(n, 0);
  for (std::size_t a = 0; a < n; ++a) {
    if (++stamp_ == 0) {
      std::fill(seen_.begin(), seen_.end(), 0);
      stamp_ = 1;
    }
    const std::uint32_t from = a == 0 ? 0 : bucket_[a - 1];
    distinct_.clear();
    for (std::uint32_t p = from; p < bucket_[a]; ++p) {
      const std::uint32_t b = later_[p];
      if (seen_[b] != stamp_) {
        seen_[b] = stamp_;
        distinct_.push_back(b);
      }
    }
    std::sort(distinct_.begin(), distinct_.end());
    for (const std::uint32_t& b : distinct_) links.emplace_back(nodes[a], nodes[b]);
  }
  for (const NodeIndex& v : nodes) local_[v] = 0;
}

}  // namespace kcp
