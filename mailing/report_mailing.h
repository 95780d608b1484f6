// Mailing of stored reports: the automatic mail after a generation and the
// `ReportSendTo` jobs that the mailing subscription brings. These are the
// process's entry points over its queue and its stored objects; the work is
// done by send_report_mail (report_mail.h) and serve_mail_reply
// (mail_jobs.h).
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "dbms/database.h"
#include "tql/id.h"

// Renders the instance `instance_id` of the report `report_id` and mails it
// to `addresses` (nothing happens for an empty list), with the settings of
// queues::configuration() and the resources of resource::resources(). Never
// raises errors::tql: what happened stands in the report's incident series,
// and a database failure outside the sending is logged as "Cannot mail
// report: " and the text. Raises what the queue raises for a sibling that is
// gone.
void mail_report(dbms::Database& db, const std::vector<std::string>& addresses,
                 tql::id_t instance_id, tql::id_t report_id);

// Serves one reply of the mailing subscription: every `ReportSendTo` job in
// it is mailed and deleted. `inresponse` is the request number of the event
// that carried the reply; `sendto_select_id` that of the mailing
// subscription. A reply for another request is logged and dropped.
void treat_mail_reply(dbms::Database& db, dbms::Return_Tql_Select_Data& reply, uint32_t inresponse,
                      uint32_t sendto_select_id);
