// Conversion between units, prefix steps and the texts of values.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "base/error.h"
#include "base/unit.h"
#include "base/value_format.h"

namespace {

Unit binaryUnit(const std::string& text) {
  Unit u(text);
  u.setBinary(true);
  return u;
}

Unit compactUnit(const std::string& text) {
  Unit u(text);
  u.setCompact(true);
  return u;
}

// "value label" of a conversion, the value with %.15g.
std::string converted(const Unit& from, double value, const Unit& to, bool autoScale) {
  auto [v, unit] = convert(from, value, to, autoScale);
  char buffer[64];
  std::snprintf(buffer, sizeof buffer, "%.15g", v);
  return std::string(buffer) + " " + getLabel(unit, false, true);
}

// A conversion and its result as "value label".
struct Case {
  const char* from;
  double value;
  const char* to;
  bool autoScale;
  const char* expected;
};

void expectConversions(std::initializer_list<Case> cases) {
  for (const Case& c : cases) {
    EXPECT_EQ(c.expected, converted(Unit(c.from), c.value, Unit(c.to), c.autoScale))
        << c.from << " " << c.value << " " << c.to;
  }
}

TEST(Convert, AutoScaleChoosesThePrefix) {
  EXPECT_EQ("1.5 KiB", converted(Unit("B"), 1536, binaryUnit("B"), true));
  expectConversions({
      {"W", 1500, "W", true, "1.5 kW"},
      {"kW", 2500, "W", true, "2.5 MW"},
      {"s", 0.5, "s", true, "500 ms"},
      {"s", 5000, "s", true, "5000 s"},
      {"B", 0.5, "B", true, "0.5 B"},
      {"V", 0.25, "V", true, "250 mV"},
      {"MB", 1.2 * 1024, "B", true, "1.2 GiB"},
      {"PW", 1500, "W", true, "1500 PW"},  // no larger prefix
      // Zero and negative values keep the bare unit.
      {"W", 0, "W", true, "0 W"},
      {"W", -5e6, "W", true, "-5000000 W"},
      {"kW", -5, "W", true, "-5000 W"},
  });
}

TEST(Convert, AutoScaleReadsCentiAsOneAndPercentAsFraction) {
  expectConversions({
      {"%", 50, "%", true, "0.5 %"},
      {"%", 50, "pct", false, "0.5 %"},
      {"%", 50, "%", false, "50 %"},
      {"pct", 0.5, "%", false, "50 %"},
      {"W", 1.5, "cW", false, "150 cW"},
      {"W", 1.5, "cW", true, "1.5 W"},
  });
}

TEST(Convert, TypeConversions) {
  expectConversions({
      {"year", 1, "week", false, "53 week"},
      {"week", 1, "day", false, "7 day"},
      {"year", 1, "mon", false, "12 mon"},
      {"mon", 1, "day", false, "31 day"},
      {"h", 1.5, "min", false, "90 min"},
      {"b", 16, "B", false, "2 B"},
      {"inch", 1, "m", false, "0.0254 m"},
      {"km/s", 5, "m/min", false, "300000 m/min"},
      {"kB/s", 5, "B/min", false, "307200 B/min"},  // a binary source's k is 1024
      {"C", 100, "F", false, "212 F"},
      {"C", 100, "K", false, "373.15 K"},
      {"F", 32, "C", false, "0 C"},
      {"K", 233.15, "F", false, "-40 F"},
      {"W/F", 212, "W/C", false, "413.6 W/C"},  // in a denominator: from C to F
  });
}

TEST(Convert, BinaryUnitsWithOddPrefixes) {
  expectConversions({
      {"hB", 5, "B", false, "5 B"},      // out of h: the third of 2 is 0
      {"B", 5, "hB", false, "500 HiB"},  // into h: two factors of 10
      {"B", 5, "mB", false, "5 MiB"},    // milli on a binary unit: no scaling
      {"mB", 5, "B", false, "5 B"},
      {"GB", 1, "kB", false, "1048576 KiB"},
  });
}

TEST(Convert, IncompatibleUnitsOnlyScale) {
  EXPECT_EQ("5 V", converted(Unit("V"), 5, Unit("A"), false));
  EXPECT_EQ("5000 V", converted(Unit("kV"), 5, Unit("A"), false));
  EXPECT_EQ("7 foo", converted(Unit("foo"), 7, Unit("bar"), false));
  // Two prefixes on one side end the conversion with nothing changed.
  Unit twoPrefixes("k");
  twoPrefixes.numerators.push_back(UnitEntry::prefix(10));
  twoPrefixes.numerators.push_back(UnitEntry::type(12));
  EXPECT_EQ("3 k*MW", converted(twoPrefixes, 3, Unit("W"), true));
  EXPECT_EQ("3 W", converted(Unit("W"), 3, twoPrefixes, false));
}

TEST(Convert, FlagsComeFromTheTarget) {
  auto [v, unit] = convert(Unit("W"), 2, compactUnit("W"), false);
  EXPECT_TRUE(unit.isCompact());
  EXPECT_FALSE(convert(Unit("B"), 2, Unit("W"), false).second.isBinary());
  EXPECT_DOUBLE_EQ(2.0, convertValue(Unit("kW"), 2000, Unit("MW")));
}

TEST(StepPrefix, WhatMayScale) {
  EXPECT_FALSE(stepPrefix(Unit("s"), true).second);
  EXPECT_EQ("ms", getLabel(stepPrefix(Unit("s"), false).first, false, true));
  EXPECT_EQ("s", getLabel(stepPrefix(Unit("ms"), true).first, false, true));
  EXPECT_FALSE(stepPrefix(Unit("B"), false).second);
  EXPECT_EQ("KiB", getLabel(stepPrefix(Unit("B"), true).first, false, true));
  EXPECT_EQ("MW", getLabel(stepPrefix(Unit("kW"), true).first, false, true));
  EXPECT_EQ("mW", getLabel(stepPrefix(Unit("W"), false).first, false, true));
  EXPECT_FALSE(stepPrefix(Unit("min"), false).second);
  // Centi may step up to "1" but never down.
  EXPECT_EQ("W", getLabel(stepPrefix(Unit("cW"), true).first, false, true));
  EXPECT_FALSE(stepPrefix(Unit("cW"), false).second);
  EXPECT_EQ("mW", getLabel(stepPrefix(Unit("dW"), false).first, false, true));
  EXPECT_FALSE(stepPrefix(Unit("foo"), true).second);
  auto [failed, ok] = stepPrefix(Unit("PW"), true);
  EXPECT_FALSE(ok);
  EXPECT_EQ("W", getLabel(failed, false, true));
}

TEST(ValueFormatter, RangePicksUnitAndDecimals) {
  ValueFormatter f(Unit("W"), 0, 5000);
  EXPECT_EQ("kW", f.unitText());
  EXPECT_DOUBLE_EQ(5, f.magnitude());
  EXPECT_EQ("1.50", f.text(1500));
  EXPECT_EQ("0", f.text(0));
  EXPECT_EQ("0.01", f.text(10));
  ValueFormatter small(Unit("V"), 0, 0.004);
  EXPECT_EQ("mV", small.unitText());
  EXPECT_EQ("1.50", small.text(0.0015));
  ValueFormatter fraction(Unit("0.01"), 0, 0.005);
  // A bare fraction isn't rescaled: the axis shows plain numbers.
  EXPECT_EQ("", fraction.unitText());
  EXPECT_EQ("0.00005", fraction.text(0.005));
  ValueFormatter huge(Unit("W"), 0, 1e300);
  EXPECT_EQ(15u, huge.text(1e300).size());
}

TEST(ValueText, Durations) {
  const Unit s("s");
  EXPECT_EQ("60.0 s", valueText(s, 60, s));
  EXPECT_EQ("1m 1s", valueText(s, 61, s));
  EXPECT_EQ("60m 0s", valueText(s, 3600, s));
  EXPECT_EQ("1h 0m", valueText(s, 3601, s));
  EXPECT_EQ("1 days, 0h 0m", valueText(s, 86400, s));
  EXPECT_EQ("1 days, 1h 1m", valueText(s, 90061, s));
  EXPECT_EQ("1d 1h 1m", valueText(compactUnit("s"), 90061, s));
  EXPECT_EQ("500 ms", valueText(s, 0.5, s));
  EXPECT_EQ("106751991167300d 15h 30m", valueText(compactUnit("s"), 1e300, s));
}

TEST(ValueText, NumbersWithUnits) {
  EXPECT_EQ("1.50 kW", valueText(Unit("W"), 1500, Unit("W")));
  EXPECT_EQ("1.50kW", valueText(compactUnit("W"), 1500, Unit("W")));
  EXPECT_EQ("0 W", valueText(Unit("W"), 0, Unit("W")));
  EXPECT_EQ("0W", valueText(compactUnit("W"), 0, Unit("W")));
  EXPECT_EQ("-5.00000 W", valueText(Unit("W"), -5, Unit("W")));
  EXPECT_EQ("12.5 W", valueText(Unit("W"), 12.5, Unit("W")));
  EXPECT_EQ("125 W", valueText(Unit("W"), 125, Unit("W")));
  EXPECT_EQ("0.00050 ", valueText(Unit("0.01"), 0.05, Unit("0.01")));
  EXPECT_EQ("nan", valueText(Unit("W"), std::nan(""), Unit("W")));
  EXPECT_EQ("-inf", valueText(Unit("W"), -INFINITY, Unit("W")));
  EXPECT_EQ("inf", valueText(Unit("kW"), std::numeric_limits<double>::max(), Unit("W")));
}

TEST(NumberText, Formats) {
  EXPECT_EQ("3.142", numberText(3.14159, 3, 3));
  EXPECT_EQ("3.141590", numberText(3.14159, -1, -1));
  EXPECT_EQ("     3.142", numberText(3.14159, 10, 3));
  EXPECT_EQ("3", numberText(3.14159, -1, 0));
  EXPECT_EQ("nan", numberText(NAN, 3, 3));
  EXPECT_EQ("-inf", numberText(-INFINITY, 3, 3));
  EXPECT_EQ(127u, numberText(1e300, 3, 3).size());
  EXPECT_THROW(numberText(1, 1001, 3), error::ERange);
}

}  // namespace
