// Runs with TZ=Europe/Copenhagen (see CMakeLists.txt).
#include "reporter/report_period.h"

#include <gtest/gtest.h>

#include <string>

#include "base/error.h"
#include "tql/errors.h"
#include "tql/property.h"
#include "tql/schema.h"

namespace {

const zone_t kCopenhagen = timeZoneValue(kEnvironmentZone);

tql::patch_t report() {
  tql::patch_t r;
  r.class_ = 5;
  r.set_property(
      tql::make_property<tql::kind::kEnum>(schema::kType, tql::enum_value_t{0x1001e, 1}));
  return r;
}

tql::patch_t withPeriod(uint32_t period) {
  tql::patch_t r = report();
  r.set_property(
      tql::make_property<tql::kind::kEnum>(schema::kPeriod, tql::enum_value_t{0x1000a, period}));
  return r;
}

// "start duration" of the period for `when`.
std::string period(const tql::patch_t& r, int64_t when, zone_t zone = kCopenhagen) {
  ResolvedIssue issue;
  Report::resolveIssue(r, when, issue, zone);
  return std::to_string(issue.start) + " " + std::to_string(issue.duration);
}

TEST(ResolvePeriod, DayAndWeekHaveFixedLengths) {
  // 5 January 2026 15:00: yesterday from midnight.
  EXPECT_EQ("1767481200 86400", period(withPeriod(1), 1767621600));
  // 30 March, the day after the change to summer time: the period starts
  // at midnight CET and keeps 24 hours, so it ends at 01:00 CEST.
  EXPECT_EQ("1774738800 86400", period(withPeriod(1), 1774864800));
  // Wednesday 7 January: Monday 29 December to Sunday.
  EXPECT_EQ("1766962800 604800", period(withPeriod(2), 1767783600));
  // Wednesday 1 April: the week of the change to summer time, from Monday 23
  // March at midnight CET, still 168 hours.
  EXPECT_EQ("1774220400 604800", period(withPeriod(2), 1775048400));
}

TEST(ResolvePeriod, MonthYearAndQuarterByTheCalendar) {
  // January: December of the year before, 31 days.
  EXPECT_EQ("1764543600 2678400", period(withPeriod(3), 1768474800));
  // April: March, one hour short for the change to summer time.
  EXPECT_EQ("1772319600 2674800", period(withPeriod(3), 1775815200));
  // 2025, 365 days.
  EXPECT_EQ("1735686000 31536000", period(withPeriod(4), 1780308000));
  // February: October to December of the year before, 92 days and the
  // hour won back on 25 October.
  EXPECT_EQ("1759269600 7952400", period(withPeriod(6), 1770721200));
}

TEST(ResolvePeriod, InAFixedZone) {
  // One hour east, no daylight saving: the year before 1 July 2026.
  EXPECT_EQ("1735686000 31536000", period(withPeriod(4), 1782864000, timeZoneValue(3600)));
}

TEST(ResolvePeriod, EverythingFixedAndNone) {
  EXPECT_EQ("0 1770721200", period(withPeriod(5), 1770721200));

  tql::patch_t fixed = report();
  auto null = tql::make_property(25);
  null->name = schema::kPeriod;
  null->is_null = true;
  fixed.set_property(std::move(null));
  fixed.set_property(tql::make_property<tql::kind::kDate>(305, int64_t{1700000000}));
  fixed.set_property(tql::make_property<tql::kind::kUint>(306, 3600u));
  ResolvedIssue issue;
  Report::resolveIssue(fixed, 1770721200, issue, kCopenhagen);
  EXPECT_TRUE(issue.hasPeriod);
  EXPECT_EQ("1700000000 3600", period(fixed, 1770721200));

  fixed.properties.erase(306);
  EXPECT_THROW(period(fixed, 1770721200), errors::tql);

  Report::resolveIssue(report(), 1770721200, issue, kCopenhagen);
  EXPECT_FALSE(issue.hasPeriod);
  EXPECT_EQ("0 0", period(report(), 1770721200));
}

TEST(ResolvePeriod, UnknownPeriodValueRaises) {
  try {
    period(withPeriod(7), 1770721200);
    FAIL() << "no exception";
  } catch (const error::EParseError& e) {
    EXPECT_EQ("Error got unknown period in Report::resolveIssue", e.text());
  }
}

tql::patch_t fixedPeriod(int64_t start, int64_t duration) {
  tql::patch_t r = report();
  auto null = tql::make_property(25);
  null->name = schema::kPeriod;
  null->is_null = true;
  r.set_property(std::move(null));
  r.set_property(tql::make_property<tql::kind::kDate>(305, start));
  r.set_property(tql::make_property<tql::kind::kInt>(306, static_cast<int32_t>(duration)));
  return r;
}

// The text of the EParseError that resolving raises, or "no exception".
std::string refusal(const tql::patch_t& r, int64_t when, zone_t zone = kCopenhagen) {
  try {
    period(r, when, zone);
  } catch (const error::EParseError& e) {
    return e.text();
  }
  return "no exception";
}

TEST(ResolvePeriod, PeriodsBeforeTheEpochAreDamagedValues) {
  EXPECT_EQ("Report period starts before 1970: -86400", refusal(fixedPeriod(-86400, 90000), 0));
  EXPECT_EQ("Report period ends before 1970: start 100, duration -200",
            refusal(fixedPeriod(100, -200), 0));
  // Ordered in the first day, week, month and year of 1970 (2 January 1970
  // 12:00 in Copenhagen): each period would start in 1969.
  const int64_t second_of_january = 126000;
  for (uint32_t p :
       {kPeriodYesterday, kPeriodLastWeek, kPeriodLastMonth, kPeriodLastYear, kPeriodLastQuarter}) {
    EXPECT_EQ(0u,
              refusal(withPeriod(p), second_of_january).find("Report period starts before 1970: "))
        << "period " << p;
  }
  // Everything up to an order time before 1970.
  EXPECT_EQ("Report period ends before 1970: start 0, duration -5", refusal(withPeriod(5), -5));
}

TEST(ResolvePeriod, PeriodsFromTheEpochOnStand) {
  EXPECT_EQ("0 100", period(fixedPeriod(0, 100), 0));
  EXPECT_EQ("100 -100", period(fixedPeriod(100, -100), 0));
  // Yesterday of 2 January 1970 in GMT is the first day.
  EXPECT_EQ("0 86400", period(withPeriod(kPeriodYesterday), 90000, timeZoneValue(0)));
  EXPECT_EQ("0 0", period(withPeriod(kPeriodEverything), 0));
}

TEST(ResolveSettings, DefaultsAndWhatCountsAsTrue) {
  ResolvedIssue issue;
  Report::resolveIssue(report(), 0, issue, kCopenhagen);
  EXPECT_EQ(ReportKind::kAvailability, issue.kind);
  EXPECT_TRUE(issue.wantGraph && issue.wantSummary && issue.wantIncidents);
  EXPECT_EQ(0xFFFFFFFFu, issue.hideLevel);
  EXPECT_EQ(0.0, issue.hideThreshold);

  tql::patch_t r = report();
  r.set_property(tql::make_boolean_property(332, false));         // formGraph
  r.set_property(tql::make_property<tql::kind::kUint>(331, 0u));  // formSummary, no boolean
  for (int32_t n : {504, 505, 506}) r.set_property(tql::make_boolean_property(n, false));
  r.set_property(tql::make_property<tql::kind::kUint>(337, 2u));
  r.set_property(tql::make_property<tql::kind::kReal>(338, 99.5));
  Report::resolveIssue(r, 0, issue, kCopenhagen);
  EXPECT_FALSE(issue.wantGraph);
  EXPECT_TRUE(issue.wantSummary);
  EXPECT_TRUE(issue.wantIncidents);  // includeConfig is absent
  EXPECT_EQ(2u, issue.hideLevel);
  EXPECT_EQ(99.5, issue.hideThreshold);
  r.set_property(tql::make_boolean_property(335, false));
  r.set_property(tql::make_property<tql::kind::kInt>(337, 2));  // an int: the default
  Report::resolveIssue(r, 0, issue, kCopenhagen);
  EXPECT_FALSE(issue.wantIncidents);
  EXPECT_EQ(0xFFFFFFFFu, issue.hideLevel);
}

TEST(ResolveSettings, TypeIsRequired) {
  tql::patch_t r = report();
  r.properties.clear();
  ResolvedIssue issue;
  EXPECT_THROW(Report::resolveIssue(r, 0, issue, kCopenhagen), errors::tql);
}

}  // namespace
