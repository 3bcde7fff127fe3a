#include "export/svg_canvas.h"

#include <charconv>
#include <cmath>

#include "export/xml_text.h"

namespace kcp {

std::string Svg_number(double value) {
  if (!std::isfinite(value)) return "0";
  double rounded = std::round(value * 10) / 10;
  if (rounded == 0) rounded = 0;  // turns -0 into 0
  char buffer[64];
  const auto result =
      std::to_chars(buffer, buffer + sizeof buffer, rounded, std::chars_format::fixed, 1);
  std::string text(buffer, result.ptr);
  if (text.ends_with(".0")) text.resize(text.size() - 2);
  return text;
}

SvgCanvas::SvgCanvas(double width, double height) {
  const std::string w = Svg_number(width);
  const std::string h = Svg_number(height);
  svg_ += "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
  svg_ += "<svg xmlns=\"http://www.w3.org/2000/svg\" version=\"1.1\" width=\"" + w +
          "\" height=\"" + h + "\" viewBox=\"0 0 " + w + " " + h +
          "\" font-family=\"DejaVu Sans, Helvetica, Arial, sans-serif\">\n";
  svg_ += "<rect x=\"0\" y=\"0\" width=\"" + w + "\" height=\"" + h + "\" fill=\"#ffffff\"/>\n";
}

void SvgCanvas::title(std::string_view content) {
  svg_ += "<title>";
  Append_xml_text(svg_, content);
  svg_ += "</title>\n";
}

void SvgCanvas::rect(double x, double y, double width, double height, std::string_view fill,
                     std::string_view stroke) {
  svg_ += "<rect x=\"" + Svg_number(x) + "\" y=\"" + Svg_number(y) + "\" width=\"" +
          Svg_number(width) + "\" height=\"" + Svg_number(height) + "\" fill=\"";
  svg_ += fill;
  svg_ += "\" stroke=\"";
  svg_ += stroke;
  svg_ += "\"/>\n";
}

void SvgCanvas::line(double x1, double y1, double x2, double y2, std::string_view stroke,
                     double width) {
  svg_ += "<line x1=\"" + Svg_number(x1) + "\" y1=\"" + Svg_number(y1) + "\" x2=\"" +
          Svg_number(x2) + "\" y2=\"" + Svg_number(y2) + "\" stroke=\"";
  svg_ += stroke;
  svg_ += "\" stroke-width=\"" + Svg_number(width) + "\"/>\n";
}

void SvgCanvas::polyline(const std::vector<std::pair<double, double>>& points,
                         std::string_view stroke, double width) {
  if (points.size() < 2) return;
  svg_ += "<polyline fill=\"none\" stroke=\"";
  svg_ += stroke;
  svg_ += "\" stroke-width=\"" + Svg_number(width) + "\" points=\"";
  for (std::size_t i = 0; i < points.size(); ++i) {
    if (i > 0) svg_ += ' ';
    svg_ += Svg_number(points[i].first) + "," + Svg_number(points[i].second);
  }
  svg_ += "\"/>\n";
}

void SvgCanvas::circle(double x, double y, double radius, std::string_view fill) {
  svg_ += "<circle cx=\"" + Svg_number(x) + "\" cy=\"" + Svg_number(y) + "\" r=\"" +
          Svg_number(radius) + "\" fill=\"";
  svg_ += fill;
  svg_ += "\"/>\n";
}

void SvgCanvas::open_text(double x, double y, const TextStyle& style) {
  svg_ += "<text x=\"" + Svg_number(x) + "\" y=\"" + Svg_number(y) + "\" font-size=\"" +
          Svg_number(style.size) + "\" fill=\"" + style.colour + "\"";
  if (style.bold) svg_ += " font-weight=\"bold\"";
  if (style.italic) svg_ += " font-style=\"italic\"";
  if (style.anchor == TextAnchor::kMiddle) svg_ += " text-anchor=\"middle\"";
  if (style.anchor == TextAnchor::kEnd) svg_ += " text-anchor=\"end\"";
  if (style.vertical) {
    svg_ += " transform=\"rotate(-90 " + Svg_number(x) + " " + Svg_number(y) + ")\"";
  }
  svg_ += '>';
}

void SvgCanvas::text(double x, double y, std::string_view content, const TextStyle& style) {
  open_text(x, y, style);
  Append_xml_text(svg_, content);
  svg_ += "</text>\n";
}

void SvgCanvas::text_with_superscript(double x, double y, std::string_view base,
                                      std::string_view superscript, const TextStyle& style) {
  open_text(x, y, style);
  Append_xml_text(svg_, base);
  // A shifted tspan rather than baseline-shift, which not every viewer honours.
  svg_ += "<tspan dy=\"" + Svg_number(-style.size * 0.45) + "\" font-size=\"" +
          Svg_number(style.size * 0.75) + "\">";
  Append_xml_text(svg_, superscript);
  svg_ += "</tspan></text>\n";
}

std::string SvgCanvas::finish() {
  svg_ += "</svg>\n";
  return std::move(svg_);
}

}  // namespace kcp
