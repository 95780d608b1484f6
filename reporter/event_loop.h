// The main loop of the process: takes the events one by one and dispatches
// them, until the parent has closed its stream.
//
// Metering requests are answered before anything else, also while shutting
// down. Then, unless SYS_EXIT has come (after which every other event is
// dropped unread): SYS_EXIT starts the shutdown, RETURN_TQL_SELECT is a
// subscription reply, SCHEDULED_REPORT_GENERATION a due generation. Any
// other event is the fatal assertion "Got unknown event from parent: N".
#pragma once

#include <cstdint>
#include <memory>

#include "dbms/tql_records.h"
#include "queues/childqueue.h"
#include "queues/event.h"
#include "tql/id.h"
#include "tql/patch.h"

// What the loop needs of the world around it. The production version works
// over the event queue (QueuePort); tests record the calls.
class ReporterPort {
 public:
  virtual ~ReporterPort() = default;
  // The next event, owned by the caller; null when a sibling's stream ended.
  virtual std::unique_ptr<queues::event> next_event() = 0;
  // The parent's (queue 0's) stream has ended.
  virtual bool parent_at_end() = 0;
  // Answers a metering request; false for any other event.
  virtual bool answer_metering(const queues::event& e) = 0;
  // treat_subscriptions on the one result of a report subscription reply.
  virtual void treat_report_tree(const tql::patch_t& root) = 0;
  // TQL_ACKNOWLEDGE of the subscription `request` to the database.
  virtual void acknowledge(uint32_t request) = 0;
  // A reply for any other subscription (`inresponse`): the mailing's, whose
  // number is `sendto_select_id`.
  virtual void treat_mail_reply(dbms::Return_Tql_Select_Data& reply, uint32_t inresponse,
                                uint32_t sendto_select_id) = 0;
  // generate_report; its result is not looked at.
  virtual void generate(const tql::id_t& report, tql::version_t version, int64_t time) = 0;
  virtual void delete_surplus(const tql::id_t& report) = 0;
  // tql_forget of the subscription `request`; the reply is dropped.
  virtual void forget(uint32_t request) = 0;
  // Starts the messenger's shutdown towards the parent.
  virtual void shutdown() = 0;
};

class EventLoop {
 public:
  EventLoop(ReporterPort& port, uint32_t report_select_id, uint32_t sendto_select_id)
      : port_(port), report_select_id_(report_select_id), sendto_select_id_(sendto_select_id) {}

  // Runs until the parent's stream has ended. Raises error::EFatal "Error in
  // select (STATUS, DETAIL)" for an error status on the report
  // subscription, and what the handlers raise.
  void run();
  // One event of a turn: metering, the shutdown filter, dispatch.
  void handle(queues::event& e);

  bool shutting_down() const { return shutting_down_; }
  bool parent_gone() const { return parent_gone_; }

 private:
  void select_reply(queues::event& e);
  void start_shutdown();

  ReporterPort& port_;
  const uint32_t report_select_id_;
  const uint32_t sendto_select_id_;
  bool shutting_down_ = false;
  bool parent_gone_ = false;
};

// The loop over the process's queue, with the two subscriptions' numbers.
void event_loop(queues::childqueue& queue, uint32_t report_select_id, uint32_t sendto_select_id);
