// ReportHost: a node's folder, its selected checks in post-order, its rows
// and its incident log.
#include "analysis/check_configuration.h"
#include "analysis/generation_context.h"
#include "analysis/incident_log.h"
#include "analysis/object_values.h"
#include "analysis/property_order.h"
#include "analysis/report_issue.h"
#include "analysis/result_objects.h"
#include "analysis/summary_rows.h"
#include "analysis/walk_trace.h"
#include "tql/schema.h"

void ReportHost::analyse(const tql::id_t& parentFolder, const IntervalSet& intervals,
                         IssueStats& parentStats, int64_t& firstSample, zone_t timeZone) {
  traceId("Analysing host ", object_.id);
  std::unique_ptr<tql::patch_t> tree = selector_.select(object_);
  if (!tree || issue_->kind == ReportKind::kOverview) {
    status = 0;
    return;
  }
  const std::string label = stringOr(*tree, schema::kLongLabel, "\"Unknown\"");
  const tql::id_t folder =
      addFolder(context_->db, parentFolder, schema::kFolderNode, label, object_.id);
  IssueStats stats;
  stats.explanationFolder = parentStats.explanationFolder;
  descend(*tree, folder, intervals, stats, firstSample, timeZone);
  if (log_tracing()) {
    log("Return from descend from host " + label + " gave total time " +
            std::to_string(stats.sum_total_time),
        kLogTrace);
  }
  if (issue_->wantSummary && issue_->kind == ReportKind::kAvailability) {
    addAvailabilityRows(context_->db, *issue_, folder, stats, "Worst check availability is ");
  }
  if (stats.checks != 0) {
    // For the level above a node is one item with its total availability.
    IssueStats asItem = stats;
    asItem.worst = stats.availability();
    asItem.worstFolder = folder;
    asItem.worstName = label;
    parentStats.merge(asItem);
  }
  if (issue_->wantIncidents &&
      (issue_->kind == ReportKind::kAvailability || issue_->kind == ReportKind::kIncidents)) {
    addIncidentLog(context_->db, *issue_, context_->flags, folder, object_.id, timeZone);
  }
  if (issue_->wantSummary && issue_->kind == ReportKind::kConfiguration) {
    addNodeConfiguration(context_->db, folder, *tree, context_->treeRoot, timeZone);
  }
  hideIfWanted(folder, stats.worst);
  progress_.advance(1);
  status = 0;
}

void ReportHost::descend(const tql::patch_t& from, const tql::id_t& folder,
                         const IntervalSet& intervals, IssueStats& stats, int64_t& firstSample,
                         zone_t timeZone) {
  if (issue_->kind == ReportKind::kIncidents) {
    traceId("Not descending from ", from.id);
    return;
  }
  traceId("Descending from ", from.id);
  for (const tql::patch_t* child : sortedChildren(from)) {
    traceId("Got object_ ", child->id);
    descend(*child, folder, intervals, stats, firstSample, timeZone);
    if (child->tags.count(0) != 0) {
      ReportSingleRawIssue check(*child, *context_, depth_ + 1);
      check.analyse(folder, intervals, stats, firstSample, timeZone);
    }
  }
}
