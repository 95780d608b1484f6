// Payload records of the scheduler's events (namespace scheduler). They
// live with the event classes because they carry a whole nested event.
#pragma once

#include <ostream>

#include "base/time_value.h"
#include "queues/event_io.h"

namespace scheduler {

// A point in time that prints as a date ("%a %b %d %H:%M:%S %Y", in the
// process's current zone); a TimeValue otherwise.
struct point_in_time_t : TimeValue {
  using TimeValue::TimeValue;
  point_in_time_t(const TimeValue& t) : TimeValue(t) {}  // NOLINT: a plain widening
};
void print_value(std::ostream& os, const point_in_time_t& t, int indent);

// Event 128 SCHEDULE_EVENT_ABSOLUTE: hand `ev` back to its `dest` at `time`.
struct Schedule_Event_Absolute_Data {
  point_in_time_t time;
  queues::event_ptr ev;

  template <class Self, class V>
  static void visit(Self& s, V& v) {
    v("time", s.time);
    v("ev", s.ev);
  }
  bool operator==(const Schedule_Event_Absolute_Data&) const = default;
};

// Event 129 SCHEDULE_EVENT_RELATIVE: the same after the span `time`.
struct Schedule_Event_Relative_Data {
  TimeValue time;
  queues::event_ptr ev;

  template <class Self, class V>
  static void visit(Self& s, V& v) {
    v("time", s.time);
    v("ev", s.ev);
  }
  bool operator==(const Schedule_Event_Relative_Data&) const = default;
};

}  // namespace scheduler
