#include "analysis/report_issue.h"

#include "dbms/tql_operations.h"
#include "tql/schema.h"

void ReportIssue::hideIfWanted(const tql::id_t& folder, double value) const {
  if (depth_ < issue_->hideLevel || !(value >= issue_->hideThreshold)) return;
  // The delete needs the folder's current version.
  std::unique_ptr<tql::patch_t> stored =
      tql::get_object(context_->db, folder, schema::kReportResultFolder);
  if (stored) tql::delete_object(context_->db, folder, stored->version);
}
