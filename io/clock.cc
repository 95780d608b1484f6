#include "io/clock.h"

namespace io {

TimePoint add_saturated(TimePoint deadline, Duration span) {
  if (span == kInfinite || deadline == kNoDeadline) return kNoDeadline;
  if (span.count() > 0 && deadline.time_since_epoch() > kNoDeadline.time_since_epoch() - span)
    return kNoDeadline;
  return deadline + span;
}

}  // namespace io
