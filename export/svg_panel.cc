#include "export/svg_panel.h"

#include <algorithm>
#include <cmath>

namespace kcp {

namespace {

constexpr double kLeft = 66;
constexpr double kRight = 16;
constexpr double kTop = 44;
constexpr double kBottom = 48;
constexpr double kPad = 8;  // keeps dots on the ends of an axis off the frame
constexpr const char* kGrid = "#e4e4e4";
constexpr const char* kFrame = "#555555";

struct Area {
  double left, top, right, bottom;
};

Area Plot_area(const PanelBox& box) {
  return {box.x + kLeft, box.y + kTop, box.x + box.width - kRight, box.y + box.height - kBottom};
}

// Maps [lo, hi] onto the pixels [from, to] less the padding at both ends.
double Scale(double value, double lo, double hi, double from, double to) {
  const double direction = to > from ? 1 : -1;
  const double start = from + direction * kPad;
  const double end = to - direction * kPad;
  return start + (value - lo) / (hi - lo) * (end - start);
}

void Draw_titles(SvgCanvas& canvas, const PanelBox& box, const Area& area, const std::string& title,
                 const std::string& x_label, const std::string& y_label) {
  canvas.text(box.x + box.width / 2, box.y + 17, title,
              {.size = 13, .bold = true, .anchor = TextAnchor::kMiddle});
  canvas.text((area.left + area.right) / 2, area.bottom + 38, x_label,
              {.size = 11, .anchor = TextAnchor::kMiddle});
  canvas.text(box.x + 15, (area.top + area.bottom) / 2, y_label,
              {.size = 11, .anchor = TextAnchor::kMiddle, .vertical = true});
}

void Draw_frame(SvgCanvas& canvas, const Area& area) {
  canvas.rect(area.left, area.top, area.right - area.left, area.bottom - area.top, "none", kFrame);
}

void Draw_power_label(SvgCanvas& canvas, double x, double y, int exponent, TextAnchor anchor) {
  const TextStyle style{.size = 10, .colour = "#333333", .anchor = anchor};
  if (exponent >= 0 && exponent <= 3) {
    canvas.text(x, y, std::to_string(static_cast<long>(std::pow(10, exponent))), style);
  } else {
    canvas.text_with_superscript(x, y, "10", std::to_string(exponent), style);
  }
}

// Ticks, grid lines and labels of one logarithmic axis.
void Draw_log_axis(SvgCanvas& canvas, const Area& area, int lo, int hi, bool horizontal) {
  const int label_every = hi - lo > 8 ? 2 : 1;
  for (int exponent = lo; exponent <= hi; ++exponent) {
    for (int factor = 1; factor <= 9; ++factor) {
      if (exponent == hi && factor > 1) break;
      const double position = exponent + std::log10(factor);
      const bool major = factor == 1;
      const double length = major ? 6 : 3;
      if (horizontal) {
        const double x = Scale(position, lo, hi, area.left, area.right);
        if (major) canvas.line(x, area.top, x, area.bottom, kGrid, 1);
        canvas.line(x, area.bottom, x, area.bottom + length, kFrame, 1);
        if (major && (exponent - lo) % label_every == 0) {
          Draw_power_label(canvas, x, area.bottom + 19, exponent, TextAnchor::kMiddle);
        }
      } else {
        const double y = Scale(position, lo, hi, area.bottom, area.top);
        if (major) canvas.line(area.left, y, area.right, y, kGrid, 1);
        canvas.line(area.left - length, y, area.left, y, kFrame, 1);
        if (major && (exponent - lo) % label_every == 0) {
          Draw_power_label(canvas, area.left - 9, y + 4, exponent, TextAnchor::kEnd);
        }
      }
    }
  }
}

std::string Tick_text(double value) {
  if (value == std::floor(value)) return std::to_string(static_cast<long long>(value));
  return Svg_number(value);
}

void Draw_points(SvgCanvas& canvas, const std::vector<std::pair<double, double>>& pixels,
                 const std::string& colour) {
  canvas.polyline(pixels, colour, 1.2);
  // Many points would merge into a thick band with full-size dots.
  const double radius = pixels.size() > 40 ? 1.8 : 3.2;
  for (const auto& [x, y] : pixels) canvas.circle(x, y, radius, colour);
}

}  // namespace

std::pair<int, int> Decades_covering(std::uint64_t smallest, std::uint64_t largest) {
  int lo = 0;
  for (std::uint64_t power = 10; power <= smallest && lo < 18; power *= 10) ++lo;
  int hi = 0;
  for (std::uint64_t power = 1; power < largest && hi < 19; power *= 10) ++hi;
  return {lo, std::max(hi, lo + 1)};
}

std::vector<double> Linear_ticks(double largest) {
  double step = 1;
  if (largest > 0) {
    const double magnitude = std::pow(10, std::floor(std::log10(largest / 6)));
    step = magnitude;
    for (const double factor : {1.0, 2.0, 5.0, 10.0}) {
      step = factor * magnitude;
      if (largest / step <= 6) break;
    }
    if (step < 1) step = 1;  // the plotted quantities are counts and sizes
  }
  std::vector<double> ticks{0};
  while (ticks.back() < largest) ticks.push_back(ticks.back() + step);
  if (ticks.size() == 1) ticks.push_back(step);
  return ticks;
}

void Draw_log_log_panel(SvgCanvas& canvas, const PanelBox& box, const LogLogPanel& panel) {
  const Area area = Plot_area(box);
  Draw_titles(canvas, box, area, panel.title, panel.x_label, panel.y_label);
  if (!panel.note.empty()) {
    canvas.text(box.x + box.width / 2, box.y + 32, panel.note,
                {.size = 10, .italic = true, .colour = "#555555", .anchor = TextAnchor::kMiddle});
  }
  Draw_log_axis(canvas, area, panel.x_lo, panel.x_hi, true);
  Draw_log_axis(canvas, area, panel.y_lo, panel.y_hi, false);
  Draw_frame(canvas, area);
  if (panel.points.empty()) {
    canvas.text((area.left + area.right) / 2, (area.top + area.bottom) / 2, panel.empty_text,
                {.size = 11, .italic = true, .colour = "#777777", .anchor = TextAnchor::kMiddle});
    return;
  }
  std::vector<std::pair<double, double>> pixels;
  for (const auto& [value, count] : panel.points) {
    const double x = Scale(std::log10(static_cast<double>(value)), panel.x_lo, panel.x_hi,
                           area.left, area.right);
    const double y = Scale(std::log10(static_cast<double>(count)), panel.y_lo, panel.y_hi,
                           area.bottom, area.top);
    pixels.emplace_back(x, y);
  }
  Draw_points(canvas, pixels, panel.colour);
}

void Draw_linear_panel(SvgCanvas& canvas, const PanelBox& box, const LinearPanel& panel) {
  const Area area = Plot_area(box);
  Draw_titles(canvas, box, area, panel.title, panel.x_label, panel.y_label);
  const double x_lo = panel.x_min - 0.5;
  const double x_hi = panel.x_max + 0.5;
  const double span = panel.x_max - panel.x_min;
  double x_step = 1;
  for (double magnitude = 1; span / x_step > 12; magnitude *= 10) {
    for (const double factor : {1.0, 2.0, 5.0}) {
      x_step = factor * magnitude;
      if (span / x_step <= 12) break;
    }
  }
  for (double k = std::ceil(panel.x_min / x_step) * x_step; k <= panel.x_max; k += x_step) {
    const double x = Scale(k, x_lo, x_hi, area.left, area.right);
    canvas.line(x, area.bottom, x, area.bottom + 6, kFrame, 1);
    canvas.text(x, area.bottom + 19, Tick_text(k),
                {.size = 10, .colour = "#333333", .anchor = TextAnchor::kMiddle});
  }
  double largest = 0;
  for (const auto& point : panel.points) largest = std::max(largest, point.second);
  const std::vector<double> ticks = Linear_ticks(largest);
  const double y_hi = ticks.back();
  for (const double tick : ticks) {
    const double y = Scale(tick, 0, y_hi, area.bottom, area.top);
    canvas.line(area.left, y, area.right, y, kGrid, 1);
    canvas.line(area.left - 6, y, area.left, y, kFrame, 1);
    canvas.text(area.left - 9, y + 4, Tick_text(tick),
                {.size = 10, .colour = "#333333", .anchor = TextAnchor::kEnd});
  }
  Draw_frame(canvas, area);
  std::vector<std::pair<double, double>> pixels;
  for (const auto& [k, value] : panel.points) {
    pixels.emplace_back(Scale(k, x_lo, x_hi, area.left, area.right),
                        Scale(value, 0, y_hi, area.bottom, area.top));
  }
  Draw_points(canvas, pixels, panel.colour);
}

}  // namespace kcp
