// The incident log of a node in an availability or incident report.
#pragma once

#include "analysis/resolved_issue.h"
#include "base/zone.h"
#include "tql/id.h"

// Fetches the node's incidents of the period, keeps those that the report's
// flags (report_flags()) ask for, and stores them as a log in `folder`.
void addIncidentLog(const ResolvedIssue& issue, const tql::id_t& folder, const tql::id_t& node,
                    zone_t timeZone);
