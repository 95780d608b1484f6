#include "reporter/schedule.h"

#include <string>

#include "base/error.h"
#include "base/fatal.h"
#include "base/log.h"

namespace {

constexpr int64_t kDaySeconds = 86400;

void checkSchedule(int32_t date, int64_t time) {
  if (date < kScheduleNone || date > kScheduleFirstOfQuarter) {
    throw error::EParseError("Unknown schedule kind " + std::to_string(date));
  }
  if (time < 0 || time >= kDaySeconds) {
    throw error::EParseError("Schedule time out of range: " + std::to_string(time));
  }
}

// Days from weekday `w` (Monday 0) to weekday `frequency`: 1 to 7 when the
// difference is 0 or negative, else the difference itself.
int daysToWeekday(int32_t frequency, int w) {
  int64_t d = int64_t{frequency} - w;
  if (d <= 0) d += 7 * (-d / 7 + 1);
  return static_cast<int>(d);
}

int64_t weekly(int64_t last, int64_t next, const tm_t& tm, int32_t frequency, zone_t zone) {
  if (last < next) return next;
  return add_days(next, daysToWeekday(frequency, (tm.wday + 6) % 7), zone);
}

int64_t monthly(int64_t last, int64_t next, const tm_t& tm, int32_t frequency, zone_t zone) {
  if (frequency < 1) {
    log("Corrected old frequency=" + std::to_string(frequency));
    frequency = 1;
  }
  next = add_days(next, frequency - tm.mday, zone);
  return last < next ? next : add_month(next, zone);
}

// `time` after the first day of month `month` (0-based, may overflow) of
// `tm`'s year. `tm` was composed already and carries the daylight-saving
// mark of the last run's day; that first of the month may have the other
// one, so the mark is cleared and the platform finds the right midnight.
int64_t firstOfMonth(tm_t tm, int month, int64_t time, zone_t zone) {
  tm.mday = 1;
  tm.mon = month;
  tm.isdst = -1;
  return time + compose(tm, zone);
}

}  // namespace

int64_t calc_next_generation_time(int64_t last, int32_t date, int64_t time, int32_t frequency,
                                  zone_t zone) {
  checkSchedule(date, time);
  tm_t tm = local(last, zone);
  tm.hour = tm.min = tm.sec = 0;
  tm.isdst = -1;
  int64_t next = time + compose(tm, zone);
  switch (date) {
    case kScheduleNone:
      return 0;
    case kScheduleDaily:
      if (last >= next) next = add_days(next, 1, zone);
      break;
    case kScheduleWeekly:
      next = weekly(last, next, tm, frequency, zone);
      break;
    case kScheduleMonthly:
      next = monthly(last, next, tm, frequency, zone);
      break;
    case kScheduleFirstOfMonth:
      next = firstOfMonth(tm, tm.mon + 1, time, zone);
      break;
    default:  // kScheduleFirstOfQuarter
      next = firstOfMonth(tm, (tm.mon / 3 + 1) * 3, time, zone);
      break;
  }
  TAVREL_ASSERT(next > last, "calc_next_generation_time about to return non-increasing time");
  return next;
}
