// Runs with TZ=America/New_York (see CMakeLists.txt), whose clocks change on
// other days than Europe's: times below are local times there, worked out
// with date(1).
#include <gtest/gtest.h>

#include "reporter/schedule.h"

namespace {

const zone_t kNewYork = timeZoneValue(kEnvironmentZone);
constexpr int64_t kTenOClock = 36000;

int64_t nextRun(int64_t last, int32_t date) {
  return calc_next_generation_time(last, date, kTenOClock, 0, kNewYork);
}

TEST(NewYorkSchedule, RunsInTheZoneOfTheEnvironment) {
  ASSERT_EQ("America/New_York", zoneText(kNewYork));
}

TEST(NewYorkSchedule, FirstOfMonthKeepsTheClockAcrossDaylightSaving) {
  // 5 March 2026 11:00 EST to 1 April 10:00 EDT.
  EXPECT_EQ(1775052000, nextRun(1772726400, kScheduleFirstOfMonth));
  // 1 November 2025 11:00 EDT (the clocks go back the day after) to
  // 1 December 10:00 EST.
  EXPECT_EQ(1764601200, nextRun(1762009200, kScheduleFirstOfMonth));
}

TEST(NewYorkSchedule, FirstOfQuarterKeepsTheClockAcrossDaylightSaving) {
  // 10 February 2026 11:00 EST to 1 April 10:00 EDT.
  EXPECT_EQ(1775052000, nextRun(1770739200, kScheduleFirstOfQuarter));
  // 20 October 2025 11:00 EDT to 1 January 2026 10:00 EST.
  EXPECT_EQ(1767279600, nextRun(1760972400, kScheduleFirstOfQuarter));
}

TEST(NewYorkSchedule, OnTheDayOfTheChangeTheTimeCountsFromMidnight) {
  // 1 November 2026 is the day the clocks go back, 25 hours long: as for
  // the other kinds, `time` is seconds after the composed midnight (00:00
  // EDT), which is 09:00 EST on the clock.
  EXPECT_EQ(1793541600, nextRun(1792508400, kScheduleFirstOfMonth));
}

}  // namespace
