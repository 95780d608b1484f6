#include "analysis/downtime.h"

#include <gtest/gtest.h>

#include "analysis/test_intervals.h"
#include "analysis/test_patches.h"
#include "tql/schema.h"

namespace {

using namespace testing_intervals;
using namespace testing_patches;

std::string render(const std::vector<DowntimeFolder>& folders) {
  std::string out;
  for (const DowntimeFolder& f : folders) {
    out += f.name + "\n";
    for (const DowntimeRow& r : f.rows) out += "  '" + r.label + "' " + r.text + "\n";
  }
  return out;
}

tql::patch_t selection(std::vector<tql::patch_t> plans) { return object(13, std::move(plans)); }

TEST(ScheduledDowntime, WeekDaysInReverseAndInactiveLeftOut) {
  const auto week =
      object(schema::kWeekPlanner,
             {dayPlanner("monday", {event(true, 8 * kHour, 30 * 60)}),
              dayPlanner("tuesday", {event(false, 0, kHour), event(true, 22 * kHour, 3 * kHour),
                                     event(true, 0, 59)})});
  const auto day = dayPlanner("daily", {event(true, 90, 3600)});
  // Only the last Plan counts.
  const auto rows = scheduledDowntime(
      selection({plan({dayPlanner("old", {event(true, 0, 1)})}), plan({week, day})}),
      timeZoneValue(0));
  EXPECT_EQ(
      "Weekly scheduled downtime\n"
      "  'tuesday' 22:00:00 to 25:00:00\n"
      "  ' ' 00:00:00 to 00:00:59\n"
      "  'monday' 08:00:00 to 08:30:00\n"
      "Daily scheduled downtime\n"
      "  'daily' 00:01:30 to 01:01:30\n",
      render(rows));
}

TEST(ScheduledDowntime, DateInTheGivenZoneWithItsOwnEvents) {
  // 4 January 2026 23:30 GMT is already the 5th one hour east.
  const auto date = datePlanner(1767569400, {event(true, kHour, kHour), event(false, 0, 1)});
  EXPECT_EQ("Downtime for date 2026-1-5\n  '' 01:00:00 to 02:00:00\n",
            render(scheduledDowntime(selection({plan({date})}), timeZoneValue(3600))));
}

TEST(ScheduledDowntime, NoPlanAndUnknownPlannerGiveNoFolder) {
  EXPECT_TRUE(scheduledDowntime(selection({}), timeZoneValue(0)).empty());
  EXPECT_TRUE(
      scheduledDowntime(selection({plan({object(schema::kEvent)})}), timeZoneValue(0)).empty());
}

}  // namespace
