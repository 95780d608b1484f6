#include "analysis/check_log.h"

#include <utility>

#include "analysis/check_series.h"
#include "analysis/result_objects.h"
#include "base/fatal.h"
#include "base/time_text.h"
#include "tql/schema.h"

int64_t analyseIncidents(const std::vector<tsdb::interval_ptr>& samples, const Interval& interval) {
  TAVREL_ASSERT(!samples.empty(), "Continuous data analysis routine given empty data set");
  for (const tsdb::interval_ptr& record : samples) {
    const auto* incident = dynamic_cast<const tsdb::data_interval_incident_t*>(record.get());
    if (incident != nullptr && incident->itime >= interval.begin.seconds) return incident->itime;
  }
  return 0;
}

std::string periodText(const ResolvedIssue& issue, zone_t timeZone) {
  const std::string end = time2str(issue.start + issue.duration, timeZone);
  if (issue.start == 0) return "start of monitoring to " + end;
  return time2str(issue.start, timeZone) + " to " + end;
}

void storeCheckLog(dbms::Database& db, const ResolvedIssue& issue, const tql::id_t& folder,
                   const tql::id_t& check, int64_t fetchStart, zone_t timeZone) {
  const tql::id_t log = addLog(db, folder, "Stored log from " + periodText(issue, timeZone));
  dbms::Return_TSDB_Get_Data_Data reply =
      fetchSeries(db, check, schema::kTsdbIndex, true, fetchStart, issue.start + issue.duration, 0);
  if (!reply.data.empty()) {
    putSeries(db, log, schema::kTsdbIncident, reply.data_type, std::move(reply.data));
  }
}
