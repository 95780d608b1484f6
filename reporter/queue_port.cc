#include "reporter/queue_port.h"

#include "base/time_value.h"
#include "dbms/tql_operations.h"
#include "mailing/report_mailing.h"
#include "queues/events.h"
#include "queues/metering.h"
#include "queues/qdialog.h"
#include "reporter/generation.h"
#include "reporter/subscriptions.h"
#include "reporter/surplus_instances.h"
#include "tql/property.h"
#include "tql/schema.h"

namespace {

// The subscription walk's actions in the process: deletes, updates and
// generations in the database, the scheduling request as a one-way send to
// the scheduler.
class QueueActions : public ReportActions {
 public:
  QueueActions(queues::childqueue& queue, dbms::Database& db, ReportFlags& flags)
      : queue_(queue), db_(db), flags_(flags) {}

  void delete_object(const tql::id_t& id, tql::version_t version) override {
    tql::delete_object(db_, id, version);
  }
  void set_progress(const tql::id_t& id, tql::version_t version, uint32_t progress) override {
    std::vector<tql::property_ptr> props;
    props.emplace_back(tql::make_property<tql::kind::kUint>(schema::kProgress, progress));
    tql::update_object(db_, id, version, std::move(props), 0);
  }
  void schedule(const tql::id_t& report, tql::version_t version, int64_t next) override {
    queues::Schedule_Event_Absolute_Event request(queues::schd, 0, {});
    request.data.time = TimeValue(static_cast<int32_t>(next));
    request.data.ev = queues::event_ptr(std::make_unique<queues::Scheduled_Report_Generation_Event>(
        queues::rept, 0, reporter::Scheduled_Report_Generation_Data{report, version, next}));
    queue_.send(request);
  }
  bool generate(const tql::id_t& report, tql::version_t version, int64_t order_time) override {
    const GenerationOutcome outcome = generate_report_outcome(
        db_, flags_, report, version, TimeValue(static_cast<int32_t>(order_time)));
    if (outcome.stale) return false;
    delete_surplus_instances(db_, report);
    return true;
  }
  int64_t now() override { return TimeValue::now().seconds; }

 private:
  queues::childqueue& queue_;
  dbms::Database& db_;
  ReportFlags& flags_;
};

}  // namespace

std::unique_ptr<queues::event> QueuePort::next_event() { return queue_.next_event(); }

bool QueuePort::parent_at_end() { return queue_.is_at_end(queues::main); }

bool QueuePort::answer_metering(const queues::event& e) {
  return queues::handle_metering_event(e, queue_);
}

void QueuePort::treat_report_tree(const tql::patch_t& root) {
  QueueActions actions(queue_, db_, flags_);
  treat_subscriptions(root, actions);
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
