#include <gd.h>
#include <gtest/gtest.h>

#include "base/error.h"
#include "grapher/gd_canvas.h"
#include "grapher/palette.h"
#include "grapher/test_picture.h"

namespace grapher {
namespace {

using testing::Picture;

TEST(Palette, EntriesTheChartsRelyOn) {
  EXPECT_EQ(64u, kPalette.size());
  EXPECT_EQ(255, kPalette[kBackground].red);
  EXPECT_EQ(255, kPalette[kBackground].blue);
  EXPECT_EQ(53, kPalette[kAlertBand].green);
  EXPECT_EQ(203, kPalette[14].blue);  // line 0
  EXPECT_EQ(240, kPalette[22].blue);  // enum state colour 0
  EXPECT_EQ(0, kPalette[53].red);     // enum state colour 31: 0, 160, 0
  EXPECT_EQ(160, kPalette[53].green);
  EXPECT_EQ(0, kPalette[63].green);  // spare
}

TEST(Palette, ColourIndexesStayInThePalette) {
  EXPECT_EQ(14, lineColour(0));
  EXPECT_EQ(22, lineColour(8));  // lines run on into the enum colours
  EXPECT_EQ(53, lineColour(39));
  EXPECT_EQ(14, lineColour(40));
  EXPECT_EQ(22, stateColourAt(0));
  EXPECT_EQ(53, stateColourAt(31));
  EXPECT_EQ(22, stateColourAt(32));
}

TEST(Fonts, CellsAndUnknownFont) {
  EXPECT_EQ(13, fontCell(kFontSmall).height);
  EXPECT_EQ(6, fontCell(kFontSmall).width);
  EXPECT_EQ(8, fontCell(kFontTiny).height);
  EXPECT_EQ(5, fontCell(kFontTiny).width);
  EXPECT_EQ(-1, fontCell(2).height);
  EXPECT_EQ(-1, fontCell(-1).width);
}

TEST(GDCanvas, BackgroundIsEntryZeroAndPaletteIsAllocatedInOrder) {
  GDCanvas canvas(20, 10);
  Picture p(canvas.pngBytes());
  ASSERT_EQ(20, p.width());
  ASSERT_EQ(10, p.height());
  EXPECT_EQ(200, p.countIn(0, 0, 19, 9, kBackground));
}

TEST(GDCanvas, RectangleIsInclusiveAndInvertedIsEmpty) {
  GDCanvas canvas(20, 10);
  canvas.fillRectangle(2, 3, 4, 5, kGreen);
  canvas.fillRectangle(10, 3, 9, 5, kRed);  // no width: nothing
  Picture p(canvas.pngBytes());
  EXPECT_EQ(9, p.countIn(0, 0, 19, 9, kGreen));
  EXPECT_EQ(kGreen, p.at(2, 3));
  EXPECT_EQ(kGreen, p.at(4, 5));
  EXPECT_EQ(0, p.countIn(0, 0, 19, 9, kRed));
}

TEST(GDCanvas, LinesDashesCirclesPolygons) {
  GDCanvas canvas(40, 20);
  canvas.line(0, 0, 9, 0, kAxis);
  canvas.dashedLine(0, 2, 15, 2, kGrid);
  canvas.circle(30, 10, 4, kRed);
  canvas.fillPolygon({{0, 10}, {5, 10}, {5, 15}, {0, 15}}, kPlotArea);
  canvas.fillPolygon({{0, 0}, {1, 1}}, kText);  // too few points
  Picture p(canvas.pngBytes());
  EXPECT_EQ(10, p.countInRow(0, kAxis));
  EXPECT_EQ(8, p.countInRow(2, kGrid));  // 4 on, 4 off over 16 pixels
  EXPECT_EQ(kGrid, p.at(0, 2));
  EXPECT_EQ(kBackground, p.at(4, 2));
  EXPECT_GT(p.countIn(27, 7, 33, 13, kRed), 6);
  EXPECT_EQ(kBackground, p.at(30, 10));  // a ring, not a disc
  EXPECT_EQ(36, p.countIn(0, 10, 5, 15, kPlotArea));
  EXPECT_EQ(0, p.countIn(0, 0, 39, 19, kText));
}

TEST(GDCanvas, TextUsesTheFontCells) {
  GDCanvas canvas(40, 20);
  canvas.text(kFontSmall, 0, 0, "W", kText);
  canvas.text(7, 10, 0, "W", kText);  // unknown font: nothing
  Picture p(canvas.pngBytes());
  EXPECT_GT(p.countIn(0, 0, 5, 12, kText), 5);
  EXPECT_EQ(0, p.countIn(6, 0, 39, 19, kText));
}

TEST(GDCanvas, EmptyAndHugeSizes) {
  GDCanvas empty(0, 13);
  EXPECT_EQ(1, empty.width());
  EXPECT_EQ(13, empty.height());
  EXPECT_THROW(GDCanvas(1 << 30, 1 << 30), error::EFatal);
}

TEST(GDCanvasFactory, MakesOneCanvasOfTheSize) {
  GDCanvasFactory factory;
  EXPECT_EQ(13, factory.fontSize(kFontSmall).height);
  factory.makeCanvas(600, 21);
  EXPECT_EQ(600, factory.getCanvas().width());
  EXPECT_EQ(21, factory.getCanvas().height());
}

TEST(GDCanvasFactoryDeathTest, MisuseIsAnAssertion) {
  GDCanvasFactory empty;
  EXPECT_DEATH(empty.getCanvas(), "Assertion failed: getCanvas invoked before makeCanvas");
  GDCanvasFactory twice;
  twice.makeCanvas(2, 2);
  EXPECT_DEATH(twice.makeCanvas(2, 2), "Assertion failed: makeCanvas invoked twice");
}

}  // namespace
}  // namespace grapher
