#include <gtest/gtest.h>

#include <cmath>

#include "grapher/continuous_part.h"
#include "grapher/gd_canvas.h"
#include "grapher/palette.h"
#include "grapher/test_picture.h"

namespace grapher {
namespace {

using namespace grapher::testing;  // Pictures, sample series and times.

// A medium plot of one day with one line on a fixed 0..100 scale: labels
// "100" to "0" make the left margin 3 x 6 + 6 = 24, the plot has rows 19 to
// 125 (the legend takes 19 rows), and the value v stands on row
// 19 + (100 - v) x 106 / 100, rounded. Grid lines stand on rows 19, 40,
// 61, 83 and 104, dashed ones on 30, 51, 72, 93 and 114.
constexpr int kLeft = 24;
constexpr int kPlotTop = 19;
constexpr int kPlotBottomRow = 125;

int column(int64_t t) {  // of a time within the day, in that picture
  return kLeft + static_cast<int>(std::lround((t - kNewYear) / double(kDay) * 575));
}

ContinuousSeries hourly(const std::vector<double>& values) {
  std::vector<std::pair<int64_t, double>> points;
  for (size_t i = 0; i < values.size(); ++i) {
    points.push_back({kNewYear + kHour / 2 + int64_t(i) * kHour, values[i]});
  }
  ContinuousSeries s = series(points);
  s.plotMin = 0;
  s.plotMax = 100;
  return s;
}

Picture single(const ContinuousSeries& s, bool minMax = false, bool noResponse = false) {
  Graph g(kPlot, kNewYear, kNewYear + kDay);
  g.setShowMinMax(minMax);
  g.setShowNoResponse(noResponse);
  g.addContinuousGroup().addLine(s, {}, "");
  return drawn(g);
}

// Pixels of line colour 0 in rows y1..y2 of the plot's width.
int curvePixels(const Picture& p, int y1, int y2) {
  return p.countIn(kLeft, y1, 599, y2, lineColour(0));
}

TEST(ContinuousPart, UsualChartGeometry) {
  Picture p = single(hourly({10, 50, 90}));
  ASSERT_EQ(600, p.width());
  ASSERT_EQ(151, p.height());
  // Plot area from the left margin to the right edge, rows 19 to 125.
  EXPECT_EQ(kPlotArea, p.at(kLeft + 3, 35));
  EXPECT_EQ(kPlotArea, p.at(598, 35));  // 599: the grid line of 24:00
  EXPECT_EQ(kBackground, p.at(kLeft - 3, 35));
  EXPECT_EQ(kPlotArea, p.at(kLeft + 3, kPlotBottomRow));
  EXPECT_NE(kPlotArea, p.at(kLeft + 3, kPlotTop - 1));
  // The value axis one column left of the plot, with its arrow head.
  EXPECT_EQ(kAxis, p.at(kLeft - 1, 60));
  EXPECT_EQ(kAxis, p.at(kLeft - 1, kPlotTop - 6));
  // The time axis line right under the plot.
  EXPECT_EQ(151 - 25, 126);
  EXPECT_EQ(kAxis, p.at(300, 126));
  // Horizontal grid lines at 19 + (2 + 106 i) / 5.
  for (int row : {19, 40, 61, 83, 104}) {
    EXPECT_GT(p.countInRow(row, kGrid), 400) << row;
  }
  EXPECT_LT(p.countInRow(50, kGrid), 20);
}

TEST(ContinuousPart, CurveJoinsSamplesAndRingsTheEnds) {
  Picture p = single(hourly({50, 50, 50}));
  const int row = 19 + 53;  // 50 on the scale
  EXPECT_EQ(lineColour(0), p.at(column(kNewYear + kHour), row));
  // A ring of diameter 4 around each end, hollow in the middle.
  const int x0 = column(kNewYear + kHour / 2);
  EXPECT_EQ(lineColour(0), p.at(x0 - 2, row));
  EXPECT_EQ(lineColour(0), p.at(x0, row - 2));
  EXPECT_EQ(0, curvePixels(p, kPlotTop, row - 3));
  EXPECT_EQ(0, curvePixels(p, row + 3, kPlotBottomRow));
}

TEST(ContinuousPart, OneSampleIsARingAlone) {
  Picture p = single(hourly({50}));
  const int x = column(kNewYear + kHour / 2);
  const int row = 19 + 53;
  const int all = curvePixels(p, 0, 150);
  EXPECT_GT(all, 4);
  EXPECT_EQ(all, p.countIn(x - 2, row - 2, x + 2, row + 2, lineColour(0)));
}

TEST(ContinuousPart, ThresholdBandsInTheirRows) {
  ContinuousSeries s = hourly({50});
  s.warnIfAbove = 60;   // row 61
  s.alertIfAbove = 80;  // row 40
  Picture p = single(s);
  EXPECT_GT(p.countInRow(35, kAlertBand), 500);
  EXPECT_GT(p.countInRow(39, kAlertBand), 500);
  EXPECT_GT(p.countInRow(41, kWarnBand), 500);
  EXPECT_GT(p.countInRow(60, kWarnBand), 500);
  EXPECT_GT(p.countInRow(62, kPlotArea), 500);
  EXPECT_GT(p.countInRow(kPlotBottomRow, kPlotArea), 500);
  EXPECT_EQ(0, p.countIn(0, 0, 599, kPlotTop - 1, kAlertBand));
  EXPECT_EQ(0, p.countIn(0, 126, 599, 150, kPlotArea));
}

TEST(ContinuousPart, AlertBelowWithoutWarnBelow) {
  ContinuousSeries s = hourly({50});
  s.alertIfBelow = 20;  // row 104
  Picture p = single(s);
  EXPECT_GT(p.countInRow(105, kAlertBand), 500);
  EXPECT_GT(p.countInRow(kPlotBottomRow, kAlertBand), 500);
  EXPECT_GT(p.countInRow(100, kPlotArea), 500);
  EXPECT_EQ(0, p.countIn(0, 0, 599, 150, kWarnBand));
}

TEST(ContinuousPart, ThresholdsOutsideTheScale) {
  ContinuousSeries above = hourly({50});
  above.alertIfAbove = 150;  // above the top: ignored
  Picture p = single(above);
  EXPECT_EQ(0, p.countIn(0, 0, 599, 150, kAlertBand));
  ContinuousSeries below = hourly({50});
  below.warnIfAbove = -10;  // below the bottom: its band fills the plot
  Picture q = single(below);
  EXPECT_GT(q.countInRow(35, kWarnBand), 500);
  EXPECT_GT(q.countInRow(kPlotBottomRow, kWarnBand), 500);
  EXPECT_EQ(0, q.countIn(kLeft, kPlotTop, 599, kPlotBottomRow, kPlotArea));
}

TEST(ContinuousPart, PlotMaxBelowTheDataClipsAtTheTopRow) {
  ContinuousSeries s = hourly({10, 100, 10});
  s.plotMax = 50;
  Picture p = single(s);
  EXPECT_GT(p.countInRow(kPlotTop, lineColour(0)), 0);
  EXPECT_EQ(0, curvePixels(p, 0, kPlotTop - 1));
  // No ring at the sample above the scale.
  const int x = column(kNewYear + kHour + kHour / 2);
  EXPECT_EQ(0, p.countIn(x - 1, kPlotTop + 1, x + 1, kPlotTop + 3, lineColour(0)));
}

TEST(ContinuousPart, NegativeValuesAreClippedToTheBottomRow) {
  ContinuousSeries s =
      series({{kNewYear + kHour, -5}, {kNewYear + 2 * kHour, -10}, {kNewYear + 3 * kHour, -3}});
  Graph g(kPlot, kNewYear, kNewYear + kDay);
  g.addContinuousGroup().addLine(s, {}, "");
  Picture p = drawn(g);
  ASSERT_EQ(151, p.height());
  const int bottom = 125;
  // Drawn as 0: a flat line on the bottom row, rings reaching 2 rows up.
  EXPECT_GT(p.countInRow(bottom, lineColour(0)), 20);
  EXPECT_EQ(0, p.countIn(0, 0, 599, bottom - 3, lineColour(0)));
}

TEST(ContinuousPart, NoSamplesGiveTheFixedScale) {
  Graph g(kPlot, kNewYear, kNewYear + kDay);
  g.addContinuousGroup().addLine(ContinuousSeries{}, {}, "");
  GDCanvasFactory factory;
  Graph::GraphContext c(g, timeZoneValue(0), factory);
  Graph::XAxisPart axis(c, true, false);
  Graph::ContinuousPart part(c, axis, g.continuousGroups);
  EXPECT_EQ(6, part.divisions());
  EXPECT_EQ(0, part.axes()[0].scale.min);
  EXPECT_EQ(6, part.axes()[0].scale.max);
  Picture p = drawn(g);
  EXPECT_EQ(0, p.countIn(0, 0, 599, 150, lineColour(0)));
}

TEST(ContinuousPart, AllWithoutAnswerIsOneNoResponseArea) {
  ContinuousSeries s = hourly({50, 50, 50, 50});
  for (ContinuousSample& x : s.segments[0]) x.noResponse = 1.0;
  Picture p = single(s, false, true);
  const int x = column(kNewYear + 2 * kHour + 600);
  EXPECT_GT(p.countIn(x, kPlotTop, x, kPlotBottomRow, kNoResponse), 95);
  EXPECT_EQ(0, curvePixels(p, 0, 150));
  // Left of the first sample, nothing hangs from the top.
  EXPECT_EQ(kPlotArea, p.at(kLeft + 2, 60));
}

TEST(ContinuousPart, MinMaxShadeBetweenTheExtremes) {
  ContinuousSeries s = hourly({50, 50, 50});
  for (ContinuousSample& x : s.segments[0]) {
    x.min = 20;  // row 104
    x.max = 80;  // row 40
  }
  Picture p = single(s, true);
  const int x = column(kNewYear + kHour);
  EXPECT_EQ(kMinMaxShade, p.at(x, 45));
  EXPECT_EQ(kMinMaxShade, p.at(x, 100));
  EXPECT_EQ(kPlotArea, p.at(x, 35));
  EXPECT_EQ(kPlotArea, p.at(x, 110));
  EXPECT_EQ(lineColour(0), p.at(x, 72));  // the curve over the shade
}

TEST(ContinuousPart, TwoGroupsTwoAxesAndKeys) {
  Graph g(kPlot, kNewYear, kNewYear + kDay);
  g.addContinuousGroup().addLine(hourly({10, 20}), {}, "one");
  g.addContinuousGroup().addLine(hourly({30, 40}), {}, "two");
  Picture p = drawn(g);
  // Two legend rows more: 126 + 2 x 13, and the axis.
  ASSERT_EQ(152 + 25, p.height());
  // Axis 1 stands at width - right, right = (3 + 1) x 6 + 5 = 29.
  const int axis1 = 600 - 29;
  EXPECT_EQ(kAxis, p.at(axis1, 80));
  EXPECT_EQ(kPlotArea, p.at(axis1 - 2, 80));
  EXPECT_EQ(kBackground, p.at(axis1 + 1, 80));
  // Keys: line 0 in axis 0's stripe on row 0..12, line 1 in axis 1's on
  // rows 13..25.
  EXPECT_EQ(kPlotArea, p.at(1, 1));
  EXPECT_EQ(kBackground, p.at(1, 14));
  EXPECT_EQ(kPlotArea, p.at(axis1 + 1, 14));
  EXPECT_GT(p.countIn(0, 0, kLeft - 1, 12, lineColour(0)), 5);
  EXPECT_GT(p.countIn(axis1, 13, 599, 25, lineColour(1)), 5);
}

}  // namespace
}  // namespace grapher
