#include "communities/k_clique_intensity.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "core/xerror_msg.h"

namespace kcp {
namespace {

const char kMissingLink[] = "ERROR: Get_sub_links_and_thresh_abs: missing link.\n";

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

// Runs the generation with its console blocks kept off the test output.
KCliqueSet Generate_quietly(const CliqueList& cliques, const IndexLinkMap& links,
                            const std::uint32_t& k, const double& intensity) {
  KCliqueSet k_cliques;
  ::testing::internal::CaptureStdout();
  try {
    Generate_k_cls_from_cls(cliques, links, k_cliques, k, intensity);
  } catch (...) {
    ::testing::internal::GetCapturedStdout();
    throw;
  }
  ::testing::internal::GetCapturedStdout();
  return k_cliques;
}

void Expect_missing_link(const NodeList& clique, const IndexLinkMap& links) {
  SubLinkTable table;
  double min_log_w = 0;
  try {
    Get_sub_links_and_min_link_w(clique, links, table, min_log_w);
    ADD_FAILURE() << "no error for a missing link";
  } catch (const Xerror_msg& e) {
    EXPECT_EQ(std::string(e.what()), kMissingLink);
  }
}

TEST(SubLinks, MissingOrOnlyReversedLinkThrowsTheFixedMessage) {
  // First pair missing, a later pair missing, a pair held only as (larger, smaller).
  Expect_missing_link({1, 2, 3}, {{{1, 3}, 1.0}, {{2, 3}, 1.0}});
  Expect_missing_link({1, 2, 3}, {{{1, 2}, 1.0}, {{1, 3}, 1.0}});
  Expect_missing_link({1, 2, 3}, {{{1, 2}, 1.0}, {{1, 3}, 1.0}, {{3, 2}, 1.0}});
  // A single node has no first link to look up.
  Expect_missing_link({4}, {{{4, 5}, 1.0}});
}

TEST(KCliqueGeneration, IntensityExactlyAtTheThresholdFailsTheExactTest) {
  // Weights 1 and I = 1: every log is 0, the threshold log(1) is 0, and 0 > 0 is false.
  const CliqueList cliques{{1, 2, 3, 4}};
  IndexLinkMap links = Uniform_links(cliques, 1.0);
  EXPECT_EQ(Generate_quietly(cliques, links, 3, 1.0), KCliqueSet{});
  // Lifting one link a hair above 1 lets exactly the two triangles holding it through.
  links[{2, 3}] = 1.000001;
  EXPECT_EQ(Generate_quietly(cliques, links, 3, 1.0), (KCliqueSet{{1, 2, 3}, {2, 3, 4}}));
}

TEST(KCliqueGeneration, BoundLetsThroughSetsAtOrBelowTheThresholdWhenWeightsExceedOne) {
  // All weights 2 and I = 2: intensity exactly I. The first bound, log 2 + 3 log 2 = log 16,
  // exceeds log 8, so every triangle is taken without the exact test.
  const CliqueList triangle{{1, 2, 3}};
  EXPECT_EQ(Generate_quietly(triangle, Uniform_links(triangle, 2.0), 3, 2.0),
            (KCliqueSet{{1, 2, 3}}));

  // A 4-clique with log weights 1.5 on (1,2) and 1 elsewhere: log sum 6.5, below the threshold
  // 6 * 1.2 = 7.2 (intensity e^1.083 < I = e^1.2). The bound after {1} + 2 is 1.5 + 1 * (6 - 0)
  // = 7.5 > 7.2, since the link count of {1} (zero) and not of {1,2} is used; the set passes.
  const CliqueList four{{1, 2, 3, 4}};
  IndexLinkMap links = Uniform_links(four, std::exp(1.0));
  links[{1, 2}] = std::exp(1.5);
  EXPECT_EQ(Generate_quietly(four, links, 4, std::exp(1.2)), (KCliqueSet{{1, 2, 3, 4}}));
  // All log weights 1 (real sum 6): at I = e^1.4 (threshold 8.4) the bounds run 1 + 6 = 7,
  // 3 + 5 = 8 and, for the fourth node, 6 + 1 * (6 - 3) = 9 > 8.4, so the set is taken; at
  // I = e^1.6 (threshold 9.6) every bound stays below and the exact test 6 > 9.6 fails.
  links[{1, 2}] = std::exp(1.0);
  EXPECT_EQ(Generate_quietly(four, links, 4, std::exp(1.4)), (KCliqueSet{{1, 2, 3, 4}}));
  EXPECT_EQ(Generate_quietly(four, links, 4, std::exp(1.6)), KCliqueSet{});
}

TEST(KCliqueGeneration, OverflowingThresholdLetsNothingPass) {
  NodeList nodes;
  for (NodeIndex v = 1; v <= 12; ++v) nodes.push_back(v);
  const CliqueList cliques{nodes};
  const IndexLinkMap links = Uniform_links(cliques, 1e300);
  // pow(1e10, 66) overflows: the threshold is infinite and even weights of 1e300 fail.
  EXPECT_EQ(Generate_quietly(cliques, links, 12, 1e10), KCliqueSet{});
  // pow(1e10, 3) does not: all 220 triangles pass.
  EXPECT_EQ(Generate_quietly(cliques, links, 3, 1e10).size(), 220u);
}

TEST(KCliqueGeneration, MissingLinkOfACliqueAbortsWithTheFixedMessage) {
  const CliqueList cliques{{1, 2, 3}, {2, 4, 5}};
  IndexLinkMap links = Uniform_links(cliques, 2.0);
  links.erase({4, 5});
  links[{5, 4}] = 2.0;
  try {
    Generate_quietly(cliques, links, 3, 1.0);
    ADD_FAILURE() << "no error for a missing link";
  } catch (const Xerror_msg& e) {
    EXPECT_EQ(std::string(e.what()), kMissingLink);
  }
}

TEST(KCliqueGeneration, ConsoleShowsOneBlockPerLargeEnoughCliqueAndTheTotal) {
  const CliqueList cliques{{1, 2, 3, 4}, {4, 5, 6}, {2, 4, 5, 7}};
  const IndexLinkMap links = Uniform_links(cliques, 2.0);
  KCliqueSet k_cliques;
  ::testing::internal::CaptureStdout();
  Generate_k_cls_from_cls(cliques, links, k_cliques, 4, 1.5);
  const std::string out = ::testing::internal::GetCapturedStdout();
  const std::string underline(50, '_');
  EXPECT_EQ(out, underline +
                     "\n"
                     " Generating k-cliques at k=4,\n"
                     " and a link weight intensity threshold I=1.500000:\n"
                     " 3 of 3 cliques to do (0.00% done)\n" +
                     underline +
                     "\n"
                     " Generating k-cliques at k=4,\n"
                     " and a link weight intensity threshold I=1.500000:\n"
                     " 1 of 3 cliques to do (66.67% done)\n"
                     "_______________________________\n"
                     " Altogether 2  k-cliques found.\n");
  EXPECT_EQ(k_cliques, (KCliqueSet{{1, 2, 3, 4}, {2, 4, 5, 7}}));
}

TEST(KCliqueGeneration, KAboveEveryCliqueYieldsNothingWithoutSizingAnythingByK) {
  // A buffer sized by k would ask for tens of gigabytes at the largest k and fail.
  const CliqueList cliques{{1, 2, 3}, {3, 4, 5, 6}};
  const IndexLinkMap links = Uniform_links(cliques, 2.0);
  for (const std::uint32_t k : {std::uint32_t{7}, std::uint32_t{1000000000}, 4294967295u}) {
    KCliqueSet k_cliques;
    ::testing::internal::CaptureStdout();
    try {
      Generate_k_cls_from_cls(cliques, links, k_cliques, k, 0.5);
    } catch (...) {
      ::testing::internal::GetCapturedStdout();
      ADD_FAILURE() << "k=" << k << " threw";
      continue;
    }
    const std::string out = ::testing::internal::GetCapturedStdout();
    EXPECT_EQ(out, std::string(31, '_') + "\n Altogether 0  k-cliques found.\n") << "k=" << k;
    EXPECT_TRUE(k_cliques.empty()) << "k=" << k;
  }
}

TEST(KCliqueExtension, UnweightedExtensionAddsEveryCompletionAndRestoresThePartialSet) {
  const NodeList clique{10, 20, 30, 40, 50, 60};
  KCliqueSet k_cliques;
  std::vector<std::size_t> partial{1, 2};  // {20, 30}
  K_clique_intensity_sub_routines::Get_k_cls_iter_no_w(partial, clique, 2, k_cliques, 4);
  EXPECT_EQ(partial, (std::vector<std::size_t>{1, 2}));
  EXPECT_EQ(k_cliques, (KCliqueSet{{20, 30, 40, 50}, {20, 30, 40, 60}, {20, 30, 50, 60}}));
}

TEST(KCliqueExtension, WeightedExtensionKeepsOnlyPassingSetsAndRestoresThePartialSet) {
  // Log weights: 0 everywhere except (1,4) = -3; minimum -3, k = 3, threshold log(pow(e^-0.5,
  // 3)) = -1.5. From {1}: with 2 the bound is 0 - 3 * 3 < -1.5, so {1,2} goes on weighted; {1,2,3}
  // sums 0 > -1.5 (in), {1,2,4} sums -3 (out); {1,3,4} sums -3 (out).
  const NodeList clique{1, 2, 3, 4};
  IndexLinkMap links = Uniform_links({clique}, 1.0);
  links[{1, 4}] = std::exp(-3.0);
  SubLinkTable table;
  double min_log_w = 0;
  Get_sub_links_and_min_link_w(clique, links, table, min_log_w);
  const double threshold = std::log(std::pow(std::exp(-0.5), 3.0));
  KCliqueSet k_cliques;
  std::vector<std::size_t> partial{0};
  K_clique_intensity_sub_routines::Get_k_cls_iter(partial, clique, 0, table, k_cliques, 3, 0.0,
                                                  threshold, min_log_w);
  EXPECT_EQ(partial, (std::vector<std::size_t>{0}));
  EXPECT_EQ(k_cliques, (KCliqueSet{{1, 2, 3}}));
}

}  // namespace
}  // namespace kcp
