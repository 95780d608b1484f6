#include <gtest/gtest.h>

#include "grapher/palette.h"
#include "grapher/tabular_part.h"
#include "grapher/test_picture.h"

namespace grapher {
namespace {

using namespace grapher::testing;  // Pictures, sample series and times.

Picture uptimeTable(int64_t start, int64_t end, const std::vector<UptimeInterval>& runs,
                    int32_t size = kMedium) {
  Graph g(kTabular, start, end);
  g.size = size;
  g.addUptimeLine(runs, "");
  return drawn(g);
}

TEST(TabularPart, HeightPerSize) {
  const UptimeInterval run{kNewYear, kNewYear + kHour};
  Picture medium = uptimeTable(kNewYear, kNewYear + kDay, {run});
  EXPECT_EQ(600, medium.width());
  EXPECT_EQ(301 + 13 + 4, medium.height());
  EXPECT_EQ(80 + 8 + 4, uptimeTable(kNewYear, kNewYear + kDay, {run}, kSmall).height());
  EXPECT_EQ(400 + 13 + 4, uptimeTable(kNewYear, kNewYear + kDay, {run}, kLarge).height());
}

TEST(TabularPart, NoCellsSaysSo) {
  Graph g(kTabular, kNewYear, kNewYear + kDay);
  g.addEnumGroup().addLine({}, {}, "");
  Picture p = drawn(g);
  ASSERT_EQ(318, p.height());
  // "No data available for this interval." (36 characters) centred at
  // x = 300 - 18 x 6, y = 159 - 6; nothing else is painted.
  EXPECT_GT(p.countIn(192, 153, 192 + 36 * 6 - 1, 165, kText), 50);
  EXPECT_EQ(p.countIn(0, 0, 599, 317, kText), p.countIn(192, 153, 192 + 36 * 6 - 1, 165, kText));
  EXPECT_EQ(0, p.countIn(0, 0, 599, 317, kPlotArea));
  EXPECT_EQ(0, p.countIn(0, 0, 599, 317, kGrid));
}

TEST(TabularPart, TwoDaysAreHourColumnsOfMinuteRows) {
  // Division 1: 48 columns of (600 - 18 - 1) / 48 pixels from x = 18, rows
  // of (301 - 1) / 60 = 5 pixels from row 17; every 5th row line in colour 5.
  const int64_t a = kNewYear + kHour;
  Picture p = uptimeTable(kNewYear, kNewYear + 2 * kDay, {{a, a + 2 * kHour}});
  EXPECT_GT(p.countIn(0, 0, 17, 16, kText), 5);  // "h", "\", "m"
  EXPECT_EQ(kPlotArea, p.at(300, 5) == kText ? kPlotArea : p.at(300, 5));
  EXPECT_EQ(kGrid, p.at(30, 100));      // right edge of column 1
  EXPECT_EQ(kAxis, p.at(25, 17 + 25));  // row line 5: labelled
  EXPECT_EQ(kGrid, p.at(25, 17 + 5));   // row line 1
  // The run fills columns 2 and 3 (hours 01 and 02) from top to bottom.
  EXPECT_EQ(kGreen, p.at(36, 20));
  EXPECT_EQ(kGreen, p.at(48, 300));
  EXPECT_EQ(kBackground, p.at(24, 20));
  EXPECT_EQ(kBackground, p.at(60, 20));
  // Row numbers beside the first column only: 05 at row 17 + 25 - 6.
  EXPECT_GT(p.countIn(0, 36, 17, 48, kText), 5);
}

TEST(TabularPart, UptimeRunsEndInATwoPixelMark) {
  // 01:00-01:30 up, down until 03:00, up until 04:00. The first run ends in
  // column 1 at row 17 + 1800 x 301 / 3600 = 167.5.
  const int64_t a = kNewYear + kHour;
  Picture p =
      uptimeTable(kNewYear, kNewYear + 2 * kDay, {{a, a + 1800}, {a + 2 * kHour, a + 3 * kHour}});
  EXPECT_EQ(kGreen, p.at(36, 160));
  EXPECT_EQ(kRed, p.at(36, 165));  // the mark, rows 165 .. 167
  EXPECT_EQ(kRed, p.at(36, 166));
  EXPECT_EQ(kRed, p.at(36, 200));  // the gap
  EXPECT_EQ(kRed, p.at(48, 100));
  EXPECT_EQ(kGreen, p.at(60, 100));
}

TEST(TabularPart, EnumCellsTakeTheirWorstClass) {
  EnumSeries s;
  s.classes = {{0, 0}, {1, 1}, {2, 2}};
  s.segments.push_back({{kNewYear + kHour, 1, 0},
                        {kNewYear + 2 * kHour, 1, 0},
                        {kNewYear + 3 * kHour, 2, 0},
                        {kNewYear + 4 * kHour, 5, 0},
                        {kNewYear + 5 * kHour, 8, 0},
                        {kNewYear + 6 * kHour, 8, 0}});
  Graph g(kTabular, kNewYear, kNewYear + 2 * kDay);
  g.addEnumGroup().addLine(s, {}, "");
  Picture p = drawn(g);
  EXPECT_EQ(kGreen, p.at(36, 100));       // hour 01: states 0
  EXPECT_EQ(kYellow, p.at(48, 100));      // hour 02: 0 and 1
  EXPECT_EQ(kRed, p.at(60, 100));         // hour 03: 1, 0 and 2
  EXPECT_EQ(kRed, p.at(72, 100));         // hour 04: 0, 2 and 3
  EXPECT_EQ(kBackground, p.at(84, 100));  // hour 05: state 3 has no class
  EXPECT_EQ(0, p.countIn(0, 0, 599, 317, kRed) - p.countIn(54, 17, 78, 317, kRed));  // no marks
}

TEST(TabularPart, ShortMonthsEndTheirColumnEarly) {
  // February to April: month columns of 31 days; February's ends at row
  // 17 + 28 x 301 / 31 = 288.
  const int64_t feb = kNewYear + 31 * kDay;
  const int64_t may = feb + 89 * kDay;
  Picture p = uptimeTable(feb, may, {{feb, may}});
  EXPECT_EQ(kGrid, p.at(18, 280));
  EXPECT_EQ(kBackground, p.at(18, 295));
  EXPECT_EQ(kGreen, p.at(40, 285));
  EXPECT_EQ(kBackground, p.at(40, 295));
}

}  // namespace
}  // namespace grapher
