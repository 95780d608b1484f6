// Log checks (data type 4): their stored lines are incidents, not a curve.
#pragma once

#include <cstdint>
#include <vector>

#include "analysis/interval_set.h"
#include "analysis/resolved_issue.h"
#include "base/zone.h"
#include "dbms/database.h"
#include "tql/id.h"
#include "tsdb/interval.h"

// The `itime` of the first incident at or after the interval's begin, or 0
// when there is none. No sum changes: a log check has no availability.
// Records of another class are passed over. An empty `samples` is the
// fatal assertion "Continuous data analysis routine given empty data set".
int64_t analyseIncidents(const std::vector<tsdb::interval_ptr>& samples, const Interval& interval);

// The log of a log check in `folder`: "Stored log from " and the period in
// `timeZone`, holding every stored line of the check's measured series
// (tsdbIndex) from `fetchStart` to the period's end, unfiltered and
// unbounded, in the log's tsdbIncident series. Raises errors::tql (after the
// error line of a failed create) and what the dialogs raise.
void storeCheckLog(dbms::Database& db, const ResolvedIssue& issue, const tql::id_t& folder,
                   const tql::id_t& check, int64_t fetchStart, zone_t timeZone);

// "start of monitoring to " and the end when `start` is 0, otherwise the
// start, " to " and the end; times as "2026-01-05 08:03:09" in `timeZone`.
std::string periodText(const ResolvedIssue& issue, zone_t timeZone);
