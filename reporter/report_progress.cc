#include "reporter/report_progress.h"

#include <utility>

#include "base/log.h"
#include "tql/errors.h"
#include "tql/schema.h"

ReportProgress::ReportProgress(tql::id_t report_id, tql::id_t instance_id, uint32_t totalSteps,
                               Writer writer)
    : report_id_(report_id),
      instance_id_(instance_id),
      total_steps_(totalSteps),
      writer_(std::move(writer)) {}

void ReportProgress::advance(uint32_t steps) {
  done_steps_ += steps;
  if (total_steps_ == 0) return;
  const uint32_t value = (total_steps_ / 2 + done_steps_ * 98) / total_steps_ + 1;
  try {
    writer_(report_id_, schema::kReport, value);
    writer_(instance_id_, schema::kReportInstance, value);
  } catch (const errors::tql& e) {
    log("Failed updating report generation progress for template " + report_id_.text() + ": " +
        e.text());
  }
}
