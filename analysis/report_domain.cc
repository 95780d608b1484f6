// ReportDomain: a domain's folder, its nodes, then its subdomains.
#include "analysis/object_values.h"
#include "analysis/property_order.h"
#include "analysis/report_issue.h"
#include "analysis/result_objects.h"
#include "analysis/summary_rows.h"
#include "analysis/walk_trace.h"
#include "tql/schema.h"

void ReportDomain::analyse(const tql::id_t& parentFolder, const IntervalSet& intervals,
                           IssueStats& parentStats, int64_t& firstSample, zone_t timeZone) {
  traceId("Analysing domain ", object_.id);
  const std::string label = stringOr(object_, schema::kTreeLabel, "");
  const tql::id_t folder =
      addFolder(context_->db, parentFolder, schema::kFolderDomain, label, object_.id);
  const bool availability = issue_->wantSummary && issue_->kind == ReportKind::kAvailability;
  if (parentStats.explanationFolder.empty() && availability) {
    addExplanation(context_->db, parentFolder, object_.id, parentStats);
  }
  if (issue_->kind == ReportKind::kConfiguration)
    addDomainConfiguration(context_->db, folder, object_, timeZone);
  IssueStats stats;
  stats.explanationFolder = parentStats.explanationFolder;
  descend(folder, intervals, stats, firstSample, timeZone);
  if (availability)
    addAvailabilityRows(context_->db, *issue_, folder, stats, "Worst node availability is ");
  parentStats.merge(stats);
  hideIfWanted(folder, stats.worst);
  status = 0;
}

void ReportDomain::descend(const tql::id_t& folder, const IntervalSet& intervals, IssueStats& stats,
                           int64_t& firstSample, zone_t timeZone) {
  traceId("Descending from ", object_.id);
  const std::vector<const tql::patch_t*> children = sortedChildren(object_);
  for (const tql::patch_t* child : children) {
    if (child->class_ == schema::kNode) {
      traceId("Got node ", child->id);
      ReportHost host(*child, *context_, depth_ + 1, selector_, progress_);
      host.analyse(folder, intervals, stats, firstSample, timeZone);
    } else if (child->class_ != schema::kDomain) {
      traceId("Got unexpected object_ ", child->id);
    }
  }
  for (const tql::patch_t* child : children) {
    if (child->class_ != schema::kDomain) continue;
    traceId("Got domain ", child->id);
    ReportDomain domain(*child, *context_, depth_ + 1, selector_, progress_);
    domain.analyse(folder, intervals, stats, firstSample, timeZone);
  }
}
