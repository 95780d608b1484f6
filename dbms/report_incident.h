// The report's own history: one line appended to the incident series
// (`tsdbIncident`) of a `Report`. This is where users see what became of a
// generation or a mailing; the process log holds the technical rest.
#pragma once

#include <cstdint>
#include <string>

#include "base/time_value.h"
#include "dbms/database.h"
#include "tql/id.h"

namespace dbms {

// Severities of the lines a report writes about itself.
inline constexpr uint32_t kIncidentProgress = 1;
inline constexpr uint32_t kIncidentFailure = 4;

// Appends an incident record (data type 4) with `severity`, `text` and the
// seconds of `time` to the series of `report_id`. Raises errors::tql for an
// error status, and what `db` raises when the database is gone.
void report_incident(Database& db, const tql::id_t& report_id, uint32_t severity,
                     const std::string& text, TimeValue time);

}  // namespace dbms
