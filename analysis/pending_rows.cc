// Placeholders for the row writers of summaries, configuration and incident
// logs, which are being built: they write nothing, so that the walk links
// before they exist. This file goes when they arrive.
#include "analysis/check_configuration.h"
#include "analysis/incident_log.h"
#include "analysis/summary_rows.h"

void addSummaryRows(const ResolvedIssue&, const tql::id_t&, const IssueStats&) {}
void addAvailabilityRows(const ResolvedIssue&, const tql::id_t&, const IssueStats&,
                         const std::string&) {}
void addExplanation(const tql::id_t&, const tql::id_t&, IssueStats&) {}
void addDomainConfiguration(const tql::id_t&, const tql::patch_t&, zone_t) {}
void addNodeConfiguration(const tql::id_t&, const tql::patch_t&, const tql::id_t&, zone_t) {}
void addAlertGroupRows(const tql::id_t&, const tql::patch_t&, const tql::id_t&) {}
void analyseConfiguration(const tql::patch_t&, const tql::id_t&, const tql::id_t&, zone_t) {}
void addIncidentLog(const ResolvedIssue&, const tql::id_t&, const tql::id_t&, zone_t) {}
