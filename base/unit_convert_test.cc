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

TEST(Convert, AutoScaleChoosesThePrefix) {
  EXPECT_EQ("1.5 KiB", converted(Unit("B"), 1536, binaryUnit("B"), true));
  EXPECT_EQ("1.5 kW", converted(Unit("W"), 1500, Unit("W"), true));
  EXPECT_EQ("2.5 MW", converted(Unit("kW"), 2500, Unit("W"), true));
  EXPECT_EQ("500 ms", converted(Unit("s"), 0.5, Unit("s"), true));
  EXPECT_EQ("5000 s", converted(Unit("s"), 5000, Unit("s"), true));
  EXPECT_EQ("0.5 B", converted(Unit("B"), 0.5, Unit("B"), true));
  EXPECT_EQ("250 mV", converted(Unit("V"), 0.25, Unit("V"), true));
  EXPECT_EQ("1.2 GiB", converted(Unit("MB"), 1.2 * 1024, Unit("B"), true));
  EXPECT_EQ("1500 PW", converted(Unit("PW"), 1500, Unit("W"), true));  // no larger prefix
}

TEST(Convert, ZeroAndNegativeValuesKeepTheBareUnit) {
  EXPECT_EQ("0 W", converted(Unit("W"), 0, Unit("W"), true));
  EXPECT_EQ("-5000000 W", converted(Unit("W"), -5e6, Unit("W"), true));
  EXPECT_EQ("-5000 W", converted(Unit("kW"), -5, Unit("W"), true));
}

TEST(Convert, AutoScaleReadsCentiAsOneAndPercentAsFraction) {
  EXPECT_EQ("0.5 %", converted(Unit("%"), 50, Unit("%"), true));
  EXPECT_EQ("0.5 %", converted(Unit("%"), 50, Unit("pct"), false));
  EXPECT_EQ("50 %", converted(Unit("%"), 50, Unit("%"), false));
  EXPECT_EQ("50 %", converted(Unit("pct"), 0.5, Unit("%"), false));
  EXPECT_EQ("150 cW", converted(Unit("W"), 1.5, Unit("cW"), false));
  EXPECT_EQ("1.5 W", converted(Unit("W"), 1.5, Unit("cW"), true));
}

TEST(Convert, TypeConversions) {
  EXPECT_EQ("53 week", converted(Unit("year"), 1, Unit("week"), false));
  EXPECT_EQ("7 day", converted(Unit("week"), 1, Unit("day"), false));
  EXPECT_EQ("12 mon", converted(Unit("year"), 1, Unit("mon"), false));
  EXPECT_EQ("31 day", converted(Unit("mon"), 1, Unit("day"), false));
  EXPECT_EQ("90 min", converted(Unit("h"), 1.5, Unit("min"), false));
  EXPECT_EQ("2 B", converted(Unit("b"), 16, Unit("B"), false));
  EXPECT_EQ("0.0254 m", converted(Unit("inch"), 1, Unit("m"), false));
  EXPECT_EQ("300000 m/min", converted(Unit("km/s"), 5, Unit("m/min"), false));
  // A binary source's k is 1024.
  EXPECT_EQ("307200 B/min", converted(Unit("kB/s"), 5, Unit("B/min"), false));
}

TEST(Convert, Temperatures) {
  EXPECT_EQ("212 F", converted(Unit("C"), 100, Unit("F"), false));
  EXPECT_EQ("373.15 K", converted(Unit("C"), 100, Unit("K"), false));
  EXPECT_EQ("0 C", converted(Unit("F"), 32, Unit("C"), false));
  EXPECT_EQ("-40 F", converted(Unit("K"), 233.15, Unit("F"), false));
  // In a denominator the conversion runs backwards, from C to F.
  EXPECT_EQ("413.6 W/C", converted(Unit("W/F"), 212, Unit("W/C"), false));
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
