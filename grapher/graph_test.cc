#include "grapher/graph.h"

#include <gtest/gtest.h>

#include <typeinfo>

#include "base/error.h"
#include "grapher/continuous_part.h"
#include "grapher/enum_part.h"
#include "grapher/gd_canvas.h"
#include "grapher/palette.h"
#include "grapher/tabular_part.h"
#include "grapher/test_picture.h"
#include "grapher/uptime_part.h"
#include "grapher/x_axis.h"

namespace grapher {
namespace {

using namespace grapher::testing;  // Pictures, sample series and times.

// The class names of the parts, top to bottom, without the "Graph::" prefix.
std::string partList(const Graph& graph) {
  GDCanvasFactory factory;
  const Graph::GraphContext context(graph, timeZoneValue(0), factory);
  std::string out;
  for (const auto& part : graph.buildParts(context)) {
    const Graph::GraphPart& p = *part;
    std::string name;
    if (typeid(p) == typeid(Graph::ErrorPart)) name = "Error";
    if (typeid(p) == typeid(Graph::XAxisPart)) name = "XAxis";
    if (typeid(p) == typeid(Graph::SlaveXAxisPart)) name = "Slave";
    if (typeid(p) == typeid(Graph::ContinuousPart)) name = "Continuous";
    if (typeid(p) == typeid(Graph::EnumPart)) name = "Enum";
    if (typeid(p) == typeid(Graph::UptimePart)) name = "Uptime";
    if (typeid(p) == typeid(Graph::OldStyleUptimePart)) name = "OldStyle";
    if (typeid(p) == typeid(Graph::TabularUptimePart)) name = "TabUptime";
    if (typeid(p) == typeid(Graph::TabularEnumPart)) name = "TabEnum";
    out += (out.empty() ? "" : " ") + name;
  }
  return out;
}

void addLine(Graph& g) {
  g.addContinuousGroup().addLine(series({{kNewYear, 1}, {kNewYear + 60, 2}}), {}, "");
}

void addEnumLine(EnumGroup& group) { group.addLine({}, {}, ""); }

TEST(GraphParts, ChoiceAndOrder) {
  {
    Graph g(kPlot, kNewYear, kNewYear + kDay);
    EXPECT_EQ("XAxis", partList(g));
  }
  {
    Graph g(kPlot, kNewYear, kNewYear + kDay);
    g.addUptimeLine({{kNewYear, kNewYear + 10}}, "");
    EXPECT_EQ("OldStyle", partList(g));  // a table of boot times, no axis
  }
  {
    Graph g(kPlot, kNewYear, kNewYear + kDay);
    g.addUptimeLine({{kNewYear, kNewYear + 10}}, "");
    addLine(g);
    EXPECT_EQ("Continuous XAxis Slave Uptime", partList(g));
  }
  {
    Graph g(kPlot, kNewYear, kNewYear + kDay);
    addEnumLine(g.addEnumGroup());
    addEnumLine(g.addEnumGroup());
    EXPECT_EQ("XAxis Enum Slave Enum", partList(g));
  }
  {
    Graph g(kPlot, kNewYear, kNewYear + kDay);
    addLine(g);
    addEnumLine(g.addEnumGroup());
    g.addUptimeLine({}, "a");
    g.addUptimeLine({}, "b");
    g.addError("first", "second");
    EXPECT_EQ("Error Continuous XAxis Enum Slave Uptime", partList(g));
  }
}

TEST(GraphParts, TabularOnlyForOneStatusLine) {
  {
    Graph g(kTabular, kNewYear, kNewYear + kDay);
    g.addUptimeLine({{kNewYear, kNewYear + 10}}, "");
    EXPECT_EQ("TabUptime", partList(g));
  }
  {
    Graph g(kTabular, kNewYear, kNewYear + kDay);
    addEnumLine(g.addEnumGroup());
    EXPECT_EQ("TabEnum", partList(g));
  }
  {
    Graph g(kTabular, kNewYear, kNewYear + kDay);
    EnumGroup& group = g.addEnumGroup();
    addEnumLine(group);
    addEnumLine(group);
    EXPECT_EQ("XAxis Enum", partList(g));  // two lines: a plot
  }
  {
    Graph g(kTabular, kNewYear, kNewYear + kDay);
    g.addUptimeLine({{kNewYear, kNewYear + 10}}, "");
    g.addError("a", "b");
    EXPECT_EQ("Error XAxis Slave Uptime", partList(g));
  }
}

TEST(GraphDraw, NoDataIsOneAxisOfFiveThirdsOfARow) {
  Graph g(kPlot, kNewYear, kNewYear + kDay);
  Picture p = drawn(g);
  EXPECT_EQ(600, p.width());
  EXPECT_EQ(5 * 13 / 3, p.height());
  EXPECT_EQ(kBackground, p.at(0, 0));
  EXPECT_EQ(0, p.countIn(0, 0, 599, 20, kAxis));  // no neighbours: no line
  EXPECT_GT(p.countIn(0, 0, 599, 20, kText), 0);  // but the time labels
}

TEST(GraphDraw, OneContinuousLinePerSize) {
  const int32_t sizes[3] = {kSmall, kMedium, kLarge};
  const int widths[3] = {200, 600, 1000};
  // h / 2 + base height + the axis (5 h / 3 + 4).
  const int heights[3] = {4 + 80 + 13 + 4, 6 + 120 + 21 + 4, 6 + 200 + 21 + 4};
  for (int i = 0; i < 3; ++i) {
    Graph g(kPlot, kNewYear, kNewYear + kDay);
    g.size = sizes[i];
    addLine(g);
    Picture p = drawn(g);
    EXPECT_EQ(widths[i], p.width()) << i;
    EXPECT_EQ(heights[i], p.height()) << i;
  }
}

TEST(GraphDraw, UnknownSizeIsRefusedBeforeACanvasExists) {
  Graph g(kPlot, kNewYear, kNewYear + kDay);
  g.size = 3;
  GDCanvasFactory factory;
  try {
    g.draw(factory, timeZoneValue(0));
    FAIL() << "no exception";
  } catch (const error::EFatal& e) {
    EXPECT_EQ("Unhandled graph size", e.text());
  }
  EXPECT_DEATH(factory.getCanvas(), "getCanvas invoked before makeCanvas");
}

TEST(GraphDraw, ErrorPartWritesTwoTextsInOneRow) {
  Graph g(kPlot, kNewYear, kNewYear + kDay);
  g.addError("Left", "Right");
  Picture p = drawn(g);
  ASSERT_EQ(13 + 21, p.height());
  // First text from x = 4, second from 4 + (600 - 8) / 4 = 152.
  EXPECT_GT(p.countIn(4, 0, 27, 12, kText), 0);
  EXPECT_EQ(0, p.countIn(28, 0, 151, 12, kText));
  EXPECT_GT(p.countIn(152, 0, 181, 12, kText), 0);
}

}  // namespace
}  // namespace grapher
