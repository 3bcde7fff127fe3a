#include "export/svg_panel.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <type_traits>

#include "tests/export/xml_check.h"

namespace kcp {
namespace {

// The contents of the text elements of a picture of one panel.
template <typename Panel>
std::vector<std::string> Texts_of(const Panel& panel, double width, std::string* svg = nullptr) {
  SvgCanvas canvas(width, 240);
  if constexpr (std::is_same_v<Panel, LogLogPanel>) {
    Draw_log_log_panel(canvas, {0, 0, width, 240}, panel);
  } else {
    Draw_linear_panel(canvas, {0, 0, width, 240}, panel);
  }
  const std::string picture = canvas.finish();
  EXPECT_EQ(testing::Xml_fault(picture), "");
  std::vector<std::string> texts;
  for (std::size_t at = picture.find("<text "); at != std::string::npos;
       at = picture.find("<text ", at + 1)) {
    const std::size_t start = picture.find('>', at) + 1;
    texts.push_back(picture.substr(start, picture.find('<', start) - start));
  }
  if (svg != nullptr) *svg = picture;
  return texts;
}

bool Has(const std::vector<std::string>& texts, const std::string& text) {
  return std::find(texts.begin(), texts.end(), text) != texts.end();
}

TEST(SvgPanel, CoversValuesWithWholeDecadesAndStepsLinearTicks) {
  EXPECT_EQ(Decades_covering(1, 1), std::make_pair(0, 1));
  EXPECT_EQ(Decades_covering(4, 33), std::make_pair(0, 2));
  EXPECT_EQ(Decades_covering(10, 100), std::make_pair(1, 2));
  EXPECT_EQ(Decades_covering(10, 101), std::make_pair(1, 3));
  EXPECT_EQ(Decades_covering(99, 99), std::make_pair(1, 2));
  EXPECT_EQ(Decades_covering(1000, 1000), std::make_pair(3, 4));
  // Steps of one, two or five times a power of ten.
  EXPECT_EQ(Linear_ticks(0), std::vector<double>({0, 1}));
  EXPECT_EQ(Linear_ticks(3), std::vector<double>({0, 1, 2, 3}));
  EXPECT_EQ(Linear_ticks(33), std::vector<double>({0, 10, 20, 30, 40}));
  EXPECT_EQ(Linear_ticks(12.5), std::vector<double>({0, 5, 10, 15}));
  EXPECT_EQ(Linear_ticks(600), std::vector<double>({0, 100, 200, 300, 400, 500, 600}));
}

TEST(SvgPanel, LabelsLogAxesAtPowersOfTen) {
  LogLogPanel panel;
  panel.title = "Community size";
  panel.x_label = "size (nodes)";
  panel.y_label = "communities";
  panel.note = "size 0: 2 communities";
  panel.colour = "#1f77b4";
  panel.points = {{3, 100}, {40, 1}};
  panel.x_hi = 2;
  panel.y_hi = 5;
  std::string svg;
  const std::vector<std::string> texts = Texts_of(panel, 300, &svg);
  for (const char* text : {"Community size", "size (nodes)", "communities", "size 0: 2 communities",
                           "1", "10", "100", "1000"}) {
    EXPECT_TRUE(Has(texts, text)) << text;
  }
  // 10^4 and 10^5 carry their exponents as superscripts.
  EXPECT_NE(svg.find(">10<tspan dy=\"-4.5\" font-size=\"7.5\">4</tspan>"), std::string::npos);
  EXPECT_NE(svg.find(">10<tspan dy=\"-4.5\" font-size=\"7.5\">5</tspan>"), std::string::npos);
  EXPECT_EQ(testing::Count(svg, "<circle"), 2u);  // one dot per point
}

TEST(SvgPanel, PlacesDotsOnTheLogScale) {
  LogLogPanel panel;
  panel.colour = "#000000";
  panel.points = {{1, 1}, {10, 10}, {100, 100}};
  panel.x_hi = 2;
  panel.y_hi = 2;
  std::string svg;
  Texts_of(panel, 300, &svg);
  std::vector<std::pair<double, double>> centres;
  for (std::size_t at = svg.find("<circle cx=\""); at != std::string::npos;
       at = svg.find("<circle cx=\"", at + 1)) {
    centres.emplace_back(std::stod(svg.substr(at + 12)),
                         std::stod(svg.substr(svg.find("cy=\"", at) + 4)));
  }
  ASSERT_EQ(centres.size(), 3u);
  // Equal steps on both axes for equal ratios; y grows upwards.
  EXPECT_NEAR(centres[1].first - centres[0].first, centres[2].first - centres[1].first, 0.2);
  EXPECT_NEAR(centres[0].second - centres[1].second, centres[1].second - centres[2].second, 0.2);
  EXPECT_GT(centres[1].first, centres[0].first);
  EXPECT_LT(centres[1].second, centres[0].second);
}

TEST(SvgPanel, LabelsWholeKsOnALinearPanelAtMostTwelveOfThem) {
  LinearPanel panel;
  panel.title = "Number of communities against k";
  panel.x_label = "k";
  panel.y_label = "communities";
  panel.colour = "#333333";
  panel.points = {{3, 12}, {4, 5}, {5, 0}};
  panel.x_min = 3;
  panel.x_max = 5;
  std::vector<std::string> texts = Texts_of(panel, 600);
  // k ticks 3, 4, 5; count ticks 0, 2, ..., 12.
  for (const char* text : {"3", "4", "5", "0", "2", "12"}) EXPECT_TRUE(Has(texts, text)) << text;
  EXPECT_FALSE(Has(texts, "14"));
  EXPECT_FALSE(Has(texts, "2.5"));

  panel.points.clear();
  panel.x_max = 239;
  for (int k = 3; k <= 239; ++k) panel.points.emplace_back(k, 1);
  texts = Texts_of(panel, 600);
  for (const char* text : {"20", "100", "220"}) EXPECT_TRUE(Has(texts, text)) << text;
  for (const char* text : {"3", "10", "30", "240"}) EXPECT_FALSE(Has(texts, text)) << text;
}

}  // namespace
}  // namespace kcp
