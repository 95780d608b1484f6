#include "reporter/event_loop.h"

#include "base/error.h"
#include "base/fatal.h"
#include "base/log.h"
#include "queues/events.h"

void EventLoop::run() {
  while (!parent_gone_) {
    std::unique_ptr<queues::event> e = port_.next_event();
    if (!e) {
      // Only the parent's end of stream ends the loop; a lost sibling shows
      // at the next dialog with it.
      if (port_.parent_at_end()) parent_gone_ = true;
      continue;
    }
    handle(*e);
  }
}

void EventLoop::handle(queues::event& e) {
  if (port_.answer_metering(e)) return;
  if (shutting_down_) return;
  switch (e.type_index) {
    case queues::SYS_EXIT:
      start_shutdown();
      break;
    case queues::RETURN_TQL_SELECT:
      select_reply(e);
      break;
    case queues::SCHEDULED_REPORT_GENERATION: {
      const auto& order = dynamic_cast<const queues::Scheduled_Report_Generation_Event&>(e).data;
      tql::id_t id = order.id;
      port_.generate(id, order.version, order.time);
      port_.delete_surplus(id);
      break;
    }
    default:
      assertion_failed("Got unknown event from parent: " + std::to_string(e.type_index));
  }
}

void EventLoop::select_reply(queues::event& e) {
  auto* reply = dynamic_cast<queues::Return_Tql_Select_Event*>(&e);
  TAVREL_ASSERT(reply != nullptr, "Got unknown event from parent: " + std::to_string(e.type_index));
  dbms::Return_Tql_Select_Data& data = reply->data;
  if (e.inresponse != report_select_id_) {
    port_.treat_mail_reply(data);
    return;
  }
  if (data.status != 0) {
    std::string text = "Error in select (" + std::to_string(data.status);
    if (!data.details.empty()) text += ", " + data.details.front().msg;
    throw error::EFatal(text + ")");
  }
  if (log_tracing()) log("Got new subscription update", kLogTrace);
  TAVREL_ASSERT(data.res.size() <= 1, "More than one result");
  if (data.res.size() == 1) port_.treat_report_tree(data.res.front());
  port_.acknowledge(report_select_id_);
}

void EventLoop::start_shutdown() {
  log("Reporter initiating shutdown");
  shutting_down_ = true;
  port_.forget(report_select_id_);
  port_.forget(sendto_select_id_);
  port_.shutdown();
}
