// Uptime charts: UptimePart draws one bar per line on the time scale, green
// where the machine ran and red between two runs; OldStyleUptimePart is the
// table of a chart that has a single uptime line and nothing else: one row
// per boot with its time, a bar as long as the run and the run's length.
#pragma once

#include <vector>

#include "grapher/graph.h"
#include "grapher/x_axis.h"

namespace grapher {

class Graph::UptimePart : public Graph::GraphPart {
 public:
  // `xAxis` and `lines` must outlive the part.
  UptimePart(const GraphContext& context, const XAxisPart& xAxis,
             const std::vector<UptimeLine>& lines)
      : GraphPart(context), xAxis_(xAxis), lines_(lines) {}

  Margins margins() const override;
  int height() const override { return 27 * static_cast<int>(lines_.size()); }
  // Green bars, then the grid, then names and red bars: the grid lies over
  // the green and under the red.
  void draw(int y, Canvas& canvas) override;

 private:
  void drawPass(const UptimeLine& line, int r, bool second, Canvas& canvas);

  const XAxisPart& xAxis_;
  const std::vector<UptimeLine>& lines_;
};

class Graph::OldStyleUptimePart : public Graph::GraphPart {
 public:
  // `line` must outlive the part. Raises what timeLabel raises.
  OldStyleUptimePart(const GraphContext& context, const UptimeLine& line);

  Margins margins() const override;
  int height() const override;
  void draw(int y, Canvas& canvas) override;

 private:
  const UptimeLine& line_;
  int headerHeight_;
  int rowPad_;
  int rowHeight_;
};

}  // namespace grapher
