#include "communities/k_clique_intensity.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "core/xerror_msg.h"
#include "tests/cli/cout_capture.h"

namespace kcp {
namespace {

// Links among all nodes of each clique, every one of weight w.
IndexLinkMap Uniform_links(const CliqueList& cliques, const double& w) {
  IndexLinkMap links;
  for (const NodeList& clique : cliques) {
    for (std::size_t a = 0; a < clique.size(); ++a) {
      for (std::size_t b = a + 1; b < clique.size(); ++b) links[{clique[a], clique[b]}] = w;
    }
  }
  return links;
}

KCliqueSet Generate(const CliqueList& cliques, const IndexLinkMap& links, const std::uint32_t& k,
                    const double& intensity, std::string* printed = nullptr) {
  KCliqueSet k_cliques;
  testing::CoutCapture capture;
  Generate_k_cls_from_cls(cliques, links, k_cliques, k, intensity);
  if (printed != nullptr) *printed = capture.text();
  return k_cliques;
}

TEST(KCliqueGeneration, MissingOrOnlyReversedLinkThrowsTheFixedMessage) {
  // First pair missing, a later pair missing, a pair held only as (larger, smaller).
  for (const IndexLinkMap& links :
       {IndexLinkMap{{{1, 3}, 1.0}, {{2, 3}, 1.0}}, IndexLinkMap{{{1, 2}, 1.0}, {{1, 3}, 1.0}},
        IndexLinkMap{{{1, 2}, 1.0}, {{1, 3}, 1.0}, {{3, 2}, 1.0}}}) {
    try {
      Generate({{1, 2, 3}}, links, 3, 1.0);
      ADD_FAILURE() << "no error for a missing link";
    } catch (const Xerror_msg& e) {
      EXPECT_STREQ(e.what(), "ERROR: Get_sub_links_and_thresh_abs: missing link.\n");
    }
  }
}

TEST(KCliqueGeneration, KeepsTheSetsAboveTheThresholdOrLetThroughByTheBounds) {
  const CliqueList four{{1, 2, 3, 4}};
  IndexLinkMap lifted = Uniform_links(four, 1.0);
  lifted[{2, 3}] = 1.000001;
  IndexLinkMap one_higher = Uniform_links(four, std::exp(1.0));
  one_higher[{1, 2}] = std::exp(1.5);
  NodeList twelve;
  for (NodeIndex v = 1; v <= 12; ++v) twelve.push_back(v);
  const struct {
    CliqueList cliques;
    IndexLinkMap links;
    std::uint32_t k;
    double intensity;
    KCliqueSet expected;
  } cases[] = {
      // Weights 1 and I = 1: every log is 0, and 0 > log(1) = 0 is false; lifting one link a hair
      // above 1 lets exactly the two triangles holding it through.
      {four, Uniform_links(four, 1.0), 3, 1.0, {}},
      {four, lifted, 3, 1.0, {{1, 2, 3}, {2, 3, 4}}},
      // All weights 2 and I = 2: the first bound, log 2 + 3 log 2 = log 16, exceeds log 8, so the
      // triangle is taken without the exact test.
      {{{1, 2, 3}}, Uniform_links({{1, 2, 3}}, 2.0), 3, 2.0, {{1, 2, 3}}},
      // Log weights 1.5 on (1,2) and 1 elsewhere: log sum 6.5, below 6 * 1.2 = 7.2. The bound
      // after {1} + 2 is 1.5 + 1 * (6 - 0) = 7.5 > 7.2, since the link count of {1} (zero) and
      // not of {1,2} is used; the set passes.
      {four, one_higher, 4, std::exp(1.2), {{1, 2, 3, 4}}},
      // All log weights 1 (sum 6): at I = e^1.4 (threshold 8.4) the bounds run 7, 8 and, for the
      // fourth node, 6 + 1 * (6 - 3) = 9 > 8.4, so the set is taken; at I = e^1.6 (threshold
      // 9.6) every bound stays below and the exact test 6 > 9.6 fails.
      {four, Uniform_links(four, std::exp(1.0)), 4, std::exp(1.4), {{1, 2, 3, 4}}},
      {four, Uniform_links(four, std::exp(1.0)), 4, std::exp(1.6), {}},
      // pow(1e10, 66) overflows: the threshold is infinite and even weights of 1e300 fail.
      {{twelve}, Uniform_links({twelve}, 1e300), 12, 1e10, {}},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Generate(c.cliques, c.links, c.k, c.intensity), c.expected) << c.intensity;
  }
  // pow(1e10, 3) does not overflow: all 220 triangles pass.
  EXPECT_EQ(Generate({twelve}, Uniform_links({twelve}, 1e300), 3, 1e10).size(), 220u);
}

TEST(KCliqueGeneration, ConsoleShowsOneBlockPerLargeEnoughCliqueAndTheTotal) {
  const CliqueList cliques{{1, 2, 3, 4}, {4, 5, 6}, {2, 4, 5, 7}};
  std::string printed;
  EXPECT_EQ(Generate(cliques, Uniform_links(cliques, 2.0), 4, 1.5, &printed),
            (KCliqueSet{{1, 2, 3, 4}, {2, 4, 5, 7}}));
  const std::string block = std::string(50, '_') +
                            "\n Generating k-cliques at k=4,\n and a link weight intensity "
                            "threshold I=1.500000:\n";
  EXPECT_EQ(printed, block + " 3 of 3 cliques to do (0.00% done)\n" + block +
                         " 1 of 3 cliques to do (66.67% done)\n" + std::string(31, '_') +
                         "\n Altogether 2  k-cliques found.\n");
}

TEST(KCliqueGeneration, KAboveEveryCliqueYieldsNothingWithoutSizingAnythingByK) {
  // A buffer sized by k would ask for tens of gigabytes at the largest k and fail.
  const CliqueList cliques{{1, 2, 3}, {3, 4, 5, 6}};
  for (const std::uint32_t k : {std::uint32_t{7}, std::uint32_t{1000000000}, 4294967295u}) {
    std::string printed;
    EXPECT_TRUE(Generate(cliques, Uniform_links(cliques, 2.0), k, 0.5, &printed).empty());
    EXPECT_EQ(printed, std::string(31, '_') + "\n Altogether 0  k-cliques found.\n") << k;
  }
}

}  // namespace
}  // namespace kcp
