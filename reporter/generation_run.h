// One run of generate_report: the frame of values that live as long as the
// call, and its stages. Internal to generation.cc and its parts.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "analysis/generation_context.h"
#include "analysis/interval_set.h"
#include "analysis/report_selection.h"
#include "analysis/report_tree.h"
#include "analysis/resolved_issue.h"
#include "base/time_value.h"
#include "base/zone.h"
#include "dbms/database.h"
#include "reporter/mail_job.h"
#include "reporter/report_definition.h"
#include "tql/id.h"

class GenerationRun {
 public:
  // Reads and writes `db`. `flags` are the presentation flags that the last
  // generation left; this one updates them from its Report. Both outlive
  // this.
  GenerationRun(dbms::Database& db, tql::id_t report_id, tql::version_t report_version,
                TimeValue order_time, ReportFlags& flags);
  GenerationRun(const GenerationRun&) = delete;
  GenerationRun& operator=(const GenerationRun&) = delete;

  // The whole generation, without the failure handler: the instance's id,
  // or an empty id when no report was produced.
  tql::id_t run();
  // Whether run() gave up because the report's version was no longer the
  // caller's.
  bool stale() const { return stale_; }

 private:
  // The definition fetched and walked, the period resolved, the selections,
  // plan intervals and flags read: false when the report is gone or its
  // version changed.
  bool prepare();
  // The ReportInstance and the raised `order`; false on a duplicate order.
  bool open();
  // The analysis of the selected tree under the instance; an
  // error::Exception is logged and marks analysis_failed_.
  void analyseGuarded(const tql::patch_t* tree);
  void analyse(const tql::patch_t& tree);
  // The instance finished (with its mail job left under it), the report's
  // lastGenerated; false when the instance is gone.
  bool close();
  // The mail to the report's destination, then its job deleted.
  void mail();
  void incident(uint32_t severity, const std::string& text) const;
  std::string number() const { return std::to_string(order_); }

  // Constant after construction.
  dbms::Database& db_;
  const tql::id_t report_id_;
  const tql::version_t report_version_;
  const TimeValue order_time_;
  const TimeValue started_;
  ReportFlags& flags_;

  std::unique_ptr<ReportDefinition> definition_;
  const tql::patch_t* report_ = nullptr;  // In definition_.
  ResolvedIssue issue_;
  std::vector<ReportSelectionRecord> selections_;
  IntervalSet intervals_;
  zone_t zone_;
  uint32_t order_ = 0;  // N, the number of this generation.
  tql::id_t instance_id_;
  ReportTree tree_;
  int64_t first_sample_ = 0;
  int64_t generated_ = 0;
  bool analysis_failed_ = false;
  bool stale_ = false;
  std::vector<std::string> addresses_;  // The report's destination.
  GenerationMailJob mail_job_;
};
