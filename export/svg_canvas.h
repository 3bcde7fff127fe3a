// A small SVG writer: a document of fixed size on a white background, and the shapes the plots
// use, each with its look given as presentation attributes (no style sheet, so every viewer
// shows the same). Coordinates are written with one decimal; text goes through xml_text.h.
// finish() closes the document and returns it; the canvas is spent afterwards.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kcp {

enum class TextAnchor { kStart, kMiddle, kEnd };

struct TextStyle {
  double size = 12;
  bool bold = false;
  bool italic = false;
  std::string colour = "#222222";
  TextAnchor anchor = TextAnchor::kStart;
  bool vertical = false;  // turned a quarter left, reading upwards
};

class SvgCanvas {
 public:
  SvgCanvas(double width, double height);

  void rect(double x, double y, double width, double height, std::string_view fill,
            std::string_view stroke);
  void line(double x1, double y1, double x2, double y2, std::string_view stroke, double width);
  void polyline(const std::vector<std::pair<double, double>>& points, std::string_view stroke,
                double width);
  void circle(double x, double y, double radius, std::string_view fill);
  void text(double x, double y, std::string_view content, const TextStyle& style);
  // "base" followed by a raised, smaller "superscript" (10 with exponent 4).
  void text_with_superscript(double x, double y, std::string_view base,
                             std::string_view superscript, const TextStyle& style);
  // A tooltip-like <title> on its own; viewers show it for the whole document.
  void title(std::string_view content);

  std::string finish();

 private:
  void open_text(double x, double y, const TextStyle& style);
  std::string svg_;
};

// One decimal, no "-0.0".
std::string Svg_number(double value);

}  // namespace kcp
