#include "reporter/queue_port.h"

#include "base/time_value.h"
#include "mailing/report_mailing.h"
#include "queues/events.h"
#include "queues/metering.h"
#include "queues/qdialog.h"
#include "reporter/generation.h"
#include "reporter/subscriptions.h"
#include "reporter/surplus_instances.h"

std::unique_ptr<queues::event> QueuePort::next_event() { return queue_.next_event(); }

bool QueuePort::parent_at_end() { return queue_.is_at_end(queues::main); }

bool QueuePort::answer_metering(const queues::event& e) {
  return queues::handle_metering_event(e, queue_);
}

void QueuePort::treat_report_tree(const tql::patch_t& root) {
  treat_subscriptions(root, queue_, db_, flags_);
}

void QueuePort::acknowledge(uint32_t request) {
  queue_.send(queues::Tql_Acknowledge_Event(queues::dbms, 0, {request}));
}

void QueuePort::treat_mail_reply(dbms::Return_Tql_Select_Data& reply, uint32_t inresponse,
                                 uint32_t sendto_select_id) {
  ::treat_mail_reply(db_, reply, inresponse, sendto_select_id);
}

void QueuePort::generate(const tql::id_t& report, tql::version_t version, int64_t time) {
  generate_report(db_, flags_, report, version, TimeValue(static_cast<int32_t>(time)));
}

void QueuePort::delete_surplus(const tql::id_t& report) { delete_surplus_instances(db_, report); }

void QueuePort::forget(uint32_t request) { db_.forget(dbms::Tql_Forget_Data{request}); }

void QueuePort::shutdown() { queue_.shutdown(); }

void event_loop(queues::childqueue& queue, uint32_t report_select_id, uint32_t sendto_select_id) {
  QueuePort port(queue);
  EventLoop(port, report_select_id, sendto_select_id).run();
}
