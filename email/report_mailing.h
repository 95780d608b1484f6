// Mailing of stored reports: the automatic mail after a generation and the
// `ReportSendTo` jobs that the mailing subscription brings.
#pragma once

#include <string>
#include <vector>

#include "dbms/tql_records.h"
#include "tql/id.h"

// Renders the instance `instance_id` of the report `report_id` and mails it
// to `addresses` (nothing happens for an empty list). Never raises
// errors::tql: what happened stands in the report's incident series.
void mail_report(const std::vector<std::string>& addresses, tql::id_t instance_id,
                 tql::id_t report_id);

// Serves one reply of the mailing subscription: every `ReportSendTo` job in
// it is mailed and deleted.
void treat_mail_reply(dbms::Return_Tql_Select_Data& reply);
