// When a report is next due.
#pragma once

#include <cstdint>

#include "base/zone.h"

// The schedule kinds of a Report's `date`.
inline constexpr int32_t kScheduleNone = 0;
inline constexpr int32_t kScheduleDaily = 1;
inline constexpr int32_t kScheduleWeekly = 2;   // `frequency`: weekday, Monday 0
inline constexpr int32_t kScheduleMonthly = 3;  // `frequency`: day of the month
inline constexpr int32_t kScheduleFirstOfMonth = 4;
inline constexpr int32_t kScheduleFirstOfQuarter = 5;

// The first generation time after `last` for the schedule `date` with the
// time of day `time` (seconds after the local midnight, added as plain
// seconds) and `frequency`, in `zone`; 0 for `date` 0. Day and month steps
// keep the local clock time across daylight-saving changes. A `frequency`
// below 1 with `date` 3 logs "Corrected old frequency=" and the value and
// uses 1.
//
// The result is always later than `last`. Stored values outside the
// schedule's domain raise error::EParseError instead: a `date` outside 0 to
// 5 ("Unknown schedule kind N") or a `time` outside 0 to 86399 ("Schedule
// time out of range: N"). Raises what local() and compose() raise.
int64_t calc_next_generation_time(int64_t last, int32_t date, int64_t time, int32_t frequency,
                                  zone_t zone);
