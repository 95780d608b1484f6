// Runs with TZ=Europe/Copenhagen (see CMakeLists.txt): the server's zone.
#include "analysis/plan.h"

#include <gtest/gtest.h>

#include <string>

#include "analysis/test_intervals.h"
#include "analysis/test_patches.h"
#include "base/error.h"
#include "tql/schema.h"

namespace {

using namespace testing_intervals;
using namespace testing_patches;

// Monday 5 January 2026 00:00 CET.
constexpr int32_t kMonday = 1767567600;
// Monday 23 March 2026 00:00 CET; daylight saving starts on Sunday 29th.
constexpr int32_t kMondayBeforeDst = 1774220400;

std::string planText(const tql::patch_t& p, int32_t start, int32_t end) {
  IntervalSet set;
  get_plan_intervals(set, &p, start, end);
  return render(set);
}

std::string range(int64_t b, int64_t e) {
  return "[" + std::to_string(b) + "," + std::to_string(e) + ")";
}

TEST(PlanIntervals, DayPlannerEveryDayMergedAndClipped) {
  // 08:00 + 9 h and 09:00 + 1 h merge; an inactive event adds nothing.
  const auto p =
      plan({dayPlanner("x", {event(true, 8 * kHour, 9 * kHour), event(true, 9 * kHour, kHour),
                             event(false, 0, 24 * kHour)})});
  // From Monday 12:00 to Wednesday 10:00: cut at both ends.
  const int32_t start = kMonday + 12 * kHour;
  const int32_t end = kMonday + 2 * kDay + 10 * kHour;
  EXPECT_EQ(range(start, kMonday + 17 * kHour) + " " +
                range(kMonday + kDay + 8 * kHour, kMonday + kDay + 17 * kHour) + " " +
                range(kMonday + 2 * kDay + 8 * kHour, end),
            planText(p, start, end));
}

TEST(PlanIntervals, EventsEndToEndBecomeOne) {
  const auto p =
      plan({dayPlanner("x", {event(true, 8 * kHour, kHour), event(true, 9 * kHour, kHour)})});
  EXPECT_EQ(range(kMonday + 8 * kHour, kMonday + 10 * kHour),
            planText(p, kMonday, kMonday + 12 * kHour));
}

TEST(PlanIntervals, WeekPlannerAcrossDaylightSaving) {
  // Mondays 08:00 for 2 hours, over two weeks. The second Monday is
  // reached by adding 7 x 86400 s to the first midnight: 01:00 CEST, so
  // the event falls at 09:00 local time. The third "Monday" lies past the
  // end and is clipped away.
  const auto week =
      object(schema::kWeekPlanner, {dayPlanner("monday", {event(true, 8 * kHour, 2 * kHour)}),
                                    dayPlanner("Tuesday", {event(true, 0, kHour)})});
  const int32_t start = kMondayBeforeDst;
  const int32_t end = start + 14 * kDay;
  const int32_t secondMonday0900 = 1774854000;  // 30 March 2026 09:00 CEST
  EXPECT_EQ(range(start + 8 * kHour, start + 10 * kHour) + " " +
                range(secondMonday0900, secondMonday0900 + 2 * kHour),
            planText(plan({week}), start, end));
}

TEST(PlanIntervals, DatePlannerDayBeforeStartTakesPartThroughTheClip) {
  // The day before start: date + one day is not before start, so its event
  // from 22:00 for 4 hours is kept and cut at start.
  const auto p =
      plan({datePlanner(kMonday - kDay, {event(true, 22 * kHour, 4 * kHour)}),
            datePlanner(kMonday + kDay, {event(true, kHour, kHour), event(false, 0, kHour)}),
            datePlanner(kMonday + 5 * kDay, {event(true, 0, kHour)})});
  EXPECT_EQ(range(kMonday, kMonday + 2 * kHour) + " " +
                range(kMonday + kDay + kHour, kMonday + kDay + 2 * kHour),
            planText(p, kMonday, kMonday + 2 * kDay));
}

TEST(PlanIntervals, PeriodBeginningAtZeroRunsToTheEnd) {
  const auto p = plan({dayPlanner("x", {event(true, 8 * kHour, kHour)})});
  IntervalSet set;
  get_plan_intervals(set, &p, 0, kMonday + 12 * kHour);
  ASSERT_FALSE(set.empty());
  // 1 January 1970 08:00 CET is 07:00 GMT.
  EXPECT_EQ(7 * kHour, set.begin()->begin.seconds);
  EXPECT_EQ(range(kMonday + 8 * kHour, kMonday + 9 * kHour), render({*set.rbegin()}));
}

TEST(PlanIntervals, UnknownChildRaises) {
  const auto p = plan({object(schema::kEvent)});
  IntervalSet set;
  try {
    get_plan_intervals(set, &p, 0, kDay);
    FAIL() << "no exception";
  } catch (const error::EFatal& e) {
    EXPECT_EQ("Illegal subclass of Plan", e.text());
  }
}

TEST(PlanIntervals, EndOfTimeDoesNotLoopForever) {
  const auto p = plan({dayPlanner("x", {event(true, 0, kHour)})});
  IntervalSet set;
  get_plan_intervals(set, &p, 0x7fffffff - 2 * kDay, kLargestTime);
  EXPECT_FALSE(set.empty());
}

TEST(ReportIntervals, NothingInsideThePeriodMeansTheWholePeriod) {
  const auto p = plan({datePlanner(kMonday + 10 * kDay, {event(true, 0, kHour)})});
  EXPECT_EQ(range(kMonday, kMonday + kDay), render(reportIntervals(&p, kMonday, kDay)));
  EXPECT_EQ(range(kMonday, kMonday + kDay), render(reportIntervals(nullptr, kMonday, kDay)));
}

}  // namespace
