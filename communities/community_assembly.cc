#include "communities/community_assembly.h"

#include <algorithm>
#include <bit>

namespace kcp {

void CommunityAssembly::Assemble(const CliqueIndexList& members, const CliqueList& cliques,
                                 NodeList& nodes, LinkList& links, const CliqueProfile* profile) {
  links.clear();
  Collect_nodes(members, cliques, nodes);
  const std::size_t n = nodes.size();
  for (std::size_t i = 0; i < n; ++i) local_[nodes[i]] = static_cast<std::uint32_t>(i + 1);

  // Many large cliques over a community of moderate size hold each link many times over: their
  // links are then marked in a bit matrix of the community, a clique's row at a time.
  const std::size_t words = (n + 63) / 64;
  std::size_t pairs = 0;
  std::size_t memberships = 0;
  for (const std::uint32_t& m : members) {
    if (m >= cliques.size()) continue;
    pairs += cliques[m].size() * (cliques[m].size() - 1) / 2;
    memberships += cliques[m].size();
  }
  if (n <= kMatrixNodes && (memberships + n) * words < pairs) {
    Assemble_in_matrix(members, cliques, nodes, links);
    for (const NodeIndex& v : nodes) local_[v] = 0;
    return;
  }
  if (profile != nullptr) {
    for (const NodeIndex& v : nodes) local_[v] = 0;
    by_profile_.Assemble(members, *profile, nodes, links);
    return;
  }

  Assemble_in_buckets(members, cliques, nodes, links);
  for (const NodeIndex& v : nodes) local_[v] = 0;
}

void CommunityAssembly::Assemble_in_matrix(const CliqueIndexList& members,
                                           const CliqueList& cliques, const NodeList& nodes,
                                           LinkList& links) {
  const std::size_t n = nodes.size();
  const std::size_t words = (n + 63) / 64;
  matrix_.assign(n * words, 0);
  std::vector<std::uint64_t> row(words);
  for (const std::uint32_t& m : members) {
    if (m >= cliques.size()) continue;
    std::fill(row.begin(), row.end(), 0);
    for (const NodeIndex& v : cliques[m]) {
      const std::uint32_t b = local_[v] - 1;
      row[b / 64] |= std::uint64_t{1} << (b % 64);
    }
    for (const NodeIndex& v : cliques[m]) {
      std::uint64_t* const target = matrix_.data() + std::size_t{local_[v] - 1} * words;
      for (std::size_t w = 0; w < words; ++w) target[w] |= row[w];
    }
  }
  // Row a holds a's partners in every member clique; its links are those to larger nodes.
  for (std::size_t a = 0; a < n; ++a) {
    const std::uint64_t* const bits = matrix_.data() + a * words;
    for (std::size_t w = (a + 1) / 64; w < words; ++w) {
      std::uint64_t word = bits[w];
      if (w == (a + 1) / 64) word &= ~std::uint64_t{0} << ((a + 1) % 64);
      for (; word != 0; word &= word - 1) {
        links.emplace_back(nodes[a],
                           nodes[w * 64 + static_cast<std::size_t>(std::countr_zero(word))]);
      }
    }
  }
}

void CommunityAssembly::Collect_nodes(const CliqueIndexList& members, const CliqueList& cliques,
                                      NodeList& nodes) {
  nodes.clear();
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
}

void CommunityAssembly::Assemble_in_buckets(const CliqueIndexList& members,
                                            const CliqueList& cliques, const NodeList& nodes,
                                            LinkList& links) {
  const std::size_t n = nodes.size();
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
}

}  // namespace kcp
