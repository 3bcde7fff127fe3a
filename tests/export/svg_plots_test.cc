#include "export/svg_plots.h"

#include <gtest/gtest.h>

#include <sstream>

#include "tests/export/sample_results.h"
#include "tests/export/xml_check.h"

namespace kcp {
namespace {

using testing::Count;

std::string Svg_of(const RunResults& results, const std::string& name = "net_files") {
  std::ostringstream out;
  Write_svg_plots(results, name, out);
  const std::string svg = out.str();
  EXPECT_EQ(testing::Xml_fault(svg), "");
  return svg;
}

TEST(SvgPlots, DrawsTheSummaryAndFourMergedDistributionsPerK) {
  const std::string svg = Svg_of(testing::Undirected_sample());
  EXPECT_EQ(Count(svg, ">Number of communities against k<"), 1u);
  EXPECT_EQ(Count(svg, ">Mean community size against k<"), 1u);
  for (const char* title :
       {">Community size<", ">Community degree<", ">Overlap size<", ">Node membership<"}) {
    EXPECT_EQ(Count(svg, title), 2u) << title;
  }
  EXPECT_EQ(Count(svg, ">k = 3:  2 communities (1 approximate)<"), 1u);
  EXPECT_EQ(Count(svg, ">k = 4:  0 communities<"), 1u);
  EXPECT_EQ(Count(svg, ">undirected run; k = 3 to 4; 4 nodes<"), 1u);
  // With approximate communities the _merged files are drawn: at k=3 size 3 (count 2), degree 1,
  // overlap 2, membership 1 and 2; k=4 has only the membership row for 0. The summary has counts
  // for k=3 and k=4 and a mean size for k=3 only.
  EXPECT_EQ(Count(svg, "<circle"), 5u + 3u);
  EXPECT_EQ(Count(svg, ">no communities<"), 4u);
  // The count of zero values goes under the panel title.
  EXPECT_EQ(Count(svg, ">in no community: 0 nodes (0 is off the log axis)<"), 1u);
  EXPECT_EQ(Count(svg, ">in no community: 4 nodes (0 is off the log axis)<"), 1u);
  EXPECT_EQ(Count(svg, "a value of 0 cannot be placed on them"), 1u);
}

TEST(SvgPlots, LeavesOutTheSummaryForASingleKAndGroupsDigits) {
  RunResults results = testing::Directed_sample();
  const std::string svg = Svg_of(results);
  EXPECT_EQ(Count(svg, "against k<"), 0u);
  EXPECT_EQ(Count(svg, ">directed, weighted run; k = 3; 3 nodes<"), 1u);
  // Only the size distribution is present; the other three panels say so.
  EXPECT_EQ(Count(svg, ">no distribution file<"), 3u);

  for (int i = 0; i < 1231; ++i) results.nodes.push_back("n" + std::to_string(i));
  results.per_k[0].distributions["membership_distribution"] = {{0, 1231}, {1, 3}};
  const std::string large = Svg_of(results);
  EXPECT_EQ(Count(large, ">directed, weighted run; k = 3; 1,234 nodes<"), 1u);
  EXPECT_EQ(Count(large, ">in no community: 1,231 nodes (0 is off the log axis)<"), 1u);
}

TEST(SvgPlots, EscapesTheNameAndHandlesARunWithoutK) {
  const std::string svg = Svg_of(RunResults{}, "a<b>&\xFF");
  EXPECT_NE(svg.find(">k-clique communities of a&lt;b&gt;&amp;\\xFF<"), std::string::npos);
  EXPECT_NE(svg.find(">The results hold no k directories.<"), std::string::npos);
  if (!testing::Python_available()) {
    GTEST_SKIP() << "python3 with xml.etree is not installed; checked in C++ only";
  }
  EXPECT_EQ(testing::Python_xml_fault(svg), "");
  EXPECT_EQ(testing::Python_xml_fault(Svg_of(testing::Undirected_sample(), "x&y\x80")), "");
}

}  // namespace
}  // namespace kcp
