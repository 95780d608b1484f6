// The main loop's port over the process's event queue and its neighbours:
// metering, the subscription walk, mailing, generation, and the database
// dialogs of the shutdown.
#pragma once

#include "analysis/generation_context.h"
#include "queues/childqueue.h"
#include "queues/qdialog.h"
#include "reporter/event_loop.h"

class QueuePort : public ReporterPort {
 public:
  // The queue must outlive the port.
  explicit QueuePort(queues::childqueue& queue) : queue_(queue), db_(queue) {}

  std::unique_ptr<queues::event> next_event() override;
  bool parent_at_end() override;
  bool answer_metering(const queues::event& e) override;
  void treat_report_tree(const tql::patch_t& root) override;
  void acknowledge(uint32_t request) override;
  void treat_mail_reply(dbms::Return_Tql_Select_Data& reply, uint32_t inresponse,
                        uint32_t sendto_select_id) override;
  void generate(const tql::id_t& report, tql::version_t version, int64_t time) override;
  void delete_surplus(const tql::id_t& report) override;
  void forget(uint32_t request) override;
  void shutdown() override;

 private:
  queues::childqueue& queue_;
  queues::QueueDatabase db_;
  // The presentation flags that carry over from one generation to the next.
  ReportFlags flags_;
};
