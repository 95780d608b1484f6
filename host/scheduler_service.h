// The stand-in scheduler (queue 1): keeps each SCHEDULE_EVENT_ABSOLUTE and
// sends its nested event, unchanged, to the nested event's `dest` at the
// stated time; a time in the past goes out at the next round.
#pragma once

#include <map>
#include <memory>
#include <optional>

#include "queues/childqueue.h"
#include "queues/event.h"

namespace host {

class SchedulerService {
 public:
  // Takes a scheduling request; other events are ignored.
  void handle(const queues::event& e);
  // Sends every event due at or before `now` (seconds since 1970).
  void send_due(queues::childqueue& queue, double now);
  // The time of the earliest waiting event.
  std::optional<double> next_time() const;
  size_t waiting() const { return waiting_.size(); }

 private:
  std::multimap<double, std::unique_ptr<queues::event>> waiting_;
};

}  // namespace host
