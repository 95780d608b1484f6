#include "analysis/incident_log.h"

#include "analysis/check_log.h"
#include "analysis/result_objects.h"
#include "tql/schema.h"

bool isConfigurationChange(const std::string& msg) {
  const size_t tried = msg.find(" tried");
  if (tried != std::string::npos) {
    const size_t access = msg.find(", access");
    if (access == std::string::npos || access >= tried) return true;
  }
  return msg.find("New master key") != std::string::npos ||
         msg.find("NodeClasses: ") != std::string::npos;
}

bool keepIncident(const ReportFlags& flags, uint32_t sev, const std::string& msg) {
  if (flags.alertScore && sev == 4) return true;
  if (flags.warnScore && sev == 2) return true;
  if (sev == 1 && isConfigurationChange(msg)) return flags.includeConfig;
  return flags.goodScore && sev == 1;
}

std::vector<tsdb::interval_ptr> keptIncidents(const ReportFlags& flags,
                                              std::vector<tsdb::interval_ptr> incidents) {
  std::vector<tsdb::interval_ptr> kept;
  for (tsdb::interval_ptr& p : incidents) {
    const auto* incident = dynamic_cast<const tsdb::data_interval_incident_t*>(p.get());
    if (incident != nullptr && keepIncident(flags, incident->sev, incident->msg)) {
      kept.push_back(std::move(p));
    }
  }
  return kept;
}

void addIncidentLog(dbms::Database& db, const ResolvedIssue& issue, const ReportFlags& flags,
                    const tql::id_t& folder, const tql::id_t& node, zone_t timeZone) {
  dbms::TSDB_Get_Data_Data request;
  request.id = node;
  request.index_property = schema::kTsdbIncident;
  request.flags = 2;
  request.raw = true;
  request.start = issue.start;
  request.end = issue.start + issue.duration;
  request.count = 40;
  request.offset = 0;
  dbms::Return_TSDB_Get_Data_Data reply = db.get_data(request);
  const std::string name = "Incidents on the host from " + periodText(issue, timeZone);
  std::vector<tsdb::interval_ptr> kept = keptIncidents(flags, std::move(reply.data));
  const tql::id_t log = addLog(db, folder, name);
  // Nothing kept, nothing to store: the log's series stays empty. (A node
  // without incidents has no series at all, and its reply carries no data
  // type to store under.)
  if (kept.empty()) return;
  dbms::TSDB_Put_Data_Data put;
  put.id = log;
  put.index_property = schema::kTsdbIncident;
  put.data_type = reply.data_type;
  put.data = std::move(kept);
  db.put_data(put);
}
