// The clock of waits and deadlines.
//
// Deadlines are points on the monotonic clock, so that a change of the wall
// clock neither stretches nor cuts a time-out. A time-out is a span in
// microseconds; kInfinite means no limit.
#pragma once

#include <chrono>
#include <cstdint>

namespace io {

struct MonotonicClock {
  using duration = std::chrono::microseconds;
  using rep = duration::rep;
  using period = duration::period;
  using time_point = std::chrono::time_point<MonotonicClock>;
  static constexpr bool is_steady = true;
  // The current point; never goes back.
  static time_point now();
};

using TimePoint = MonotonicClock::time_point;
using Duration = MonotonicClock::duration;

// A time-out without a limit.
inline constexpr Duration kInfinite = Duration::max();
// The deadline that no timer reaches: "no deadline", compared for equality.
inline constexpr TimePoint kNoDeadline = TimePoint::max();

// `deadline` plus `span`, saturated at kNoDeadline; kInfinite gives
// kNoDeadline.
TimePoint add_saturated(TimePoint deadline, Duration span);

}  // namespace io
