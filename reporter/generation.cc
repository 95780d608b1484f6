#include "reporter/generation.h"

#include "base/error.h"
#include "queues/report_incident.h"
#include "reporter/generation_run.h"

namespace {

// The presentation flags carry over from one generation to the next: a
// Report that lacks one of their properties keeps the value that the
// previous generation set. The process holds them here, for its lifetime.
ReportFlags& carried_flags() {
  static ReportFlags flags;
  return flags;
}

}  // namespace

GenerationOutcome generate_report_outcome(tql::id_t report_id, tql::version_t report_version,
                                          TimeValue order_time) {
  try {
    GenerationRun generation(report_id, report_version, order_time, carried_flags());
    tql::id_t instance = generation.run();
    return {instance, generation.stale()};
  } catch (const error::Exception& e) {
    // Only this line's own failure leaves: a database that is gone.
    queues::report_incident(report_id, queues::kIncidentFailure,
                            "Generation of report failed: " + e.text(), TimeValue::now());
    return {};
  }
}

tql::id_t generate_report(tql::id_t report_id, tql::version_t report_version,
                          TimeValue order_time) {
  return generate_report_outcome(report_id, report_version, order_time).instance;
}
