#include "grapher/check_image.h"

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

#include "base/error.h"
#include "grapher/contiguous.h"
#include "grapher/palette.h"
#include "grapher/test_picture.h"
#include "tql/schema.h"

namespace grapher {
namespace {

using namespace grapher::testing;  // Pictures, sample series and times.

tsdb::continuous_fields rec(int64_t start, int64_t end, float avg = 1, uint32_t ngood = 1,
                            uint32_t nbad = 0) {
  return {start, end, avg, avg, avg, ngood, nbad};
}

// "[t t][t]": the sample times of each segment.
template <class Series>
std::string runs(const Series& s) {
  std::ostringstream out;
  for (const auto& segment : s.segments) {
    out << "[";
    for (size_t i = 0; i < segment.size(); ++i) {
      out << (i ? " " : "") << segment[i].time;
    }
    out << "]";
  }
  return out.str();
}

std::string cut(const std::vector<tsdb::continuous_fields>& records) {
  ContinuousSeries s;
  findContiguous(s, records, SampleForm::kPlain);
  return runs(s);
}

TEST(FindContiguous, CutOnlyWhereTheSilenceIsWiderThanBothNeighbours) {
  // Gaps 10, 30, 10: 30 is more than 2.5 x 10 on both sides.
  EXPECT_EQ("[0 10 20 30][60 70 80 90]", cut({rec(0, 10), rec(20, 30), rec(60, 70), rec(80, 90)}));
  // Gaps 10, 25, 10: 25 is not more than 25.
  EXPECT_EQ("[0 10 20 30 55 65 75 85]", cut({rec(0, 10), rec(20, 30), rec(55, 65), rec(75, 85)}));
  // A steady rhythm stays one run, whatever the gap.
  EXPECT_EQ("[0 10 1000 1010 2000 2010]", cut({rec(0, 10), rec(1000, 1010), rec(2000, 2010)}));
  // Two records: the one gap has no neighbours and always cuts.
  EXPECT_EQ("[0 10][10 20]", cut({rec(0, 10), rec(10, 20)}));
  EXPECT_EQ("", cut({}));
}

TEST(FindContiguous, PointsAndDamagedRecords) {
  EXPECT_EQ("[5]", cut({rec(5, 5)}));
  // A record that ends before it starts is a point at its start;
  // overlapping records touch.
  EXPECT_EQ("[50][40 60]", cut({rec(50, 20), rec(40, 60)}));
}

TEST(FindContiguous, PlainAndRisingSamplesAndStatistics) {
  ContinuousSeries plain;
  findContiguous(plain,
                 {{0, 10, 2, 3, 4, 2, 2}, {20, 30, -1, 5, 9, 1, 0}, {40, 40, -3, -2, 7, 0, 0}},
                 SampleForm::kPlain);
  EXPECT_EQ(3, plain.count);           // records without good ones add none
  EXPECT_DOUBLE_EQ(11, plain.sum);     // 2 x 3 + 1 x 5
  EXPECT_DOUBLE_EQ(2, plain.minimum);  // min 2; of a negative min the avg 5
  EXPECT_DOUBLE_EQ(9, plain.maximum);
  ASSERT_EQ(1u, plain.segments.size());
  const auto& s = plain.segments[0];
  ASSERT_EQ(5u, s.size());
  EXPECT_DOUBLE_EQ(0.5, s[0].noResponse);
  EXPECT_EQ(10, s[1].time);
  EXPECT_DOUBLE_EQ(3, s[1].avg);
  EXPECT_DOUBLE_EQ(1.0, s[4].noResponse);  // nothing measured: no answer
  ContinuousSeries rising;
  findContiguous(rising, {{0, 10, 2, 3, 4, 1, 0}}, SampleForm::kRising);
  const auto& r = rising.segments[0];
  ASSERT_EQ(2u, r.size());
  EXPECT_DOUBLE_EQ(2, r[0].avg);
  EXPECT_DOUBLE_EQ(4, r[1].avg);
  EXPECT_DOUBLE_EQ(2, r[1].min);
}

TEST(FindContiguous, EnumSamplesCoverTheRecord) {
  EnumSeries s;
  findContiguous(s, {{3, 1, 3, 100, 110}, {4, 0, 0, 120, 120}});
  EXPECT_EQ("[100 110][120]", runs(s));
  EXPECT_EQ(3u, s.segments[0][1].states);
  EXPECT_DOUBLE_EQ(0.75, s.segments[0][0].unknown);
  EXPECT_DOUBLE_EQ(1.0, s.segments[1][0].unknown);
}

// A stored graph object with the given properties.
struct Object {
  tql::patch_t patch;
  Object& real(int32_t n, double v) {
    patch.set_property(tql::make_property<tql::kind::kReal>(n, v));
    return *this;
  }
  Object& uint(int32_t n, uint32_t v) {
    patch.set_property(tql::make_property<tql::kind::kUint>(n, v));
    return *this;
  }
  Object& blob(int32_t n, std::string v) {
    patch.set_property(tql::make_property<tql::kind::kBlob>(n, std::move(v)));
    return *this;
  }
  Object& text(int32_t n, std::string v) {
    patch.set_property(tql::make_string_property(n, std::move(v)));
    return *this;
  }
  Object& null(int32_t n) {
    auto p = tql::make_property<tql::kind::kReal>(n, 0.0);
    p->is_null = true;
    patch.set_property(std::move(p));
    return *this;
  }
};

std::vector<tsdb::interval_ptr> continuousRecords(
    const std::vector<tsdb::continuous_fields>& fields) {
  std::vector<tsdb::interval_ptr> out;
  for (const auto& f : fields) {
    out.emplace_back(std::make_unique<tsdb::data_interval_continuous_t>(f));
  }
  return out;
}

const std::string kByte("\x11\x09", 2);
const std::string kKiloByte("\x11\x09\x01\x09\x21\x01", 6);

TEST(GenerateCheckImage, ContinuousInTheDisplayUnit) {
  Object o;
  o.blob(schema::kUnit, kByte)
      .blob(schema::kPreferredUnit, kKiloByte)
      .real(schema::kWarnIfAbove, 4096)
      .null(schema::kAlertIfAbove)
      .uint(schema::kGraphShowMinMax, 1);
  Graph g(kPlot, kNewYear, kNewYear + 86400);
  generate_check_image(g, o.patch, tsdb::kContinuous,
                       continuousRecords({rec(kNewYear, kNewYear + 60, 2048)}));
  EXPECT_TRUE(g.showMinMax);
  EXPECT_FALSE(g.showNoResponse);
  ASSERT_EQ(1u, g.continuousGroups.size());
  const ContinuousLine& line = g.continuousGroups[0].lines.at(0);
  EXPECT_EQ("", line.name);
  EXPECT_DOUBLE_EQ(2, line.primary.segments.at(0).at(0).avg);  // binary kB
  EXPECT_DOUBLE_EQ(4, line.primary.warnIfAbove);
  EXPECT_TRUE(std::isnan(line.primary.alertIfAbove));
  EXPECT_DOUBLE_EQ(2, line.primary.maximum);
  EXPECT_DOUBLE_EQ(2, line.primary.sum);
  EXPECT_EQ(1, line.primary.count);
  EXPECT_EQ("KiB", getLabel(line.primary.unit, false, true));
  EXPECT_TRUE(line.secondary.segments.empty());
}

TEST(GenerateCheckImage, AccumulationRises) {
  Graph g(kPlot, kNewYear, kNewYear + 86400);
  generate_check_image(g, Object().patch, tsdb::kAccumulation,
                       continuousRecords({{kNewYear, kNewYear + 60, 1, 2, 3, 1, 0}}));
  const auto& s = g.continuousGroups[0].lines[0].primary.segments[0];
  ASSERT_EQ(2u, s.size());
  EXPECT_DOUBLE_EQ(1, s[0].avg);
  EXPECT_DOUBLE_EQ(3, s[1].avg);
}

TEST(GenerateCheckImage, EnumClassesAndLabelsFromTheStateColours) {
  Object o;
  o.text(schema::kStateColors, "gryx")
      .text(schema::kStateLabel0, "up")
      .text(schema::kStateLabel0 + 2, "slow")
      .text(schema::kStateLabel0 + 3, "ignored");
  std::vector<tsdb::interval_ptr> records;
  records.emplace_back(std::make_unique<tsdb::data_interval_enum_t>(
      tsdb::enum_fields{1, 1, 0, kNewYear, kNewYear + 60}));
  Graph g(kPlot, kNewYear, kNewYear + 86400);
  generate_check_image(g, o.patch, tsdb::kEnum, records);
  const EnumSeries& s = g.enumGroups.at(0).lines.at(0).primary;
  EXPECT_EQ((std::map<int, int>{{0, 0}, {1, 2}, {2, 1}}), s.classes);
  EXPECT_EQ((std::map<int, std::string>{{0, "up"}, {2, "slow"}}), s.labels);
  EXPECT_EQ("[" + std::to_string(kNewYear) + " " + std::to_string(kNewYear + 60) + "]", runs(s));
}

TEST(GenerateCheckImage, UptimeAndWrongRecordClasses) {
  Graph g(kTabular, kNewYear, kNewYear + 86400);
  generate_check_image(g, Object().patch, tsdb::kUptime,
                       continuousRecords({rec(kNewYear + 5, kNewYear + 50)}));
  ASSERT_EQ(1u, g.uptimeLines.size());
  EXPECT_EQ(kNewYear + 50, g.uptimeLines[0].intervals.at(0).end);
  std::vector<tsdb::interval_ptr> enums;
  enums.emplace_back(std::make_unique<tsdb::data_interval_enum_t>());
  const std::pair<int32_t, std::string> cases[] = {
      {tsdb::kUptime, "Tried to cast to uptime. Error."},
      {tsdb::kContinuous, "Tried to cast to continous. Error."},
      {tsdb::kAccumulation, "Tried to cast to uptime. Error."}};
  for (const auto& [type, text] : cases) {
    Graph h(kPlot, kNewYear, kNewYear + 86400);
    try {
      generate_check_image(h, Object().patch, type, enums);
      ADD_FAILURE() << type;
    } catch (const error::EFatal& e) {
      EXPECT_EQ(text, e.text());
    }
  }
  Graph h(kPlot, kNewYear, kNewYear + 86400);
  EXPECT_THROW(generate_check_image(h, Object().patch, tsdb::kEnum, continuousRecords({rec(0, 1)})),
               error::EFatal);
  EXPECT_THROW(
      generate_check_image(h, Object().blob(schema::kUnit, "\x11").patch, tsdb::kContinuous, {}),
      error::EParseError);
  EXPECT_DEATH(generate_check_image(h, Object().patch, 7, {}),
               "Got unknown dataset type 7 in generate_check_image");
}

TEST(ChartKind, TabularWhenSetAndNotZero) {
  EXPECT_EQ(kPlot, chartKind(Object().patch));
  EXPECT_EQ(kPlot, chartKind(Object().uint(schema::kGraphTabularUptime, 0).patch));
  EXPECT_EQ(kTabular, chartKind(Object().uint(schema::kGraphTabularUptime, 1).patch));
}

TEST(ChartPng, NoRecordsDrawTheFixedAxis) {
  Graph g(kPlot, kNewYear, kNewYear + 86400);
  generate_check_image(g, Object().patch, tsdb::kContinuous, {});
  Picture p(chartPng(g, timeZoneValue(0)));
  EXPECT_EQ(600, p.width());
  EXPECT_EQ(151, p.height());
  EXPECT_EQ(0, p.countIn(0, 0, 599, 150, lineColour(0)));
}

TEST(ChartPng, AChartThatCantBeDrawnIsAPictureOfItsError) {
  Graph g(kPlot, kNewYear, kNewYear + 86400);
  g.size = 9;
  Picture p(chartPng(g, timeZoneValue(0)));
  EXPECT_EQ(20 * 6, p.width());  // "Unhandled graph size"
  EXPECT_EQ(13, p.height());
  EXPECT_GT(p.countIn(0, 0, 119, 12, kAxis), 40);
  Picture empty(errorPicture(""));
  EXPECT_EQ(1, empty.width());
}

}  // namespace
}  // namespace grapher
