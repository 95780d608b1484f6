// The time axis shared by all plot parts of a chart: the choice of the time
// division from the period, the ticks on local calendar boundaries, the
// mapping of times to pixel columns, and the texts of times.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/zone.h"
#include "grapher/graph.h"

namespace grapher {

// The time division 0..6 of a period of `span` seconds (taken as signed 32
// bits) on a chart of `kind`: 0 ten minutes, 1 two hours, 2 days, 3 days
// labelled on Mondays, 4 days labelled on the first of a month, 5 and 6
// months.
int32_t timeDivision(int32_t kind, int64_t span);

extern const char* const kMonthNames[12];
extern const char* const kDayNames[7];

// The text of `time` in `zone`, by the graph's division and size: "HH:MM"
// (with ":SS" when `withSeconds`) in divisions 0 and 1, else "DD Mon" (with
// the clock time when `withSeconds`, seconds left out on small graphs) and a
// leading "0" turned into a blank. Raises what local() raises.
std::string timeLabel(const Graph& graph, int64_t time, zone_t zone, bool withSeconds);

struct AxisTick {
  int64_t time;
  bool labelled;
};

// The master time axis. Its ticks are made in setMargins.
class Graph::XAxisPart : public Graph::GraphPart {
 public:
  // `hasPartAbove`: continuous groups exist; `hasPartBelow`: enum groups.
  XAxisPart(const GraphContext& context, bool hasPartAbove, bool hasPartBelow);

  Margins margins() const override { return {0, 0}; }
  // Stores the margins and builds the ticks. Raises what the zone
  // conversions raise (error::ESystemError).
  void setMargins(int left, int right) override;
  int height() const override;
  void draw(int y, Canvas& canvas) override;

  // The pixel column of `time`: `left` at the start of the period, width -
  // right - 1 at its end; times outside are clamped to the ends. A period of
  // no length maps everything to `left`.
  int xPosition(int64_t time) const;
  const std::vector<AxisTick>& ticks() const { return ticks_; }

  // x0 and x1 of the axis line for margins left and right.
  int lineStart(int left) const { return left - 2 < 1 ? 0 : left - 2; }
  int lineEnd(int right) const { return context_.width - right - 1; }

 private:
  void buildTicks();

  bool showLabels_;
  bool hasPartAbove_;
  bool hasPartBelow_;
  std::vector<AxisTick> ticks_;  // In rising time.
};

// A thin strip that repeats the master's ticks between two lower parts.
class Graph::SlaveXAxisPart : public Graph::GraphPart {
 public:
  SlaveXAxisPart(const GraphContext& context, const XAxisPart& master)
      : GraphPart(context), master_(master) {}
  Margins margins() const override { return {0, 0}; }
  int height() const override { return 3; }
  void draw(int y, Canvas& canvas) override;

 private:
  const XAxisPart& master_;
};

}  // namespace grapher
