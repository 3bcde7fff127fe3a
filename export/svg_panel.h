// The two kinds of plot panel of the SVG export, drawn into a box of an SvgCanvas: a log-log
// panel for a distribution (positive values and counts; ticks at powers of ten, labelled 1, 10,
// 100, 1000, then 10 with a raised exponent; unlabelled ticks at 2..9 times them; an optional
// note under the title) and a linear panel for a quantity against k (integer ticks on x, ticks
// of 1, 2 or 5 times a power of ten on y, starting at 0). Points are dots joined by a thin line.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "export/svg_canvas.h"

namespace kcp {

struct PanelBox {
  double x = 0;
  double y = 0;
  double width = 0;
  double height = 0;
};

struct LogLogPanel {
  std::string title;
  std::string note;
  std::string x_label;
  std::string y_label;
  std::string colour;
  // Ascending values, each with a count; both at least 1.
  std::vector<std::pair<std::uint64_t, std::uint64_t>> points;
  // The axes run from 10^lo to 10^hi (lo < hi).
  int x_lo = 0;
  int x_hi = 1;
  int y_lo = 0;
  int y_hi = 1;
  std::string empty_text;  // written in the middle when there are no points
};

struct LinearPanel {
  std::string title;
  std::string x_label;
  std::string y_label;
  std::string colour;
  std::vector<std::pair<double, double>> points;  // ascending x; y at least 0
  double x_min = 0;
  double x_max = 1;
};

void Draw_log_log_panel(SvgCanvas& canvas, const PanelBox& box, const LogLogPanel& panel);
void Draw_linear_panel(SvgCanvas& canvas, const PanelBox& box, const LinearPanel& panel);

// The decades [lo, hi] with 10^lo <= smallest and 10^hi >= largest, hi > lo (1 <= smallest).
std::pair<int, int> Decades_covering(std::uint64_t smallest, std::uint64_t largest);

// Ticks 0, step, 2 step, ... up to the first at or above `largest`, the step being 1, 2 or 5
// times a power of ten chosen so that there are at most six steps.
std::vector<double> Linear_ticks(double largest);

}  // namespace kcp
