// The SVG picture: the canvas's shapes, the panels' axes and the plots of a run.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <sstream>
#include <string>

#include "export/svg_canvas.h"
#include "export/svg_panel.h"
#include "export/svg_plots.h"
#include "tests/results/results_fixtures.h"

namespace kcp {
namespace {

using testing::Count;

// Each text occurs in the picture as often as it is listed.
void Expect_texts(const std::string& svg, const std::vector<std::string>& texts) {
  for (const std::string& text : texts) {
    EXPECT_EQ(Count(svg, text),
              static_cast<std::size_t>(std::count(texts.begin(), texts.end(), text)))
        << text;
  }
}

TEST(SvgCanvas, WritesEachShapeWithItsAttributesAndOneDecimalAtMost) {
  SvgCanvas canvas(100, 50);
  canvas.rect(1, 2, 3, 4, "none", "#555555");
  canvas.line(0, -0.04, 10, 10.5, "#000000", 1);
  canvas.polyline({{1, 1}, {-3.5, 12.25}}, "#111111", 1.2);
  canvas.circle(5, 6, 3, "#d62728");
  canvas.text(7, 8, "a<b", {.size = 13, .bold = true, .anchor = TextAnchor::kMiddle});
  canvas.text(9, 9, "y", {.vertical = true});
  canvas.text_with_superscript(1, 2, "10", "4", {.size = 10});
  EXPECT_EQ(canvas.finish(), testing::Expected("canvas_shapes.svg"));
}

TEST(SvgPanel, LabelsLogAxesAtPowersOfTenAndPlacesDotsOnTheLogScale) {
  LogLogPanel panel;
  panel.title = "Community size";
  panel.note = "size 0: 2 communities";
  panel.points = {{1, 1}, {10, 10}, {100, 100}};
  panel.x_hi = 2;
  panel.y_hi = 5;
  SvgCanvas canvas(300, 240);
  Draw_log_log_panel(canvas, {0, 0, 300, 240}, panel);
  const std::string svg = canvas.finish();
  // Decades 1 to 100 on x, 1 to 10^5 on y; 10^4 and 10^5 carry their exponents as superscripts.
  Expect_texts(svg, {">Community size<", ">size 0: 2 communities<", ">1<", ">1<", ">100<", ">100<",
                     ">1000<", ">10<tspan dy=\"-4.5\" font-size=\"7.5\">5</tspan>"});
  // Equal steps for equal ratios on both axes; y grows upwards.
  std::vector<double> x, y;
  for (std::size_t at = svg.find("<circle cx=\""); at != std::string::npos;
       at = svg.find("<circle cx=\"", at + 1)) {
    x.push_back(std::stod(svg.substr(at + 12)));
    y.push_back(-std::stod(svg.substr(svg.find("cy=\"", at) + 4)));
  }
  ASSERT_EQ(x.size(), 3u);
  EXPECT_TRUE(x[1] - x[0] > 1 && y[1] - y[0] > 1) << x[1] - x[0] << " " << y[1] - y[0];
  EXPECT_TRUE(std::abs(x[2] + x[0] - 2 * x[1]) < 0.2 && std::abs(y[2] + y[0] - 2 * y[1]) < 0.2);
}

TEST(SvgPanel, LabelsWholeKsOnALinearPanelAtMostTwelveOfThem) {
  LinearPanel panel;
  panel.x_min = 3;
  panel.x_max = 239;
  for (int k = 3; k <= 239; ++k) panel.points.emplace_back(k, k == 3 ? 12 : 1);
  SvgCanvas canvas(600, 240);
  Draw_linear_panel(canvas, {0, 0, 600, 240}, panel);
  const std::string svg = canvas.finish();
  Expect_texts(svg, {">20<", ">100<", ">220<", ">12<"});
  for (const char* text : {">3<", ">30<", ">240<", ">14<", ">2.5<"}) {
    EXPECT_EQ(Count(svg, text), 0u) << text;
  }
}

// Four nodes; at k=3 the exact community 0 = {a, b, c} and the approximate -1 = {b, c, d}, so
// the _merged distributions; at k=4 no community, and the plain ones.
RunResults Undirected_sample() {
  RunResults results = testing::At_k(
      3, {testing::Community(0, {"a", "b", "c"}), testing::Community(-1, {"b", "c", "d"})});
  results.nodes = {"a", "b", "c", "d"};
  results.per_k[0].distributions = {{"size_distribution_merged", {{3, 2}}},
                                    {"degree_distribution_merged", {{1, 2}}},
                                    {"overlap_distribution_merged", {{2, 1}}},
                                    {"membership_distribution_merged", {{0, 0}, {1, 2}, {2, 2}}}};
  results.per_k.push_back(testing::At_k(4, {}).per_k[0]);
  results.per_k[1].distributions = {{"size_distribution", {}},
                                    {"degree_distribution", {}},
                                    {"overlap_distribution", {}},
                                    {"membership_distribution", {{0, 4}}}};
  return results;
}

std::string Svg_of(const RunResults& results, const std::string& name = "net_files") {
  std::ostringstream out;
  Write_svg_plots(results, name, out);
  EXPECT_EQ(testing::Python_xml_fault(out.str()), "");
  return out.str();
}

TEST(SvgPlots, DrawsTheSummaryAndFourMergedDistributionsPerK) {
  const std::string svg = Svg_of(Undirected_sample());
  Expect_texts(svg, {">Number of communities against k<", ">Mean community size against k<",
                     ">k = 3:  2 communities (1 approximate)<", ">k = 4:  0 communities<",
                     ">undirected run; k = 3 to 4; 4 nodes<",
                     ">in no community: 0 nodes (0 is off the log axis)<",
                     ">in no community: 4 nodes (0 is off the log axis)<",
                     "a value of 0 cannot be placed on them", ">Community size<",
                     ">Community size<", ">Community degree<", ">Community degree<",
                     ">Overlap size<", ">Overlap size<", ">Node membership<", ">Node membership<"});
  // With approximate communities the _merged files are drawn: at k=3 size 3 (count 2), degree 1,
  // overlap 2, membership 1 and 2; k=4 has only the membership row for 0. The summary has counts
  // for k=3 and k=4 and a mean size for k=3 only.
  EXPECT_EQ(Count(svg, "<circle"), 5u + 3u);
  EXPECT_EQ(Count(svg, ">no communities<"), 4u);
}

TEST(SvgPlots, LeavesOutTheSummaryForASingleKAndGroupsDigits) {
  RunResults results = testing::Directed_sample();
  for (int i = 0; i < 1231; ++i) results.nodes.push_back("n" + std::to_string(i));
  results.per_k[0].distributions["membership_distribution"] = {{0, 1231}, {1, 3}};
  const std::string svg = Svg_of(results);
  EXPECT_EQ(Count(svg, "against k<"), 0u);
  EXPECT_EQ(Count(svg, ">directed, weighted run; k = 3; 1,234 nodes<"), 1u);
  EXPECT_EQ(Count(svg, ">in no community: 1,231 nodes (0 is off the log axis)<"), 1u);
  // The degree and overlap distributions are missing; their panels say so.
  EXPECT_EQ(Count(svg, ">no distribution file<"), 2u);
  const std::string empty = Svg_of(RunResults{}, "a<b>&\xFF");
  // The document's title and the heading on the page.
  EXPECT_EQ(Count(empty, "<title>k-clique communities of a&lt;b&gt;&amp;\\xFF</title>"), 1u);
  EXPECT_EQ(Count(empty, ">k-clique communities of a&lt;b&gt;&amp;\\xFF<"), 2u);
  EXPECT_EQ(Count(empty, ">The results hold no k directories.<"), 1u);
}

}  // namespace
}  // namespace kcp
