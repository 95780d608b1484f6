#include "base/zone.h"

#include <gtest/gtest.h>

#include "base/error.h"
#include "base/time_text.h"
#include "base/time_value.h"

namespace {

zone_t zone(int32_t v) { return timeZoneValue(v); }

TEST(Zone, TextOfFixedZones) {
  EXPECT_EQ("GMT-0", zoneText(zone(0)));
  EXPECT_EQ("GMT-1", zoneText(zone(3600)));
  EXPECT_EQ("GMT1:30", zoneText(zone(-5400)));
  EXPECT_EQ("GMT-1:01:01", zoneText(zone(3661)));
  // Zero minutes are left out even when seconds follow.
  EXPECT_EQ("GMT0:01", zoneText(zone(-1)));
  EXPECT_EQ("GMT-2:05", zoneText(zone(7205)));
  EXPECT_EQ("GMT596523:14:08", zoneText(zone(-0x7fffffff - 1)));
}

TEST(Zone, LocalFollowsTheZone) {
  tm_t tm = local(0, zone(3600));
  EXPECT_EQ(1, tm.hour);
  EXPECT_EQ(70, tm.year);
  tm = local(0, zone(-5400));
  EXPECT_EQ(22, tm.hour);
  EXPECT_EQ(30, tm.min);
  EXPECT_EQ(31, tm.mday);
  EXPECT_EQ(11, tm.mon);
  EXPECT_EQ(69, tm.year);
  EXPECT_EQ(3, tm.wday);
  EXPECT_EQ(364, tm.yday);
}

TEST(Zone, ComposeInvertsLocalAndNormalises) {
  const int64_t t = 1767571200 + 8 * 3600 + 3 * 60 + 9;
  for (int32_t z : {0, 3600, -5400, 3661}) {
    tm_t tm = local(t, zone(z));
    EXPECT_EQ(t, compose(tm, zone(z))) << z;
  }
  tm_t tm = local(t, zone(0));
  tm.mday = 32;  // 32 January is 1 February
  compose(tm, zone(0));
  EXPECT_EQ(1, tm.mon);
  EXPECT_EQ(1, tm.mday);
}

TEST(Zone, ComposeFailureNamesAllFields) {
  tm_t tm;
  tm.year = 0x7fffffff;
  tm.mon = 0x7fffffff;
  try {
    compose(tm, zone(0));
    FAIL() << "no exception";
  } catch (const error::ESystemError& e) {
    EXPECT_EQ(0u, e.text().find("Couldn't compose time from tm: (s:0 m:0 h:0 md:0 mo:"))
        << e.text();
    EXPECT_NE(std::string::npos, e.text().find(" i:-1")) << e.text();
  }
}

TEST(Zone, LocalOfAnUnrepresentableTimeRaises) {
  EXPECT_THROW(local(INT64_MAX, zone(0)), error::ESystemError);
}

TEST(Zone, CalendarSteps) {
  const int64_t jan31 = 1769817600 + 12 * 3600;  // 2026-01-31 12:00 GMT
  EXPECT_EQ("2026-03-03 12:00:00", time2str(add_month(jan31, zone(0)), zone(0)));
  const int64_t jan31_2024 = 1706702400;  // 2024-01-31 12:00 GMT, a leap year
  EXPECT_EQ("2024-03-02 12:00:00", time2str(add_month(jan31_2024, zone(0)), zone(0)));
  EXPECT_EQ("2026-02-01 12:00:00", time2str(add_day(jan31, zone(0)), zone(0)));
  EXPECT_EQ("2025-12-31 12:00:00", time2str(add_days(jan31, -31, zone(0)), zone(0)));
  // Midnight in GMT+1 is still midnight a day later.
  const int64_t local_midnight = 1767571200 - 3600;
  EXPECT_EQ(local_midnight + 86400, add_day(local_midnight, zone(3600)));
  EXPECT_THROW(add_days(jan31, 0x7fffffff, zone(0)), error::ERange);
}

TEST(TimeText, Texts) {
  const int64_t jan5 = 1767571200 + 8 * 3600 + 3 * 60 + 9;
  EXPECT_EQ("2026-01-05 08:03:09", time2str(jan5, zone(0)));
  EXPECT_EQ("2026-1-5", date2str(jan5, zone(0)));
  EXPECT_EQ("2026-1-4", date2str(jan5, zone(-9 * 3600)));
  EXPECT_EQ("1970-01-01 00:00:00", time2str(0, zone(0)));
  EXPECT_EQ("1970-01-01 02:00:00", time2str(0, zone(7200)));
  EXPECT_EQ("1969-12-31 23:00:00", time2str(0, zone(-3600)));
  EXPECT_EQ("00:00:00", clock2str(0));
  EXPECT_EQ("01:01:01", clock2str(3661));
  EXPECT_EQ("24:00:00", clock2str(86400));
  EXPECT_EQ("1 year", period2str(0));
  EXPECT_EQ("Infinite", period2str(6));
  EXPECT_EQ("1 hour", period2str(7));
}

TEST(TimeTextDeathTest, RuledOutValuesAreFatal) {
  EXPECT_DEATH(time2str(-1, zone(0)), "time2str\\(\\): Parameter less than 0");
  EXPECT_DEATH(period2str(8), "Unknown value \\(8\\) in period2str");
  EXPECT_DEATH(period2str(-1), "Unknown value \\(-1\\) in period2str");
}

TEST(TimeValue, FormatInTheCurrentZone) {
  applyZone(zone(7200));
  EXPECT_EQ("02:00", TimeValue(0).format("%H:%M", true));
}

}  // namespace
