// One generation: a `Report` definition, an order time and the version the
// caller saw, turned into one finished `ReportInstance` in the database.
#pragma once

#include "analysis/generation_context.h"
#include "base/time_value.h"
#include "dbms/database.h"
#include "tql/id.h"

// Generates the report `report_id` for the period that `order_time` falls
// in. Returns the id of the finished instance, or an empty id whenever no
// report was produced (the report is gone, its version is no longer
// `report_version`, or the generation failed; the report's incident series
// tells which). Only the failure handler's own database errors leave it.
// `flags` are the presentation flags that carry over from one generation to
// the next: a Report that lacks one of their properties keeps the value the
// previous generation set, so the caller keeps them for the process's life.
tql::id_t generate_report(dbms::Database& db, ReportFlags& flags, tql::id_t report_id,
                          tql::version_t report_version, TimeValue order_time);

// What one call of generate_report came to.
struct GenerationOutcome {
  tql::id_t instance;  // The finished instance; empty when no report was produced.
  bool stale = false;  // Refused because the report's version moved on.
};

// generate_report, telling also whether the call was refused as stale: an
// order served with such a call is still to be carried out.
GenerationOutcome generate_report_outcome(dbms::Database& db, ReportFlags& flags,
                                          tql::id_t report_id, tql::version_t report_version,
                                          TimeValue order_time);
