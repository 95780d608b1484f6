#include <gtest/gtest.h>

#include <cmath>

#include "grapher/enum_part.h"
#include "grapher/palette.h"
#include "grapher/test_picture.h"
#include "grapher/uptime_part.h"

namespace grapher {
namespace {

using namespace grapher::testing;  // Pictures, sample series and times.

// Enum charts of one day: the axis (21 + 4 rows) on top, then the first row
// of bars: upper bar rows 27..49, lower bar rows 52..62. The name column of
// "service" makes the left margin 7 x 6 + 3 = 45.
constexpr int kUpperTop = 27;
constexpr int kLowerTop = 52;
constexpr int kEnumLeft = 45;

int enumColumn(int64_t t) {
  return kEnumLeft + static_cast<int>(std::lround((t - kNewYear) / double(kDay) * 554));
}

EnumSeries states(const std::vector<std::pair<int64_t, uint32_t>>& samples) {
  EnumSeries s;
  s.labels = {{0, "ok"}, {1, "slow"}, {2, "down"}};
  s.classes = {{0, 0}, {1, 1}, {2, 2}};
  s.segments.emplace_back();
  for (const auto& [time, mask] : samples) {
    s.segments.back().push_back({time, mask, 0});
  }
  return s;
}

Picture enumChart(const std::vector<EnumSeries>& lines) {
  Graph g(kPlot, kNewYear, kNewYear + kDay);
  EnumGroup& group = g.addEnumGroup();
  for (const EnumSeries& s : lines) group.addLine(s, {}, "service");
  return drawn(g);
}

// The colours down one column of the upper bar, as runs "colour x rows".
std::string upperBar(const Picture& p, int x) {
  std::string out;
  int run = 0;
  for (int y = kUpperTop; y < kUpperTop + 23; ++y) {
    if (y + 1 < kUpperTop + 23 && p.at(x, y) == p.at(x, y + 1)) {
      ++run;
      continue;
    }
    out += (out.empty() ? "" : " ") + std::to_string(p.at(x, y)) + "x" + std::to_string(run + 1);
    run = 0;
  }
  return out;
}

TEST(EnumPart, HeightAndRows) {
  Picture p = enumChart({states({{kNewYear + kHour, 1}})});
  // Axis 25, one row of 40, one legend row of 16 and 6.
  EXPECT_EQ(25 + 40 + 16 + 6, p.height());
  Picture two = enumChart({states({}), states({})});
  EXPECT_EQ(25 + 80 + 16 + 6, two.height());
}

TEST(EnumPart, ThreeStatesCutTheBarSevenEightEight) {
  const int64_t a = kNewYear + 3 * kHour + 1200;  // off the grid lines
  Picture p = enumChart({states({{a, 1}, {a + 2 * kHour, 6}})});
  const int x = enumColumn(a + kHour);
  EXPECT_EQ("22x7 23x8 24x8", upperBar(p, x));
  // The lower bar: green, yellow and red classes in rising colour order.
  EXPECT_EQ(kRed, p.at(x, kLowerTop));
  EXPECT_EQ(kGreen, p.at(x, kLowerTop + 10));
}

TEST(EnumPart, UnknownLeavesAHoleAndMaskZeroPaintsNothing) {
  const int64_t a = kNewYear + 3 * kHour + 1200;  // off the grid lines
  EnumSeries s = states({{a, 1}, {a + kHour, 1}, {a + 2 * kHour, 1}, {a + 3 * kHour, 1}});
  s.segments[0][2].unknown = 1.0;
  s.segments.push_back({{a + 5 * kHour, 0, 0}, {a + 6 * kHour, 0, 0}});
  Picture p = enumChart({s});
  EXPECT_EQ("22x23", upperBar(p, enumColumn(a + kHour / 2)));
  EXPECT_EQ("0x23", upperBar(p, enumColumn(a + kHour + kHour / 2)));
  EXPECT_EQ("0x23", upperBar(p, enumColumn(a + 2 * kHour + kHour / 2)));
  // After the hole the next sample starts a bar one pixel wide.
  EXPECT_EQ("22x23", upperBar(p, enumColumn(a + 3 * kHour)));
  EXPECT_EQ("0x23", upperBar(p, enumColumn(a + 3 * kHour) + 1));
  // Between two samples of mask 0: nothing, above and below.
  EXPECT_EQ("0x23", upperBar(p, enumColumn(a + 5 * kHour + kHour / 2)));
  EXPECT_EQ(kBackground, p.at(enumColumn(a + 5 * kHour + kHour / 2), kLowerTop));
}

TEST(EnumPart, UnnamedStateGetsTheNextColourButNoLegendEntry) {
  const int64_t a = kNewYear + 3 * kHour + 1200;              // off the grid lines
  Picture p = enumChart({states({{a, 8}, {a + kHour, 8}})});  // state 3
  EXPECT_EQ("25x23", upperBar(p, enumColumn(a + kHour / 2)));
  // Its class is unknown: red.
  EXPECT_EQ(kRed, p.at(enumColumn(a + kHour / 2), kLowerTop + 5));
  const int legendTop = 25 + 40;
  EXPECT_EQ(0, p.countIn(0, legendTop, 599, p.height() - 1, 25));
  EXPECT_GT(p.countIn(0, legendTop, 599, p.height() - 1, 22), 0);
}

TEST(EnumPart, LegendBoxesLoseTheClassStripeWhenClassesDiffer) {
  EnumSeries other = states({});
  other.classes[1] = 2;
  const int legendTop = 25 + 80;
  Picture common = enumChart({states({}), states({})});
  Picture mixed = enumChart({states({}), other});
  // The first box: the frame from x + 1, the state colour inside, and in the
  // common case the class colour in rows b - 5 .. b - 3 (16 - 5 = 11).
  const int x = kEnumLeft + 3;
  EXPECT_EQ(kAxis, common.at(x + 1, legendTop + 1));
  EXPECT_EQ(22, common.at(x + 5, legendTop + 5));
  EXPECT_EQ(kGreen, common.at(x + 5, legendTop + 12));
  EXPECT_EQ(22, mixed.at(x + 5, legendTop + 12));
}

// Uptime bars of one day without other parts: the axis (21), its strip (3),
// then 27 rows per line; a name of one character makes the margin 6 + 3.
int uptimeColumn(int64_t t) {
  return 9 + static_cast<int>(std::lround((t - kNewYear) / double(kDay) * 590));
}

TEST(UptimePart, GapsAreRedAndTouchingRunsShiftByOnePixel) {
  Graph g(kPlot, kNewYear, kNewYear + kDay);
  const int64_t a = kNewYear + 4 * kHour + 1200;  // off the grid lines
  const int64_t b = kNewYear + 8 * kHour + 1200;
  g.addUptimeLine({{a, b}, {b + 2 * kHour, b + 4 * kHour}}, "x");
  g.addUptimeLine({{a, b}, {b, b + kHour}}, "y");
  Picture p = drawn(g);
  ASSERT_EQ(21 + 3 + 54, p.height());
  const int row1 = 24 + 10;
  const int row2 = 24 + 27 + 10;
  EXPECT_EQ(kBackground, p.at(uptimeColumn(a) - 1, row1));
  EXPECT_EQ(kGreen, p.at(uptimeColumn(a), row1));
  EXPECT_EQ(kGreen, p.at(uptimeColumn(b) - 1, row1));
  EXPECT_EQ(kRed, p.at(uptimeColumn(b), row1));  // from the pixel after
  EXPECT_EQ(kRed, p.at(uptimeColumn(b + 2 * kHour) - 1, row1));
  EXPECT_EQ(kGreen, p.at(uptimeColumn(b + 2 * kHour), row1));
  EXPECT_EQ(kBackground, p.at(uptimeColumn(b + 4 * kHour) + 1, row1));
  // Touching runs: the second bar begins one pixel to the right.
  EXPECT_EQ(kRed, p.at(uptimeColumn(b), row2));
  EXPECT_EQ(kGreen, p.at(uptimeColumn(b) + 1, row2));
}

TEST(OldStyleUptimePart, OneRunReachesTheRightMargin) {
  Graph g(kPlot, kNewYear, kNewYear + kDay);
  g.addUptimeLine({{kNewYear + kHour, kNewYear + 5 * kHour}}, "");
  Picture p = drawn(g);
  // Header 13 + 2, one row of 13 + 2 x 3 + 2.
  ASSERT_EQ(15 + 21, p.height());
  // Left column "Boot time" or the 8-character time: (9 + 1) x 6; right
  // column empty: 6. The bar runs from 60 to 600 - 6 - 1.
  EXPECT_EQ(kGreen, p.at(60, 16));
  EXPECT_EQ(kGreen, p.at(593, 16));
  EXPECT_EQ(kBackground, p.at(594, 16));
  EXPECT_EQ(kBackground, p.at(59, 16));
  EXPECT_EQ(kGreen, p.at(593, 15 + 19));  // rows r .. r + rowHeight - 2
}

TEST(OldStyleUptimePart, BarsInProportionAndEmptyRuns) {
  Graph g(kPlot, kNewYear, kNewYear + kDay);
  g.addUptimeLine({{kNewYear, kNewYear + 4 * kHour},
                   {kNewYear + 5 * kHour, kNewYear + 7 * kHour},
                   {kNewYear + 8 * kHour, kNewYear + 8 * kHour}},
                  "");
  Picture p = drawn(g);
  ASSERT_EQ(15 + 3 * 21, p.height());
  // Margins: left 60, right (8 + 1) x 6 = 54; full bar 486 pixels.
  EXPECT_EQ(486, p.countIn(0, 16, 599, 16, kGreen));
  EXPECT_EQ(243, p.countIn(0, 37, 599, 37, kGreen));
  EXPECT_EQ(0, p.countIn(0, 58, 599, 58, kGreen));
}

}  // namespace
}  // namespace grapher
