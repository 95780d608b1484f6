// The stand-in scheduler (queue 1): keeps each SCHEDULE_EVENT_ABSOLUTE and
// sends its nested event, unchanged, to the nested event's `dest` at the
// stated time; a time in the past goes out at the next round. With a log,
// each request taken is written there as a line (see write_log_line):
//   DATE CLOCK schedule: SCHEDULED_REPORT_GENERATION to rept at 1767603600
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <ostream>

#include "queues/childqueue.h"
#include "queues/event.h"

namespace host {

class SchedulerService {
 public:
  explicit SchedulerService(std::ostream* log = nullptr) : log_(log) {}

  // Takes a scheduling request; other events are ignored.
  void handle(const queues::event& e);
  // Sends every event due at or before `now` (seconds since 1970); returns
  // how many.
  size_t send_due(queues::childqueue& queue, double now);
  // The time of the earliest waiting event.
  std::optional<double> next_time() const;
  size_t waiting() const { return waiting_.size(); }

 private:
  std::ostream* log_;
  std::multimap<double, std::unique_ptr<queues::event>> waiting_;
};

}  // namespace host
