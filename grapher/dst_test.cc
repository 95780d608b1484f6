// Charts in a zone with daylight saving time. This program runs with TZ set
// to central European time (see CMakeLists.txt) and draws in the zone that
// the environment names.
#include <gtest/gtest.h>

#include <vector>

#include "grapher/gd_canvas.h"
#include "grapher/palette.h"
#include "grapher/tabular_part.h"
#include "grapher/test_picture.h"
#include "grapher/x_axis.h"

namespace grapher {
namespace {

using namespace grapher::testing;  // Pictures, sample series and times.

// 2026-03-27 00:00 CET; summer time starts on Sunday 29 March.
constexpr int64_t kMarch27 = kNewYear + 84 * kDay + 23 * kHour;
// 2026-10-20 00:00 CEST; summer time ends on Sunday 25 October.
constexpr int64_t kOctober20 = kNewYear + 291 * kDay + 22 * kHour;

zone_t zone() { return timeZoneValue(kEnvironmentZone); }

// The spacing of the ticks of a plot from `start` to `end`, in hours.
std::vector<int64_t> tickSpacing(int64_t start, int64_t end) {
  Graph g(kPlot, start, end);
  GDCanvasFactory factory;
  Graph::GraphContext c(g, zone(), factory);
  Graph::XAxisPart axis(c, true, false);
  axis.setMargins(0, 0);
  std::vector<int64_t> out;
  for (size_t i = 1; i < axis.ticks().size(); ++i) {
    out.push_back((axis.ticks()[i].time - axis.ticks()[i - 1].time) / kHour);
  }
  return out;
}

TEST(DaylightSaving, EnvironmentHasTheZone) {
  ASSERT_EQ("CET-1CEST,M3.5.0,M10.5.0/3", zoneText(zone()));
  EXPECT_EQ(0, local(kMarch27, zone()).hour);
}

TEST(DaylightSaving, MidnightTicksAre23And25HoursApart) {
  EXPECT_EQ((std::vector<int64_t>{24, 24, 23, 24}), tickSpacing(kMarch27, kMarch27 + 4 * kDay));
  EXPECT_EQ((std::vector<int64_t>{24, 24, 24, 24, 24, 25}),
            tickSpacing(kOctober20, kOctober20 + 7 * kDay));
}

TEST(DaylightSaving, TableDayColumnsFollowLocalMidnight) {
  Graph g(kTabular, kOctober20, kOctober20 + 10 * kDay);
  ASSERT_EQ(2, g.division);
  g.addUptimeLine({{kOctober20, kOctober20 + 10 * kDay}}, "");
  GDCanvasFactory factory;
  Graph::GraphContext c(g, zone(), factory);
  Graph::TabularUptimePart part(c, g.uptimeLines[0]);
  int64_t t = kOctober20;
  std::vector<int64_t> hours;
  for (int i = 0; i < 7; ++i) {
    const int64_t u = part.nextColumn(t);
    hours.push_back((u - t) / kHour);
    t = u;
  }
  EXPECT_EQ((std::vector<int64_t>{24, 24, 24, 24, 24, 25, 24}), hours);
}

TEST(DaylightSaving, TheLongDayFillsItsColumn) {
  // Ten days from 20 October: columns of 58.1 pixels from x = 18, 25 rows,
  // 301 / 90000 pixels a second. 24 October ends at row 17 + 289 = 306,
  // 25 October (25 hours) reaches the bottom of the table.
  Graph g(kTabular, kOctober20, kOctober20 + 10 * kDay);
  g.addUptimeLine({{kOctober20, kOctober20 + 10 * kDay}}, "");
  GDCanvasFactory factory;
  g.draw(factory, zone());
  Picture p(factory.getCanvas().pngBytes());
  EXPECT_EQ(kGreen, p.at(280, 300));
  EXPECT_EQ(kBackground, p.at(280, 310));
  EXPECT_EQ(kGreen, p.at(340, 310));
  EXPECT_EQ(kGreen, p.at(340, 316));
}

}  // namespace
}  // namespace grapher
