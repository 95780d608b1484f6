#include "analysis/report_issue.h"

#include "analysis/walk_schema.h"
#include "queues/tql_operations.h"

void ReportIssue::hideIfWanted(const tql::id_t& folder, double value) const {
  if (depth < issue->hideLevel || !(value >= issue->hideThreshold)) return;
  // The delete needs the folder's current version.
  std::unique_ptr<tql::patch_t> stored =
      tql::get_object(folder, walk::kReportResultFolder, *queues::global_queue());
  if (stored) tql::delete_object(folder, stored->version);
}
