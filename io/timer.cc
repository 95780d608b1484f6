#include "io/timer.h"

namespace io {

TimePoint Timer::due_in(Duration span) { return add_saturated(MonotonicClock::now(), span); }

bool Timer::is_ready() const { return MonotonicClock::now() >= deadline_; }

bool Timer::deadline(TimePoint& when) const {
  when = deadline_;
  return true;
}

}  // namespace io
