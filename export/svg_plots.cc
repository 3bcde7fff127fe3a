#include "export/svg_plots.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>

#include "core/result_layout.h"
#include "export/svg_canvas.h"
#include "export/svg_panel.h"

namespace kcp {

namespace {

constexpr double kMargin = 20;
constexpr double kPanelWidth = 300;
constexpr double kPanelHeight = 240;
constexpr double kHeaderHeight = 86;
constexpr double kRowHeading = 30;
constexpr double kPageWidth = 2 * kMargin + 4 * kPanelWidth;

struct DistributionPlot {
  const char* stem;
  const char* title;
  const char* x_label;
  const char* y_label;
  const char* zero_word;    // what a value of 0 means, for the note
  const char* counted_one;  // what the counts count, for the note: one, more
  const char* counted;
  const char* none_text;  // written in a panel whose distribution is empty
  const char* colour;
};

constexpr std::array<DistributionPlot, 4> kKinds{{
    {"size_distribution", "Community size", "size (nodes)", "communities", "size 0", "community",
     "communities", "no communities", "#1f77b4"},
    {"degree_distribution", "Community degree", "degree (overlapping communities)", "communities",
     "degree 0", "community", "communities", "no communities", "#d62728"},
    {"overlap_distribution", "Overlap size", "overlap (shared nodes)", "community pairs",
     "overlap 0", "pair", "pairs", "no overlapping pairs", "#2ca02c"},
    {"membership_distribution", "Node membership", "membership (communities per node)", "nodes",
     "in no community", "node", "nodes", "no nodes", "#9467bd"},
}};

// 12006 -> "12,006".
std::string Grouped(std::size_t n) {
  std::string digits = std::to_string(n);
  for (std::size_t at = digits.size(); at > 3; at -= 3) digits.insert(at - 3, ",");
  return digits;
}

// The distribution of all communities: the plain file, or the merged one of a run with
// approximate communities.
const DistributionTable* Table_of(const KResults& at_k, const std::string& stem) {
  for (const std::string& name : {stem, stem + std::string(layout::kMergedSuffix)}) {
    const auto found = at_k.distributions.find(name);
    if (found != at_k.distributions.end()) return &found->second;
  }
  return nullptr;
}

struct Ranges {
  std::uint64_t x_min = std::numeric_limits<std::uint64_t>::max();
  std::uint64_t x_max = 1;
  std::uint64_t y_max = 1;
};

Ranges Ranges_of(const RunResults& results, const DistributionPlot& kind) {
  Ranges ranges;
  for (const KResults& at_k : results.per_k) {
    const DistributionTable* table = Table_of(at_k, kind.stem);
    if (table == nullptr) continue;
    for (const auto& [value, count] : *table) {
      if (value == 0 || count == 0) continue;
      ranges.x_min = std::min<std::uint64_t>(ranges.x_min, value);
      ranges.x_max = std::max<std::uint64_t>(ranges.x_max, value);
      ranges.y_max = std::max<std::uint64_t>(ranges.y_max, count);
    }
  }
  if (ranges.x_min > ranges.x_max) ranges.x_min = 1;
  return ranges;
}

LogLogPanel Distribution_panel(const KResults& at_k, const DistributionPlot& kind,
                               const Ranges& ranges) {
  LogLogPanel panel;
  panel.title = kind.title;
  panel.x_label = kind.x_label;
  panel.y_label = kind.y_label;
  panel.colour = kind.colour;
  std::tie(panel.x_lo, panel.x_hi) = Decades_covering(ranges.x_min, ranges.x_max);
  std::tie(panel.y_lo, panel.y_hi) = Decades_covering(1, ranges.y_max);
  const DistributionTable* table = Table_of(at_k, kind.stem);
  if (table == nullptr) {
    panel.empty_text = "no distribution file";
    return panel;
  }
  if (at_k.communities.empty()) {
    panel.empty_text = "no communities";
  } else if (table->empty()) {
    panel.empty_text = kind.none_text;
  } else {
    panel.empty_text = "all values are 0";
  }
  for (const auto& [value, count] : *table) {
    if (value == 0) {
      panel.note = std::string(kind.zero_word) + ": " + Grouped(count) + " " +
                   (count == 1 ? kind.counted_one : kind.counted) + " (0 is off the log axis)";
    } else if (count > 0) {
      panel.points.emplace_back(value, count);
    }
  }
  return panel;
}

std::string Row_heading(const KResults& at_k) {
  std::size_t approximate = 0;
  for (const CommunityRecord& community : at_k.communities) approximate += community.approximate;
  std::string heading = "k = " + std::to_string(at_k.k) + ":  " + Grouped(at_k.communities.size()) +
                        (at_k.communities.size() == 1 ? " community" : " communities");
  if (approximate > 0) heading += " (" + Grouped(approximate) + " approximate)";
  return heading;
}

void Draw_summary(SvgCanvas& canvas, const RunResults& results, double top) {
  LinearPanel count;
  count.title = "Number of communities against k";
  count.x_label = "k";
  count.y_label = "communities";
  count.colour = "#333333";
  LinearPanel mean = count;
  mean.title = "Mean community size against k";
  mean.y_label = "mean size (nodes)";
  mean.colour = "#ff7f0e";
  count.x_min = mean.x_min = results.per_k.front().k;
  count.x_max = mean.x_max = results.per_k.back().k;
  for (const KResults& at_k : results.per_k) {
    count.points.emplace_back(at_k.k, static_cast<double>(at_k.communities.size()));
    if (at_k.communities.empty()) continue;
    double nodes = 0;
    for (const CommunityRecord& community : at_k.communities) nodes += community.nodes.size();
    mean.points.emplace_back(at_k.k, nodes / static_cast<double>(at_k.communities.size()));
  }
  Draw_linear_panel(canvas, {kMargin, top, 2 * kPanelWidth, kPanelHeight}, count);
  Draw_linear_panel(canvas, {kMargin + 2 * kPanelWidth, top, 2 * kPanelWidth, kPanelHeight}, mean);
}

std::string Run_description(const RunResults& results) {
  std::string text = results.directed ? "directed" : "undirected";
  if (results.flavour == "intensity") text += ", intensity";
  if (results.weighted) text += ", weighted";
  text += " run; ";
  if (results.per_k.empty()) return text + "no k";
  text += results.per_k.size() == 1 ? "k = " + std::to_string(results.per_k.front().k)
                                    : "k = " + std::to_string(results.per_k.front().k) + " to " +
                                          std::to_string(results.per_k.back().k);
  return text + "; " + Grouped(results.nodes.size()) + " nodes";
}

}  // namespace

void Write_svg_plots(const RunResults& results, const std::string& name, std::ostream& out) {
  const bool summary = results.per_k.size() > 1;
  const double rows_top = kHeaderHeight + (summary ? kPanelHeight + 10 : 0);
  const double row_height = kRowHeading + kPanelHeight + 10;
  const double height = rows_top + row_height * static_cast<double>(results.per_k.size()) + kMargin;

  SvgCanvas canvas(kPageWidth, height);
  canvas.title("k-clique communities of " + name);
  canvas.text(kMargin, 32, "k-clique communities of " + name, {.size = 18, .bold = true});
  canvas.text(kMargin, 54, Run_description(results), {.size = 12, .colour = "#444444"});
  canvas.text(kMargin, 72,
              "Distributions are on log-log axes; a value of 0 cannot be placed on them, "
              "so its count is written under the panel title.",
              {.size = 12, .colour = "#444444"});
  if (results.per_k.empty()) {
    canvas.text(kPageWidth / 2, kHeaderHeight + 40, "The results hold no k directories.",
                {.size = 14, .italic = true, .anchor = TextAnchor::kMiddle});
  }
  if (summary) Draw_summary(canvas, results, kHeaderHeight);

  std::array<Ranges, kKinds.size()> ranges;
  for (std::size_t i = 0; i < kKinds.size(); ++i) ranges[i] = Ranges_of(results, kKinds[i]);
  double top = rows_top;
  for (const KResults& at_k : results.per_k) {
    canvas.line(kMargin, top + 4, kPageWidth - kMargin, top + 4, "#bbbbbb", 1);
    canvas.text(kMargin, top + 23, Row_heading(at_k), {.size = 14, .bold = true});
    for (std::size_t i = 0; i < kKinds.size(); ++i) {
      const PanelBox box{kMargin + static_cast<double>(i) * kPanelWidth, top + kRowHeading,
                         kPanelWidth, kPanelHeight};
      Draw_log_log_panel(canvas, box, Distribution_panel(at_k, kKinds[i], ranges[i]));
    }
    top += row_height;
  }
  const std::string svg = canvas.finish();
  out.write(svg.data(), static_cast<std::streamsize>(svg.size()));
}

}  // namespace kcp
