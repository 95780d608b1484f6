#include "grapher/x_axis.h"

#include <gtest/gtest.h>

#include "grapher/gd_canvas.h"
#include "grapher/palette.h"
#include "grapher/test_picture.h"

namespace grapher {
namespace {

using namespace grapher::testing;  // Pictures, sample series and times.

TEST(TimeDivision, SpansOfPlotAndTable) {
  EXPECT_EQ(0, timeDivision(kPlot, 43200));
  EXPECT_EQ(1, timeDivision(kPlot, 43201));
  EXPECT_EQ(1, timeDivision(kPlot, 259200));
  EXPECT_EQ(2, timeDivision(kPlot, 259201));
  EXPECT_EQ(0, timeDivision(kTabular, 7200));
  EXPECT_EQ(1, timeDivision(kTabular, 7201));
  EXPECT_EQ(1, timeDivision(kTabular, 172800));
  EXPECT_EQ(2, timeDivision(kTabular, 172801));
  EXPECT_EQ(2, timeDivision(kPlot, 1296000));
  EXPECT_EQ(3, timeDivision(kPlot, 1296001));
  EXPECT_EQ(4, timeDivision(kPlot, 4838401));
  EXPECT_EQ(5, timeDivision(kPlot, 9676801));
  EXPECT_EQ(6, timeDivision(kPlot, 23328001));
  // A span beyond 32 bits saturates instead of wrapping to a short one.
  EXPECT_EQ(6, timeDivision(kPlot, (int64_t{1} << 32) + 100));
  EXPECT_EQ(0, timeDivision(kPlot, -5));
}

// An axis of a medium plot with a part above, its margins set, in `zone`.
struct Axis {
  Axis(int64_t start, int64_t end, int left = 40, int right = 10, int32_t zone = 0)
      : graph(kPlot, start, end),
        context(graph, timeZoneValue(zone), factory),
        part(context, true, false) {
    part.setMargins(left, right);
  }
  // "HH:MM" or "DD Mon" of each tick, "*" behind the labelled ones.
  std::string ticks(int32_t zone = 0) const {
    std::string out;
    for (const AxisTick& t : part.ticks()) {
      if (!out.empty()) out += ",";
      out += timeLabel(graph, t.time, timeZoneValue(zone), false);
      if (t.labelled) out += "*";
    }
    return out;
  }
  GDCanvasFactory factory;
  Graph graph;
  Graph::GraphContext context;
  Graph::XAxisPart part;
};

TEST(XAxisTicks, TenMinutesFromTheFirstBoundaryAfterStart) {
  const int64_t start = kNewYear + 12 * kHour + 34 * 60 + 56;
  Axis a(start, start + kHour);
  EXPECT_EQ("12:40*,12:50*,13:00*,13:10*,13:20*,13:30*", a.ticks());
}

TEST(XAxisTicks, TickAtTheEndCounts) {
  Axis a(kNewYear, kNewYear + kHour);
  EXPECT_EQ(7u, a.part.ticks().size());
  EXPECT_EQ(kNewYear + kHour, a.part.ticks().back().time);
}

TEST(XAxisTicks, TwoHoursOnEvenHours) {
  Axis a(kNewYear + kHour, kNewYear + kDay);
  ASSERT_EQ(12u, a.part.ticks().size());
  EXPECT_EQ(kNewYear + 2 * kHour, a.part.ticks().front().time);
}

TEST(XAxisTicks, MondaysAndFirstsOfMonths) {
  // 20 days from Thursday 1 January: division 3, labelled on Mondays.
  Axis days(kNewYear, kNewYear + 20 * kDay);
  ASSERT_EQ(3, days.graph.division);
  EXPECT_EQ(21u, days.part.ticks().size());
  EXPECT_EQ(" 1 Jan, 2 Jan, 3 Jan, 4 Jan, 5 Jan*,", days.ticks().substr(0, 36));
  // 60 days: division 4, the first of a month labelled, Mondays not.
  Axis months(kNewYear, kNewYear + 60 * kDay);
  ASSERT_EQ(4, months.graph.division);
  EXPECT_EQ(
      " 1 Jan*, 5 Jan,12 Jan,19 Jan,26 Jan, 1 Feb*, 2 Feb, 9 Feb,16 Feb,"
      "23 Feb, 1 Mar*, 2 Mar",
      months.ticks());
}

TEST(XAxisTicks, MonthsStartAtTheFirstAfterStart) {
  const int64_t mid = kNewYear + 14 * kDay;  // 15 January
  Axis a(mid, mid + 200 * kDay);
  ASSERT_EQ(5, a.graph.division);
  EXPECT_EQ(" 1 Feb*, 1 Mar*, 1 Apr*, 1 May*, 1 Jun*, 1 Jul*, 1 Aug*", a.ticks());
}

TEST(XAxisTicks, LocalMidnightInTheChartsZone) {
  // Zone one hour east: local midnight is 23:00 GMT.
  Axis a(kNewYear, kNewYear + 4 * kDay, 40, 10, 3600);
  ASSERT_FALSE(a.part.ticks().empty());
  EXPECT_EQ(kNewYear + 23 * kHour, a.part.ticks().front().time);
}

TEST(XAxisPosition, EndsAndClamping) {
  Axis a(kNewYear, kNewYear + kDay, 40, 10);
  EXPECT_EQ(40, a.part.xPosition(kNewYear));
  EXPECT_EQ(589, a.part.xPosition(kNewYear + kDay));
  EXPECT_EQ(40, a.part.xPosition(kNewYear - kDay));
  EXPECT_EQ(589, a.part.xPosition(kNewYear + 5 * kDay));
  EXPECT_EQ(40 + 275, a.part.xPosition(kNewYear + kDay / 2));  // 274.5 + 0.5
  Axis empty(kNewYear, kNewYear);
  EXPECT_EQ(40, empty.part.xPosition(kNewYear + 10));
}

TEST(TimeLabel, FormsByDivisionAndSize) {
  const int64_t t = kNewYear + 59 * kDay + 13 * kHour + 5 * 60 + 9;  // 1 Mar
  Graph minutes(kPlot, t, t + kHour);
  EXPECT_EQ("13:05", timeLabel(minutes, t, timeZoneValue(0), false));
  EXPECT_EQ("13:05:09", timeLabel(minutes, t, timeZoneValue(0), true));
  Graph days(kPlot, t, t + 10 * kDay);
  EXPECT_EQ(" 1 Mar", timeLabel(days, t, timeZoneValue(0), false));
  EXPECT_EQ(" 1 Mar 13:05:09", timeLabel(days, t, timeZoneValue(0), true));
  days.size = kSmall;
  EXPECT_EQ(" 1 Mar 13:05", timeLabel(days, t, timeZoneValue(0), true));
  EXPECT_EQ("11 Mar", timeLabel(days, t + 10 * kDay, timeZoneValue(0), false));
}

TEST(XAxisPart, HeightByNeighbours) {
  Graph g(kPlot, kNewYear, kNewYear + kDay);
  GDCanvasFactory factory;
  Graph::GraphContext c(g, timeZoneValue(0), factory);
  EXPECT_EQ(21, Graph::XAxisPart(c, false, false).height());
  EXPECT_EQ(25, Graph::XAxisPart(c, true, false).height());
  EXPECT_EQ(29, Graph::XAxisPart(c, true, true).height());
  g.showTimeLabels = false;
  EXPECT_EQ(0, Graph::XAxisPart(c, false, false).height());
  EXPECT_EQ(1, Graph::XAxisPart(c, false, true).height());
}

TEST(XAxisPart, LabelsThatWouldOverrunTheEdgeAreDropped) {
  // One day in two-hour ticks with no margins: the last label, at the right
  // edge, has no room for its right half.
  Axis a(kNewYear, kNewYear + kDay, 0, 0);
  GDCanvas canvas(600, a.part.height());
  a.part.draw(0, canvas);
  testing::Picture p(canvas.pngBytes());
  EXPECT_EQ(600, p.countInRow(0, kAxis) + 0);  // the line of the part above
  // Tick marks: rows 1 and 2 at every drawn label; the first at x = 0 is
  // left out too (x - lastX must exceed 3 w).
  EXPECT_EQ(kAxis, p.at(a.part.xPosition(kNewYear + 2 * kHour), 2));
  EXPECT_EQ(kBackground, p.at(599, 2));
  EXPECT_EQ(kBackground, p.at(0, 2));
  EXPECT_EQ(11, p.countInRow(2, kAxis));
}

TEST(SlaveXAxisPart, RepeatsEveryTick) {
  Axis a(kNewYear, kNewYear + 20 * kDay);
  Graph::SlaveXAxisPart slave(a.context, a.part);
  slave.setMargins(40, 10);
  GDCanvas canvas(600, 3);
  slave.draw(0, canvas);
  testing::Picture p(canvas.pngBytes());
  EXPECT_EQ(21, p.countInRow(0, kAxis));  // labelled or not
  EXPECT_EQ(kAxis, p.at(38, 2));          // the line starts at left - 2
  EXPECT_EQ(kBackground, p.at(37, 2));
  EXPECT_EQ(kAxis, p.at(589, 2));
  EXPECT_EQ(kBackground, p.at(590, 2));
}

}  // namespace
}  // namespace grapher
