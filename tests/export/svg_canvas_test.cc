#include "export/svg_canvas.h"

#include <gtest/gtest.h>

#include "tests/export/xml_check.h"

namespace kcp {
namespace {

TEST(SvgCanvas, WritesCoordinatesWithOneDecimalAtMost) {
  EXPECT_EQ(Svg_number(12), "12");
  EXPECT_EQ(Svg_number(12.25), "12.3");
  EXPECT_EQ(Svg_number(0.04), "0");
  EXPECT_EQ(Svg_number(-0.04), "0");
  EXPECT_EQ(Svg_number(-3.5), "-3.5");
}

TEST(SvgCanvas, WritesEachShapeWithItsAttributes) {
  SvgCanvas canvas(100, 50);
  canvas.rect(1, 2, 3, 4, "none", "#555555");
  canvas.line(0, 0, 10, 10.5, "#000000", 1);
  canvas.polyline({{1, 1}, {2, 3}}, "#111111", 1.2);
  canvas.circle(5, 6, 3, "#d62728");
  canvas.text(7, 8, "a<b", {.size = 13, .bold = true, .anchor = TextAnchor::kMiddle});
  canvas.text(9, 9, "y", {.vertical = true});
  const std::string svg = canvas.finish();
  EXPECT_EQ(svg,
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
            "<svg xmlns=\"http://www.w3.org/2000/svg\" version=\"1.1\" width=\"100\" "
            "height=\"50\" viewBox=\"0 0 100 50\" "
            "font-family=\"DejaVu Sans, Helvetica, Arial, sans-serif\">\n"
            "<rect x=\"0\" y=\"0\" width=\"100\" height=\"50\" fill=\"#ffffff\"/>\n"
            "<rect x=\"1\" y=\"2\" width=\"3\" height=\"4\" fill=\"none\" stroke=\"#555555\"/>\n"
            "<line x1=\"0\" y1=\"0\" x2=\"10\" y2=\"10.5\" stroke=\"#000000\" "
            "stroke-width=\"1\"/>\n"
            "<polyline fill=\"none\" stroke=\"#111111\" stroke-width=\"1.2\" "
            "points=\"1,1 2,3\"/>\n"
            "<circle cx=\"5\" cy=\"6\" r=\"3\" fill=\"#d62728\"/>\n"
            "<text x=\"7\" y=\"8\" font-size=\"13\" fill=\"#222222\" font-weight=\"bold\" "
            "text-anchor=\"middle\">a&lt;b</text>\n"
            "<text x=\"9\" y=\"9\" font-size=\"12\" fill=\"#222222\" "
            "transform=\"rotate(-90 9 9)\">y</text>\n"
            "</svg>\n");
  EXPECT_EQ(testing::Xml_fault(svg), "");
}

TEST(SvgCanvas, RaisesASuperscriptInsideTheSameText) {
  SvgCanvas canvas(10, 10);
  canvas.text_with_superscript(1, 2, "10", "4", {.size = 10});
  EXPECT_NE(canvas.finish().find(">10<tspan dy=\"-4.5\" font-size=\"7.5\">4</tspan></text>"),
            std::string::npos);
}

}  // namespace
}  // namespace kcp
