#include "communities/k_clique_intensity.h"

#include <cmath>
#include <iomanip>
#include <sstream>
#include <string>

#include "cliques/search_report.h"
#include "core/xerror_msg.h"
#include "text/console.h"
#include "text/conversions.h"

namespace kcp {

namespace {

const char kMissingLink[] = "ERROR: Get_sub_links_and_thresh_abs: missing link.\n";

// The link count n(n-1)/2 of n nodes, computed in floating point in this form on purpose: the
// thresholds built from it must match log(pow(I, L)) to the last bit.
double Link_count(const std::size_t& n) {
  return static_cast<double>(n) * 0.5 * (static_cast<double>(n) - 1);
}

void Insert_k_clique(const std::vector<std::size_t>& positions, const NodeList& clique,
                     KCliqueSet& k_cliques) {
  NodeList k_clique;
  k_clique.reserve(positions.size());
  for (const std::size_t& p : positions) k_clique.push_back(clique[p]);
  k_cliques.insert(std::move(k_clique));
}

}  // namespace

void Get_sub_links_and_min_link_w(const NodeList& clique, const IndexLinkMap& links,
                                  SubLinkTable& sub_links, double& min_log_w) {
  const std::size_t n = clique.size();
  // A set of fewer than two nodes has no first link to look up: it is reported as missing
  // rather than read past the end of the clique.
  if (n < 2) throw Xerror_msg(kMissingLink);
  const auto first = links.find({clique[0], clique[1]});
  if (first == links.end()) throw Xerror_msg(kMissingLink);
  min_log_w = std::log(first->second);
  sub_links.size = n;
  sub_links.log_w.assign(n * n, 0.0);
  for (std::size_t i = 0; i < n; ++i) {
    for (std::size_t j = i + 1; j < n; ++j) {
      const auto link = links.find({clique[i], clique[j]});
      if (link == links.end()) throw Xerror_msg(kMissingLink);
      const double log_w = std::log(link->second);
      sub_links.log_w[i * n + j] = log_w;
      sub_links.log_w[j * n + i] = log_w;
      if (log_w < min_log_w) min_log_w = log_w;
    }
  }
}

namespace K_clique_intensity_sub_routines {

// Both extensions walk the subsets depth-first with an explicit stack of cursors (one per
// chosen node, the next candidate position), in the order of the plain recursion: nodes are
// tried in ascending order and a branch is finished before its next sibling is started.

void Get_k_cls_iter(std::vector<std::size_t>& partial, const NodeList& clique,
                    const std::size_t& position, const SubLinkTable& sub_links,
                    KCliqueSet& k_cliques, const std::uint32_t& k, const double& partial_sum,
                    const double& log_threshold, const double& min_log_w) {
  struct Frame {
    std::size_t next;
    double sum;
  };
  const double l_k = Link_count(k);
  const std::size_t n = clique.size();
  std::vector<Frame> stack{{position + 1, partial_sum}};
  while (!stack.empty()) {
    // Too few nodes left to complete a k-set: the rest of this level yields nothing.
    if (stack.back().next >= n || n - stack.back().next < k - partial.size()) {
      stack.pop_back();
      // The node whose branch just ended; the caller's own nodes stay.
      if (!stack.empty()) partial.pop_back();
      continue;
    }
    const std::size_t u = stack.back().next++;
    double sum = stack.back().sum;
    for (const std::size_t& x : partial) sum += sub_links.At(u, x);
    // The link count of the set before u joins it: with this count the bound takes |S| links
    // at the minimal weight on top of their real weights. Deliberate, kept as is.
    const double l_s = Link_count(partial.size());
    const double bound = sum + min_log_w * (l_k - l_s);
    partial.push_back(u);
    if (bound > log_threshold) {
      if (partial.size() == k) {
        Insert_k_clique(partial, clique, k_cliques);
      } else {
        Get_k_cls_iter_no_w(partial, clique, u, k_cliques, k);
      }
      partial.pop_back();
    } else if (partial.size() < k) {
      stack.push_back({u + 1, sum});
    } else {
      if (sum > log_threshold) Insert_k_clique(partial, clique, k_cliques);
      partial.pop_back();
    }
  }
}

void Get_k_cls_iter_no_w(std::vector<std::size_t>& partial, const NodeList& clique,
                         const std::size_t& position, KCliqueSet& k_cliques,
                         const std::uint32_t& k) {
  if (partial.size() >= k) return;
  const std::size_t n = clique.size();
  std::vector<std::size_t> cursors{position + 1};
  while (!cursors.empty()) {
    const std::size_t missing = k - partial.size();
    // Too few nodes left to complete a k-set: the rest of this level yields nothing.
    if (cursors.back() >= n || n - cursors.back() < missing) {
      cursors.pop_back();
      if (!cursors.empty()) partial.pop_back();
      continue;
    }
    const std::size_t u = cursors.back()++;
    partial.push_back(u);
    if (partial.size() == k) {
      Insert_k_clique(partial, clique, k_cliques);
      partial.pop_back();
    } else {
      cursors.push_back(u + 1);
    }
  }
}

}  // namespace K_clique_intensity_sub_routines

void Generate_k_cls_from_cls(const CliqueList& cliques, const IndexLinkMap& links,
                             KCliqueSet& k_cliques, const std::uint32_t& k,
                             const double& intensity) {
  namespace report = Clique_find_report_sub_routines;
  const double log_threshold = std::log(std::pow(intensity, Link_count(k)));

  std::ostringstream intensity_text;
  intensity_text << std::fixed << std::setprecision(6) << intensity;
  const std::string header = " Generating k-cliques at k=" + int2string(k) + ",";
  const std::string second_header =
      " and a link weight intensity threshold I=" + intensity_text.str() + ":";
  const std::uint32_t total = static_cast<std::uint32_t>(cliques.size());

  SubLinkTable sub_links;
  double min_log_w = 0;
  // Never sized by k: it grows only as deep as the cliques walked, so a k above every clique
  // costs nothing.
  std::vector<std::size_t> partial;
  for (std::size_t p = 0; p < cliques.size(); ++p) {
    const NodeList& clique = cliques[p];
    if (clique.size() < k) continue;
    std::ostringstream progress;
    report::Report_progress(header, second_header, "cliques", total - static_cast<std::uint32_t>(p),
                            total, progress);
    Print_text(progress.str());
    Get_sub_links_and_min_link_w(clique, links, sub_links, min_log_w);
    for (std::size_t v = 0; v < clique.size(); ++v) {
      partial.assign(1, v);
      K_clique_intensity_sub_routines::Get_k_cls_iter(partial, clique, v, sub_links, k_cliques, k,
                                                      0.0, log_threshold, min_log_w);
    }
  }
  std::ostringstream end;
  report::Report_clique_search_end(" k-cliques", k_cliques.size(), end);
  Print_text(end.str());
}

}  // namespace kcp
