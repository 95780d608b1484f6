// The rows that sum up a check, node or domain of a report, the explanation
// section, and the configuration rows of domains and nodes.
#pragma once

#include <string>

#include "analysis/issue_stats.h"
#include "analysis/resolved_issue.h"
#include "base/zone.h"
#include "dbms/database.h"
#include "tql/id.h"
#include "tql/patch.h"

// The four summary rows of a check (availability report with summary only).
void addSummaryRows(dbms::Database& db, const ResolvedIssue& issue, const tql::id_t& folder,
                    const IssueStats& stats);

// The rows of a node or domain: availability, and the worst item below it
// labelled `worstText` + its name ("Worst check availability is " for a
// node, "Worst node availability is " for a domain).
void addAvailabilityRows(dbms::Database& db, const ResolvedIssue& issue, const tql::id_t& folder,
                         const IssueStats& stats, const std::string& worstText);

// The section "Availability explanation" under `parentFolder`; its id goes
// into `stats.explanationFolder`.
void addExplanation(dbms::Database& db, const tql::id_t& parentFolder, const tql::id_t& domainId,
                    IssueStats& stats);

// Configuration report rows of a domain and of a node.
void addDomainConfiguration(dbms::Database& db, const tql::id_t& folder, const tql::patch_t& domain,
                            zone_t timeZone);
void addNodeConfiguration(dbms::Database& db, const tql::id_t& folder, const tql::patch_t& node,
                          const tql::id_t& rootId, zone_t timeZone);

// The same writers into any sink (the functions above write to the
// database through DatabaseRows and DatabaseObjects).
class RowSink;
class ObjectSource;
void writeSummaryRows(RowSink& rows, const ResolvedIssue& issue, const tql::id_t& folder,
                      const IssueStats& stats);
void writeAvailabilityRows(RowSink& rows, const ResolvedIssue& issue, const tql::id_t& folder,
                           const IssueStats& stats, const std::string& worstText);
void writeExplanation(RowSink& rows, const tql::id_t& parentFolder, const tql::id_t& domainId,
                      IssueStats& stats);
void writeDomainConfiguration(RowSink& rows, ObjectSource& objects, const tql::id_t& folder,
                              const tql::patch_t& domain, zone_t timeZone);
void writeNodeConfiguration(RowSink& rows, ObjectSource& objects, const tql::id_t& folder,
                            const tql::patch_t& node, const tql::id_t& rootId, zone_t timeZone);
