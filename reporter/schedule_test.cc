// Runs with TZ=Europe/Copenhagen (see CMakeLists.txt): times below are
// local times there, worked out with date(1).
#include "reporter/schedule.h"

#include <gtest/gtest.h>

#include "base/error.h"

namespace {

const zone_t kScheduleZone = timeZoneValue(kEnvironmentZone);
constexpr int64_t k10h = 36000;

int64_t next(int64_t last, int32_t date, int32_t frequency = 0, int64_t time = k10h) {
  return calc_next_generation_time(last, date, time, frequency, kScheduleZone);
}

TEST(NextGeneration, DailyTodayUntilTheTimeThenTomorrow) {
  EXPECT_EQ(1767603600, next(1767603540, kScheduleDaily));  // 09:59 -> 10:00
  EXPECT_EQ(1767690000, next(1767603600, kScheduleDaily));  // 10:00 -> tomorrow
  EXPECT_EQ(0, next(1767603600, kScheduleNone));
}

TEST(NextGeneration, TimeIsPlainSecondsAfterTheComposedMidnight) {
  // 29 March 2026, the clocks go forward: 10 h after midnight CET is 11:00.
  EXPECT_EQ(1774774800, next(1774740600, kScheduleDaily));
}

TEST(NextGeneration, Weekly) {
  // Monday 5 January 11:00, after the time.
  EXPECT_EQ(1768208400, next(1767607200, kScheduleWeekly, 0));   // Monday: 7 days on
  EXPECT_EQ(1767776400, next(1767607200, kScheduleWeekly, 2));   // Wednesday
  EXPECT_EQ(1768208400, next(1767607200, kScheduleWeekly, -7));  // -7 - 0 -> 7 days
  // Before the time the weekday is not looked at: today.
  EXPECT_EQ(1767603600, next(1767603540, kScheduleWeekly, 3));
  // Across the change to summer time the clock time stays 10:00.
  EXPECT_EQ(1774857600, next(1774260000, kScheduleWeekly, 0));
}

TEST(NextGeneration, MonthlyOnADay) {
  // 31 January 11:00, frequency 31: "31 February" is 3 March.
  EXPECT_EQ(1772528400, next(1769853600, kScheduleMonthly, 31));
  // 20 January 11:00, frequency 5: the 5th of the next month.
  EXPECT_EQ(1770282000, next(1768903200, kScheduleMonthly, 5));
  // Across a change of daylight saving the clock time stays 10:00: 20 March
  // (CET) to 5 April (CEST), and 20 October (CEST) to 5 November (CET).
  EXPECT_EQ(1775376000, next(1774000800, kScheduleMonthly, 5));
  EXPECT_EQ(1793869200, next(1792486800, kScheduleMonthly, 5));
  // Frequency 0 is taken as 1: 1 February.
  EXPECT_EQ(1769936400, next(1768903200, kScheduleMonthly, 0));
}

TEST(NextGeneration, FirstOfMonthAndOfQuarter) {
  EXPECT_EQ(1769936400, next(1768903200, kScheduleFirstOfMonth));
  // December: January of the next year.
  EXPECT_EQ(1798794000, next(1797332400, kScheduleFirstOfQuarter));
}

TEST(NextGeneration, FirstOfMonthAndOfQuarterKeepTheClockAcrossDaylightSaving) {
  // From winter time to 1 April 10:00 CEST: 20 March, and 10 February for
  // the quarter.
  EXPECT_EQ(1775030400, next(1774000800, kScheduleFirstOfMonth));
  EXPECT_EQ(1775030400, next(1770717600, kScheduleFirstOfQuarter));
  // From summer time to 10:00 CET: 20 October to 1 November, and to
  // 1 January for the quarter.
  EXPECT_EQ(1793523600, next(1792486800, kScheduleFirstOfMonth));
  EXPECT_EQ(1798794000, next(1792486800, kScheduleFirstOfQuarter));
}

TEST(NextGeneration, StoredValuesOutsideTheScheduleRaise) {
  EXPECT_THROW(next(1767603600, 6), error::EParseError);
  EXPECT_THROW(next(1767603600, -1), error::EParseError);
  EXPECT_THROW(next(1767603600, kScheduleDaily, 0, 86400), error::EParseError);
  EXPECT_THROW(next(1767603600, kScheduleFirstOfMonth, 0, -1), error::EParseError);
}

}  // namespace
