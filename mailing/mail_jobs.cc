#include "mailing/mail_jobs.h"

#include "base/log.h"
#include "dbms/report_incident.h"
#include "tql/catalogue.h"
#include "tql/errors.h"
#include "tql/property.h"
#include "tql/schema.h"

namespace {

// The instance's number when the tree holds it, else 0.
uint32_t order_of(const tql::patch_t& instance) {
  const auto* order =
      dynamic_cast<const tql::property_uint_t*>(instance.find_property(schema::kOrder));
  return order != nullptr && !order->is_null ? order->value : 0;
}

// The job's addresses, or null when its destination is not a list.
const tql::property_string_list_t* destination_of(const tql::patch_t& job) {
  const auto* list =
      dynamic_cast<const tql::property_string_list_t*>(job.find_property(schema::kDestination));
  return list != nullptr && !list->is_null ? list : nullptr;
}

void trace(const std::string& text) {
  if (log_tracing()) log(text, kLogTrace);
}

void report_unknown_destination(const tql::id_t& report_id, uint32_t order,
                                MailingBackend& backend) {
  log("Got unknown destination while sending report as email ");
  std::string text = "Could not get email addresses while sending report";
  if (order != 0) text += " number " + std::to_string(order);
  try {
    backend.incident(report_id, dbms::kIncidentFailure, text + ".");
  } catch (const errors::tql& e) {
    trace("Could not write the incident of a ReportSendTo job: " + e.text());
  }
}

// False only when the job is known not to be due.
bool due(const tql::patch_t& instance, const tql::patch_t& job, MailingBackend& backend) {
  try {
    return backend.job_due(instance.id, job.id, job.version);
  } catch (const errors::tql& e) {
    trace("Could not look up ReportSendTo job, serving it: " + e.text());
    return true;
  }
}

}  // namespace

void treat_send_jobs(const tql::patch_t& report, MailingBackend& backend) {
  for (const tql::patch_t& instance : report.children) {
    const uint32_t order = order_of(instance);
    for (const tql::patch_t& job : instance.children) {
      if (!due(instance, job, backend)) {
        trace("ReportSendTo job " + job.id.text() + " is not due, skipping.");
        continue;
      }
      if (const auto* list = destination_of(job)) {
        backend.mail({list->value.begin(), list->value.end()}, instance.id, report.id);
      } else {
        report_unknown_destination(report.id, order, backend);
      }
      try {
        backend.delete_job(job.id, job.version);
      } catch (const errors::tql&) {
        trace("Could not delete ReportSendTo job, skipping.");
      }
    }
  }
}

void serve_mail_reply(const dbms::Return_Tql_Select_Data& reply, uint32_t inresponse,
                      uint32_t sendto_select_id, MailingBackend& backend) {
  if (inresponse != sendto_select_id) {
    log("Tried to send a report as mail, but got unsubscribe request");
    return;
  }
  if (reply.status != 0) {
    if (reply.details.empty()) {
      log("Alarm: error in select (" + std::to_string(reply.status) + ")");
    } else {
      log("Report: error in select (" + std::to_string(reply.status) + ", " +
          reply.details.front().msg + ")");
    }
    return;
  }
  if (reply.res.empty()) return;
  std::vector<const tql::patch_t*> stack = {&reply.res.front()};
  while (!stack.empty()) {
    const tql::patch_t& object = *stack.back();
    stack.pop_back();
    if (object.class_ == schema::kReport) {
      treat_send_jobs(object, backend);
    } else if (object.class_ == schema::kDomain) {
      for (const tql::patch_t& child : object.children) stack.push_back(&child);
    } else {
      log("Got unexpected class during sending of report : " + tql::class_name(object.class_));
    }
  }
}
