#include "analysis/result_graph.h"

#include <gtest/gtest.h>

#include <cmath>

#include "tql/catalogue.h"
#include "tql/schema.h"
#include "tsdb/interval.h"

namespace {

// "name=value" for each property after `order`, in the order set.
std::string Render(const std::vector<tql::property_ptr>& properties) {
  std::string out;
  for (size_t i = 1; i < properties.size(); ++i) {
    out += (out.empty() ? "" : " ") + tql::property_name(properties[i]->name) + "=" +
           properties[i]->text();
  }
  return out;
}

TEST(GraphProperties, OrderComesFirstFromTheCounter) {
  const tql::patch_t check;
  const auto first = graphProperties("S", GraphSettings{}, check);
  const auto second = graphProperties("S", GraphSettings{}, check);
  ASSERT_EQ(schema::kOrder, first[0]->name);
  EXPECT_EQ(std::stoul(first[0]->text()) + 1, std::stoul(second[0]->text()));
}

TEST(GraphProperties, ThresholdsShownOnlyWhereTheyMakeSense) {
  tql::patch_t check;
  check.set_property(
      tql::make_property<tql::kind::kBlob>(schema::kPreferredUnit, std::string("u")));
  GraphSettings s;
  s.dataType = tsdb::kContinuous;
  s.unit = "ms";
  s.alertAbove = 3.0;
  s.warnAbove = 4.0;  // hidden behind the alert level
  s.alertBelow = -1.0;
  s.warnBelow = 0.5;  // no alert level below: shown
  s.plotMax = 10.0;
  s.showMinMax = true;
  EXPECT_EQ(
      "name=\"Statistics\" unit=BLOB preferredUnit=BLOB dataType=5 alertIfAbove=3.000000 "
      "warnIfBelow=0.500000 plotMax=10.000000 graphShowMinMax=true graphShowNoResponse=false "
      "graphTabularUptime=false",
      Render(graphProperties("Statistics", s, check)));
  s.alertAbove = 5.0;
  s.alertBelow = 0.25;
  s.warnBelow = NAN;
  s.plotMax = -1.0;
  EXPECT_EQ(
      "name=\"G\" unit=BLOB preferredUnit=BLOB dataType=5 alertIfAbove=5.000000 "
      "warnIfAbove=4.000000 alertIfBelow=0.250000 graphShowMinMax=true "
      "graphShowNoResponse=false graphTabularUptime=false",
      Render(graphProperties("G", s, check)));
}

TEST(GraphProperties, EnumChecksCarryTheirColoursAndLabels) {
  tql::patch_t check;
  check.set_property(tql::make_string_property(schema::kStateColors, "g,r"));
  check.set_property(tql::make_string_property(schema::kStateLabel0 + 1, "down"));
  check.set_property(
      tql::make_property<tql::kind::kBlob>(schema::kPreferredUnit, std::string("u")));
  GraphSettings s;
  s.dataType = tsdb::kEnum;
  s.unit = "ms";
  s.tabular = true;
  EXPECT_EQ(
      "name=\"E\" stateColors=\"g,r\" stateLabel1=\"down\" dataType=3 graphShowMinMax=false "
      "graphShowNoResponse=false graphTabularUptime=true",
      Render(graphProperties("E", s, check)));
  // Without colours an enum check gets an empty unit.
  check.properties.erase(schema::kStateColors);
  const auto p = graphProperties("E", s, check);
  ASSERT_EQ(schema::kUnit, p[2]->name);
  EXPECT_EQ("", dynamic_cast<const tql::property_blob_t&>(*p[2]).value);
}

}  // namespace
