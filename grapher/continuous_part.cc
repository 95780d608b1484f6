#include "grapher/continuous_part.h"

#include <algorithm>
#include <cmath>
#include <map>

#include "base/fatal.h"
#include "base/value_format.h"
#include "grapher/continuous_plot.h"
#include "grapher/palette.h"
#include "grapher/y_division.h"

namespace grapher {

namespace {

Unit firstLineUnit(const ContinuousGroup& group) {
  return group.lines.empty() ? Unit() : group.lines[0].primary.unit;
}

// Takes the averages of the samples with at least one answer into [lo, hi].
void widenByAverages(const ContinuousSeries& series, double& lo, double& hi) {
  for (const auto& segment : series.segments) {
    for (const ContinuousSample& s : segment) {
      if (s.noResponse == 1.0) continue;
      if (s.avg < lo) lo = s.avg;
      if (s.avg > hi) hi = s.avg;
    }
  }
}

// The value of grid line i of n, counted from the top.
double gridValue(const PlotScale& s, int i, int n) { return s.max - (s.max - s.min) * i / n; }

}  // namespace

Graph::ContinuousPart::ContinuousPart(const GraphContext& context, const XAxisPart& xAxis,
                                      const std::deque<ContinuousGroup>& groups)
    : GraphPart(context), xAxis_(xAxis), groups_(groups) {
  const bool single = singleLine();
  std::vector<std::vector<YDivision>> candidates;
  for (const ContinuousGroup& group : groups) {
    AxisEntry axis{&group, kInfinity, -kInfinity, {}, 0};
    for (const ContinuousLine& line : group.lines) {
      legend_.push_back({&line.primary, line.name, static_cast<int>(axes_.size())});
      double lo = kInfinity;
      double hi = -kInfinity;
      if (single && graph_.showMinMax) {
        lo = std::min(line.primary.minimum, line.secondary.minimum);
        hi = std::max(line.primary.maximum, line.secondary.maximum);
      } else {
        widenByAverages(line.primary, lo, hi);
        widenByAverages(line.secondary, lo, hi);
      }
      // A fixed plot range overrides the data in both directions.
      if (std::isfinite(line.primary.plotMin)) lo = line.primary.plotMin;
      if (std::isfinite(line.primary.plotMax)) hi = line.primary.plotMax;
      axis.low = std::min(axis.low, lo);
      axis.high = std::max(axis.high, hi);
    }
    candidates.emplace_back();
    findDivisions(firstLineUnit(group).isBinary(), axis.low, axis.high, candidates.back());
    axes_.push_back(axis);
  }
  const CommonScale common = chooseCommonScale(candidates);
  divisions_ = common.divisions;
  subdivisions_ = common.subdivisions;
  for (size_t a = 0; a < axes_.size(); ++a) {
    AxisEntry& axis = axes_[a];
    axis.scale.min = common.perGroup[a].min;
    axis.scale.max = common.perGroup[a].max;
    const ValueFormatter format(axisUnitOf(a), axis.scale.min, axis.scale.max);
    size_t width = format.unitText().size();
    for (int i = 0; i <= divisions_; ++i) {
      width = std::max(width, format.text(gridValue(axis.scale, i, divisions_)).size());
    }
    axis.labelWidth = static_cast<int>(width);
  }
  const int h = context.charHeight;
  height_ = h / 2 + graphSize(graph_.size).continuousHeight;
  const int lines = static_cast<int>(legend_.size());
  if (lines >= 2 && graph_.showValueAxes) height_ += lines * h;
}

Unit Graph::ContinuousPart::axisUnitOf(size_t axis) const {
  return firstLineUnit(*axes_[axis].group);
}

bool Graph::ContinuousPart::singleLine() const {
  return groups_.size() == 1 && groups_[0].lines.size() == 1;
}

Margins Graph::ContinuousPart::margins() const {
  if (!graph_.showValueAxes || axes_.empty()) return {0, 0};
  const int w = context_.charWidth;
  Margins m{w * axes_[0].labelWidth + 6, 0};
  for (size_t a = 1; a < axes_.size(); ++a) {
    m.right += (axes_[a].labelWidth + 1) * w + 5;
  }
  return m;
}

int Graph::ContinuousPart::topRoom() const {
  const int h = context_.charHeight;
  const int lines = static_cast<int>(legend_.size());
  if (lines >= 2 && graph_.showValueAxes) return lines * h + (3 * h) / 2;
  if (graph_.showLegendValues) return (3 * h) / 2;
  if (graph_.showValueAxes) {
    return std::max((3 * h) / 2, h / 2 >= 7 ? h / 2 : 6);
  }
  return 0;
}

void Graph::ContinuousPart::draw(int y, Canvas& canvas) {
  const int top = topRoom();
  for (AxisEntry& axis : axes_) {
    axis.scale.top = y + top;
    axis.scale.height = height_ - top;
  }
  if (axes_.empty()) return;
  const PlotScale& s = axes_[0].scale;
  const int right = context_.width - right_ - 1;
  if (singleLine()) {
    drawThresholdBands(canvas);
    const ContinuousSeries& series = groups_[0].lines[0].primary;
    const PlotPlace place{xAxis_, s, canvas};
    if (graph_.showMinMax) drawMinMaxShade(place, series);
    if (graph_.showNoResponse) drawNoResponse(place, series);
  } else {
    const int bottom = s.top + s.height;
    canvas.fillPolygon({{left_, s.top}, {left_, bottom}, {right, bottom}, {right, s.top}},
                       kPlotArea);
  }
  drawGrid(canvas);
  drawAxes(canvas);
  drawLegend(y, canvas);
}

void Graph::ContinuousPart::drawThresholdBands(Canvas& canvas) const {
  const ContinuousSeries& series = groups_[0].lines[0].primary;
  const PlotScale& s = axes_[0].scale;
  // Each entry gives the colour from its value upward; bottomColour is the
  // colour below the lowest entry.
  std::map<double, int> bands;
  int bottomColour = kPlotArea;
  int* below = &bottomColour;
  if (std::isfinite(series.alertIfBelow)) {
    *below = kAlertBand;
    below = &bands[series.alertIfBelow];
  }
  if (std::isfinite(series.warnIfBelow)) {
    *below = kWarnBand;
    below = &bands[series.warnIfBelow];
  }
  *below = kPlotArea;
  if (std::isfinite(series.warnIfAbove)) bands[series.warnIfAbove] = kWarnBand;
  if (std::isfinite(series.alertIfAbove)) {
    bands[series.alertIfAbove] = kAlertBand;
  }
  const int right = context_.width - right_ - 1;
  const int plotBottom = s.top + s.height;
  int yc = s.top;
  for (auto it = bands.rbegin(); it != bands.rend(); ++it) {
    if (it->first > s.max) continue;
    const int yk = it->first < s.min ? plotBottom : s.yOf(it->first);
    TAVREL_ASSERT(yk >= s.top && yk <= plotBottom,
                  "Y out of range: " + std::to_string(yk) + ", " + std::to_string(s.max) + " > " +
                      std::to_string(it->first) + " > " + std::to_string(s.min));
    canvas.fillRectangle(left_, yc, right, yk - 1, it->second);
    yc = yk;
    if (yc >= plotBottom) break;
  }
  if (yc < plotBottom) {
    canvas.fillRectangle(left_, yc, right, plotBottom - 1, bottomColour);
  }
}

void Graph::ContinuousPart::drawGrid(Canvas& canvas) const {
  const PlotScale& s = axes_[0].scale;
  const int plotBottom = s.top + s.height;
  for (const AxisTick& tick : xAxis_.ticks()) {
    const int x = xAxis_.xPosition(tick.time);
    if (tick.labelled) {
      canvas.line(x, s.top, x, plotBottom, kGrid);
    } else {
      canvas.dashedLine(x, s.top, x, plotBottom, kGrid);
    }
  }
  const int right = context_.width - right_ - 1;
  const int n = divisions_;
  const int sub = subdivisions_;
  const int g = s.height - 1;
  for (int i = 0; i < n; ++i) {
    const int yy = s.top + (n / 2 + i * g) / n;
    canvas.line(left_, yy, right, yy, kGrid);
    if (sub > 1 && g / (sub * n) > 5) {
      for (int j = 1; j < sub; ++j) {
        const int ys = s.top + (sub * n / 2 + (sub * i + j) * g) / (sub * n);
        canvas.dashedLine(left_, ys, right, ys, kGrid);
      }
    }
  }
}

void Graph::ContinuousPart::drawAxes(Canvas& canvas) {
  const int w = context_.charWidth;
  int axisX = left_;
  int k = 0;  // Line number in the chart.
  for (size_t a = 0; a < axes_.size(); ++a) {
    AxisEntry& axis = axes_[a];
    if (a == 1) axisX = context_.width - right_;
    const int nextX = (axis.labelWidth + 1) * w + axisX + 5;
    axis.keyX = a == 0 ? 0 : axisX;
    axis.keyWidth = a == 0 ? left_ : nextX - axisX;
    if (graph_.showValueAxes) drawAxisLabels(a, axisX, canvas);
    const PlotPlace place{xAxis_, axis.scale, canvas};
    for (const ContinuousLine& line : axis.group->lines) {
      drawCurve(place, line.primary, lineColour(k), false);
      drawCurve(place, line.secondary, lineColour(k), true);
      ++k;
    }
    if (a >= 1) axisX = nextX;
  }
}

void Graph::ContinuousPart::drawAxisLabels(size_t a, int axisX, Canvas& canvas) const {
  const AxisEntry& axis = axes_[a];
  const PlotScale& s = axis.scale;
  const int h = context_.charHeight;
  const int w = context_.charWidth;
  const int plotBottom = s.top + s.height;
  const int ex = a == 0 ? axisX - 1 : axisX;
  const int t = s.top - 6;
  canvas.line(ex, t, ex, plotBottom + 2, kAxis);
  canvas.line(ex, t, ex - 2, s.top - 4, kAxis);
  canvas.line(ex, t, ex + 2, s.top - 4, kAxis);
  const ValueFormatter format(axisUnitOf(a), s.min, s.max);
  auto textX = [&](const std::string& text) {
    const int len = static_cast<int>(text.size());
    return a == 0 ? axisX - len * w - 5 : axisX + 4;
  };
  const int n = divisions_;
  const int g = s.height - 1;
  for (int i = 0; i <= n; ++i) {
    const int yy = i == n ? plotBottom : s.top + (n / 2 + i * g) / n;
    const std::string label = format.text(gridValue(s, i, n));
    const int len = static_cast<int>(label.size());
    if (a == 0) {
      canvas.line(axisX - 3, yy, axisX - 1, yy, kAxis);
    } else {
      canvas.line(axisX, yy, axisX + 2, yy, kAxis);
      if (i == n && a + 1 < axes_.size()) {
        canvas.line(len * w + axisX + 4, yy, (axis.labelWidth + 1) * w + axisX + 5, yy, kAxis);
      }
    }
    canvas.text(context_.font, textX(label), yy - h / 2, label, kText);
  }
  const std::string unit = format.unitText();
  canvas.text(context_.font, textX(unit), s.top - (3 * h) / 2, unit, kText);
}

}  // namespace grapher
