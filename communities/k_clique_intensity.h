// The k-cliques of an undirected weighted graph whose link-weight intensity (geometric mean of
// the link weights) exceeds a threshold I, enumerated from the maximal cliques. Intensities are
// compared through sums of natural logarithms against log(pow(I, L)), L the link count. Each
// clique of at least k nodes reports its progress on standard output. Throws Xerror_msg on a
// clique link missing from the IndexLinkMap (looked up as (smaller, larger) only).
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <vector>

#include "core/types.h"

namespace kcp {

// The natural logarithms of the weights of all node pairs of one clique, addressed by the
// positions of the two nodes in the clique (symmetric, diagonal unused).
struct SubLinkTable {
  std::size_t size = 0;
  std::vector<double> log_w;
  double At(const std::size_t& i, const std::size_t& j) const { return log_w[i * size + j]; }
};

// Adds to k_cliques every k-subset of every clique of at least k nodes whose intensity exceeds
// `intensity` (or which the lower bound of the enumeration lets through, see the .cc).
void Generate_k_cls_from_cls(const CliqueList& cliques, const IndexLinkMap& links,
                             KCliqueSet& k_cliques, const std::uint32_t& k,
                             const double& intensity);

// Fills the table of `clique` (ascending nodes) and its smallest log weight. Throws
// Xerror_msg("ERROR: Get_sub_links_and_thresh_abs: missing link.\n") on a missing pair.
void Get_sub_links_and_min_link_w(const NodeList& clique, const IndexLinkMap& links,
                                  SubLinkTable& sub_links, double& min_log_w);

namespace K_clique_intensity_sub_routines {

// `partial` holds the ascending positions (in `clique`) of the nodes chosen so far, the last
// one being `position`; partial_sum is the log sum of their links. Extends it with every later
// node, keeping the k-sets that pass the threshold; `partial` is restored on return.
void Get_k_cls_iter(std::vector<std::size_t>& partial, const NodeList& clique,
                    const std::size_t& position, const SubLinkTable& sub_links,
                    KCliqueSet& k_cliques, const std::uint32_t& k, const double& partial_sum,
                    const double& log_threshold, const double& min_log_w);

// Adds every k-set that extends `partial` with nodes after `position`, without weight checks;
// `partial` is restored on return.
void Get_k_cls_iter_no_w(std::vector<std::size_t>& partial, const NodeList& clique,
                         const std::size_t& position, KCliqueSet& k_cliques,
                         const std::uint32_t& k);

}  // namespace K_clique_intensity_sub_routines

}  // namespace kcp
