#include "reporter/generation.h"

#include "base/error.h"
#include "dbms/report_incident.h"
#include "reporter/generation_run.h"

GenerationOutcome generate_report_outcome(dbms::Database& db, ReportFlags& flags,
                                          tql::id_t report_id, tql::version_t report_version,
                                          TimeValue order_time) {
  try {
    GenerationRun generation(db, report_id, report_version, order_time, flags);
    tql::id_t instance = generation.run();
    return {instance, generation.stale()};
  } catch (const error::Exception& e) {
    // Only this line's own failure leaves: a database that is gone.
    dbms::report_incident(db, report_id, dbms::kIncidentFailure,
                          "Generation of report failed: " + e.text(), TimeValue::now());
    return {};
  }
}

tql::id_t generate_report(dbms::Database& db, ReportFlags& flags, tql::id_t report_id,
                          tql::version_t report_version, TimeValue order_time) {
  return generate_report_outcome(db, flags, report_id, report_version, order_time).instance;
}
