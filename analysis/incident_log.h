// The incident log of a node in an availability or incident report.
#pragma once

#include <string>
#include <vector>

#include "analysis/generation_context.h"
#include "analysis/resolved_issue.h"
#include "base/zone.h"
#include "dbms/database.h"
#include "tql/id.h"
#include "tsdb/interval.h"

// Fetches the node's incidents of the period (at most 40, as the database
// returns them), keeps those that the report's `flags` ask for, and stores them as the series of a
// log "Incidents on the host from
// ..." in `folder`. The log is made even when nothing is kept; its series is
// then left empty (no put). Raises what the dialogs and the create raise.
void addIncidentLog(dbms::Database& db, const ResolvedIssue& issue, const ReportFlags& flags,
                    const tql::id_t& folder, const tql::id_t& node, zone_t timeZone);

// A severity 1 message that tells of a change of configuration: it contains
// " tried" with no ", access" before the first " tried", or "New master
// key", or "NodeClasses: ".
bool isConfigurationChange(const std::string& msg);

// Whether a node's log keeps an incident, by the first rule that applies:
// severity 4 with alertScore, severity 2 with warnScore, a configuration
// change with includeConfig (and never without it), other severity 1 with
// goodScore; anything else goes.
bool keepIncident(const ReportFlags& flags, uint32_t sev, const std::string& msg);

// The records of `incidents` that keepIncident keeps, in order; records of
// another class than incident are dropped.
std::vector<tsdb::interval_ptr> keptIncidents(const ReportFlags& flags,
                                              std::vector<tsdb::interval_ptr> incidents);
