// The numeric chart: lines over the period with value axes, grid and legend;
// a single line is drawn against the colours of its alarm thresholds, with
// optional minimum to maximum shading and no-response area. Groups of lines
// with different units share one grid, each group with its own axis.
#pragma once

#include <deque>
#include <string>
#include <vector>

#include "grapher/graph.h"
#include "grapher/plot_scale.h"
#include "grapher/x_axis.h"

namespace grapher {

class Graph::ContinuousPart : public Graph::GraphPart {
 public:
  // One value axis per group.
  struct AxisEntry {
    const ContinuousGroup* group;
    double low;  // The data range.
    double high;
    PlotScale scale;  // The chosen min..max; rows are set by draw().
    int labelWidth;   // In characters.
    int keyX = 0;
    int keyWidth = 0;
  };

  // One legend row per line.
  struct LegendEntry {
    const ContinuousSeries* series;  // The line's primary series.
    std::string name;
    int axis;
  };

  // Does all range and scale work, so that margins() and height() can
  // answer before any drawing. Raises error::EFatal "Could not find common
  // y-axis division". `xAxis` and `groups` must outlive the part.
  ContinuousPart(const GraphContext& context, const XAxisPart& xAxis,
                 const std::deque<ContinuousGroup>& groups);

  Margins margins() const override;
  int height() const override { return height_; }
  void draw(int y, Canvas& canvas) override;

  const std::vector<AxisEntry>& axes() const { return axes_; }
  int divisions() const { return divisions_; }
  int subdivisions() const { return subdivisions_; }

 private:
  bool singleLine() const;
  // The unit of an axis: that of its group's first line.
  Unit axisUnitOf(size_t axis) const;
  // Rows above the plot for the legend and the unit texts.
  int topRoom() const;
  void drawThresholdBands(Canvas& canvas) const;
  void drawGrid(Canvas& canvas) const;
  void drawAxes(Canvas& canvas);
  void drawAxisLabels(size_t a, int axisX, Canvas& canvas) const;
  void drawLegend(int y, Canvas& canvas) const;
  void drawLegendTexts(const LegendEntry& entry, int yl, Canvas& canvas) const;

  const XAxisPart& xAxis_;
  const std::deque<ContinuousGroup>& groups_;
  std::vector<AxisEntry> axes_;
  std::vector<LegendEntry> legend_;
  int divisions_ = 0;
  int subdivisions_ = 0;
  int height_ = 0;
};

}  // namespace grapher
