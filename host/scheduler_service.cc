#include "host/scheduler_service.h"

#include "host/parent_service.h"
#include "queues/event_names.h"
#include "queues/events.h"

namespace host {

void SchedulerService::handle(const queues::event& e) {
  const auto* request = dynamic_cast<const queues::Schedule_Event_Absolute_Event*>(&e);
  if (!request || !request->data.ev) return;
  double when = request->data.time.seconds + request->data.time.microseconds / 1e6;
  if (log_ != nullptr) {
    write_log_line(*log_, "schedule: " + queues::event_name(request->data.ev->type_index) + " to " +
                              queues::queue_name(request->data.ev->dest) + " at " +
                              std::to_string(request->data.time.seconds));
  }
  waiting_.emplace(when, request->data.ev->clone());
}

size_t SchedulerService::send_due(queues::childqueue& queue, double now) {
  size_t sent = 0;
  while (!waiting_.empty() && waiting_.begin()->first <= now) {
    std::unique_ptr<queues::event> e = std::move(waiting_.begin()->second);
    waiting_.erase(waiting_.begin());
    queue.send(*e);
    ++sent;
  }
  return sent;
}

std::optional<double> SchedulerService::next_time() const {
  if (waiting_.empty()) return std::nullopt;
  return waiting_.begin()->first;
}

}  // namespace host
