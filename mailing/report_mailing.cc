// The stored side of report mailing: the report, its instance and its
// incident series in the database. Everything else is in
// report_mail.cc and mail_jobs.cc, which tests run without a queue.
#include "mailing/report_mailing.h"

#include <memory>

#include "base/fatal.h"
#include "base/log.h"
#include "base/time_value.h"
#include "dbms/report_incident.h"
#include "dbms/tql_operations.h"
#include "mailing/mail_jobs.h"
#include "mailing/report_mail.h"
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

void send_stored_report(dbms::Database& db, const std::vector<std::string>& addresses,
                        const tql::id_t& instance_id, const tql::id_t& report_id) {
  const std::unique_ptr<tql::patch_t> report = tql::get_object(db, report_id, schema::kReport);
  if (!report) {
    log("Unable to get report object for report mailing");
    return;
  }
  const std::unique_ptr<tql::patch_t> stored =
      tql::get_object(db, instance_id, schema::kReportInstance);
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
      report::open_server_instance(db, instance_id);

  const ReportMail mail{addresses, instance.get(), report::stored::zone_of(*report),
                        order->is_null ? 0 : order->value};
  send_report_mail(mail, configured_mail_settings(), resource::resources(),
                   [&db, &report_id](uint32_t severity, const std::string& text) {
                     dbms::report_incident(db, report_id, severity, text, TimeValue::now());
                   });
}

// Jobs are mailed, checked and deleted in the database.
class StoredMailing : public MailingBackend {
 public:
  explicit StoredMailing(dbms::Database& db) : db_(db) {}

  void mail(const std::vector<std::string>& addresses, const tql::id_t& instance_id,
            const tql::id_t& report_id) override {
    mail_report(db_, addresses, instance_id, report_id);
  }
  void incident(const tql::id_t& report_id, uint32_t severity, const std::string& text) override {
    dbms::report_incident(db_, report_id, severity, text, TimeValue::now());
  }
  void delete_job(const tql::id_t& id, tql::version_t version) override {
    tql::delete_object(db_, id, version);
  }
  bool job_due(const tql::id_t& instance_id, const tql::id_t& job_id,
               tql::version_t version) override {
    const std::unique_ptr<tql::patch_t> job = tql::get_object(db_, job_id, schema::kReportSendTo);
    if (!job || job->version != version) return false;
    const std::unique_ptr<tql::patch_t> instance =
        tql::get_object(db_, instance_id, schema::kReportInstance);
    return instance && finished(*instance);
  }

 private:
  dbms::Database& db_;
};

}  // namespace

void mail_report(dbms::Database& db, const std::vector<std::string>& addresses,
                 tql::id_t instance_id, tql::id_t report_id) {
  if (addresses.empty()) return;
  try {
    send_stored_report(db, addresses, instance_id, report_id);
  } catch (const errors::tql& e) {
    log("Cannot mail report: " + e.text());
  }
}

void treat_mail_reply(dbms::Database& db, dbms::Return_Tql_Select_Data& reply, uint32_t inresponse,
                      uint32_t sendto_select_id) {
  StoredMailing backend(db);
  serve_mail_reply(reply, inresponse, sendto_select_id, backend);
}
