// The stored side of report mailing: the report, its instance and its
// incident series through the process's queue. Everything else is in
// report_mail.cc and mail_jobs.cc, which tests run without a queue.
#include "mailing/report_mailing.h"

#include <memory>

#include "base/fatal.h"
#include "base/log.h"
#include "base/time_value.h"
#include "mailing/mail_jobs.h"
#include "mailing/report_mail.h"
#include "queues/childqueue.h"
#include "queues/report_incident.h"
#include "queues/tql_operations.h"
#include "report/server_report.h"
#include "report/server_values.h"
#include "resource/collection.h"
#include "tql/errors.h"
#include "tql/property.h"
#include "tql/schema.h"

namespace {

// Whether the instance's generation is over: `workerNode` is not a set
// value other than 0.
bool finished(const tql::patch_t& instance) {
  const auto* worker =
      dynamic_cast<const tql::property_uint_t*>(instance.find_property(schema::kWorkerNode));
  return worker == nullptr || worker->is_null || worker->value == 0;
}

void send_stored_report(const std::vector<std::string>& addresses, const tql::id_t& instance_id,
                        const tql::id_t& report_id) {
  TAVREL_ASSERT(queues::global_queue() != nullptr, "Report mailing needs the process's queue");
  queues::childqueue& queue = *queues::global_queue();
  const std::unique_ptr<tql::patch_t> report = tql::get_object(report_id, schema::kReport, queue);
  if (!report) {
    log("Unable to get report object for report mailing");
    return;
  }
  const std::unique_ptr<tql::patch_t> stored =
      tql::get_object(instance_id, schema::kReportInstance, queue);
  if (!stored) {
    log("Unable to fetch report instance object for order property");
    return;
  }
  const auto* order =
      dynamic_cast<const tql::property_uint_t*>(stored->find_property(schema::kOrder));
  TAVREL_ASSERT(order != nullptr, "Couldn't get order property from template");
  // The instance is opened once it is known to exist, so that a gone
  // instance is told as such rather than as a failed read.
  const std::unique_ptr<report::ReportInstance> instance =
      report::open_server_instance(instance_id);

  const ReportMail mail{addresses, instance.get(), report::stored::zone_of(*report),
                        order->is_null ? 0 : order->value};
  send_report_mail(mail, configured_mail_settings(), resource::resources(),
                   [&report_id](uint32_t severity, const std::string& text) {
                     queues::report_incident(report_id, severity, text, TimeValue::now());
                   });
}

// Jobs are mailed and deleted through the process's queue.
class StoredMailing : public MailingBackend {
 public:
  void mail(const std::vector<std::string>& addresses, const tql::id_t& instance_id,
            const tql::id_t& report_id) override {
    mail_report(addresses, instance_id, report_id);
  }
  void incident(const tql::id_t& report_id, uint32_t severity, const std::string& text) override {
    queues::report_incident(report_id, severity, text, TimeValue::now());
  }
  void delete_job(const tql::id_t& id, tql::version_t version) override {
    tql::delete_object(id, version);
  }
  bool job_due(const tql::id_t& instance_id, const tql::id_t& job_id,
               tql::version_t version) override {
    queues::childqueue& queue = *queues::global_queue();
    const std::unique_ptr<tql::patch_t> job = tql::get_object(job_id, schema::kReportSendTo, queue);
    if (!job || job->version != version) return false;
    const std::unique_ptr<tql::patch_t> instance =
        tql::get_object(instance_id, schema::kReportInstance, queue);
    return instance && finished(*instance);
  }
};

}  // namespace

void mail_report(const std::vector<std::string>& addresses, tql::id_t instance_id,
                 tql::id_t report_id) {
  if (addresses.empty()) return;
  try {
    send_stored_report(addresses, instance_id, report_id);
  } catch (const errors::tql& e) {
    log("Cannot mail report: " + e.text());
  }
}

void treat_mail_reply(dbms::Return_Tql_Select_Data& reply, uint32_t inresponse,
                      uint32_t sendto_select_id) {
  StoredMailing backend;
  serve_mail_reply(reply, inresponse, sendto_select_id, backend);
}
