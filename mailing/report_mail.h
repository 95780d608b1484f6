// The core of mailing one report: the message of a report instance, sent
// over SMTP, with the lines that tell the report's users what became of it.
//
// It works on any report::ReportInstance and writes its incident lines
// through a callback, so that it runs on the in-memory read model in tests;
// mail_report (report_mailing.h) feeds it the stored instance and the
// report's incident series.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "base/zone.h"
#include "email/smtp_client.h"
#include "io/clock.h"
#include "report/read_model.h"
#include "resource/collection.h"

// The three settings of the server configuration that mailing uses.
struct ReportMailSettings {
  std::string mail_server;    // host, or host ":" port
  std::string mail_from;      // the configured sender name; the greeting uses the host name
  std::string reply_mail_to;  // the sender of the mail
  io::Duration timeout = email::kSmtpTimeout;
};

// The settings of queues::configuration().
ReportMailSettings configured_mail_settings();

// Receives one line for the report's incident series: its severity
// (dbms::kIncidentProgress or kIncidentFailure) and text.
using IncidentSink = std::function<void(uint32_t severity, const std::string& text)>;

// One mail of one report instance.
struct ReportMail {
  std::vector<std::string> addresses;  // as the user gave them
  report::ReportInstance* instance;    // not owned
  zone_t zone;                         // the report's: text and charts
  uint32_t order = 0;                  // the instance's number; 0 for none
};

// Builds the message of `mail` (multipart/related holding the alternative
// text/plain and text/html, then the pictures and charts that the HTML asks
// for, all rendered while the message is written), tells `incident` that
// the mail goes out, sends it, and tells `incident` the outcome: the sent
// line (severity 1) or the "has not been send" line (severity 4, with
// "Unable to send report e-mail - please check mail server setup" logged).
// Returns whether the server took the mail.
//
// An empty address list sends nothing, tells nothing and gives false.
// Failures while the message is written (read model, pictures) are the
// SMTP client's and give false. Raises what `incident` raises and what the
// instance's name() raises (the read model's errors::tql).
bool send_report_mail(const ReportMail& mail, const ReportMailSettings& settings,
                      resource::resource_collection& resources, const IncidentSink& incident);
