#include <time.h>

#include "io/clock.h"

namespace io {

MonotonicClock::time_point MonotonicClock::now() {
  timespec ts{};
  // CLOCK_MONOTONIC can't fail on Linux with a valid pointer.
  clock_gettime(CLOCK_MONOTONIC, &ts);
  return time_point(duration(int64_t{ts.tv_sec} * 1000000 + ts.tv_nsec / 1000));
}

}  // namespace io
