#include "mailing/report_mail.h"

#include <memory>

#include "base/log.h"
#include "dbms/report_incident.h"
#include "email/message.h"
#include "email/mime_multipart.h"
#include "mailing/mime_image_generator.h"
#include "mailing/report_bodies.h"
#include "queues/configuration.h"

namespace {

// The client's reporter: errors always go to the log, the rest at the trace
// bit.
void smtp_log(const std::string& text, bool isError) {
  if (isError) {
    log(text);
  } else if (log_tracing()) {
    log(text, kLogTrace);
  }
}

// The recipients in `message`, and their list for the incident lines.
std::string add_recipients(email::Message& message, const std::vector<std::string>& addresses) {
  std::string to_text;
  for (const std::string& address : addresses) {
    message.addTo(std::make_unique<email::Address>(address));
    if (log_tracing()) log("Added email for reporting: " + address, kLogTrace);
    if (!to_text.empty()) to_text += ", ";
    to_text += address;
  }
  return to_text;
}

}  // namespace

ReportMailSettings configured_mail_settings() {
  const control::Server_Configuration_Fields& c = queues::configuration();
  return {.mail_server = c.mail_server, .mail_from = c.mail_from, .reply_mail_to = c.reply_mail_to};
}

bool send_report_mail(const ReportMail& mail, const ReportMailSettings& settings,
                      resource::resource_collection& resources, const IncidentSink& incident) {
  if (mail.addresses.empty()) return false;
  email::Message message;
  message.setFrom(std::make_unique<email::Address>(settings.reply_mail_to));
  const std::string to_text = add_recipients(message, mail.addresses);
  email::SmtpClient client(settings.mail_server, settings.mail_from, smtp_log);
  client.setTimeout(settings.timeout);

  // The message owns the multiparts; the generator and the HTML body only
  // point into them, and all of them go with this call.
  auto related = std::make_unique<email::MimeMultipart>(email::MimeMultipart::kRelated);
  MimeImageGenerator images(*mail.instance, *related, mail.zone, resources);
  auto alternative = std::make_unique<email::MimeMultipart>(email::MimeMultipart::kAlternative);
  alternative->addPart(std::make_unique<ReportTextMimeBody>(*mail.instance, mail.zone));
  // The HTML shows its times in the server's zone, the text and the charts
  // in the report's.
  alternative->addPart(std::make_unique<ReportHtmlMimeBody>(
      *mail.instance, images, timeZoneValue(kEnvironmentZone), resources));
  related->addPart(std::move(alternative));
  message.setBody(std::move(related));
  std::string name;
  mail.instance->name(name);
  message.setSubject("Tavrel report - " + name);

  const std::string number_text =
      mail.order != 0 ? "number " + std::to_string(mail.order) + " " : "";
  const std::string who = to_text.empty() ? "nobody!" : to_text;
  incident(dbms::kIncidentProgress, "Sending report " + number_text + "to " + who + "...");
  if (!client.send(message)) {
    log("Unable to send report e-mail - please check mail server setup");
    incident(dbms::kIncidentFailure, "Report " + number_text + "has not been send" +
                                         (to_text.empty() ? "!" : " to " + to_text + "!"));
    return false;
  }
  incident(dbms::kIncidentProgress, "Report " + number_text + "sent to " + who);
  return true;
}
