#include "dbms/report_incident.h"

#include <memory>

#include "dbms/tql_operations.h"
#include "tql/schema.h"
#include "tsdb/interval.h"

namespace dbms {

void report_incident(Database& db, const tql::id_t& report_id, uint32_t severity,
                     const std::string& text, TimeValue time) {
  dbms::TSDB_Append_Data_Record_Data request;
  request.id = report_id;
  request.index_property = schema::kTsdbIncident;
  request.data_type = tsdb::kIncidentLog;
  request.data = std::make_unique<tsdb::data_interval_incident_t>(
      tsdb::incident_fields{severity, text, time.seconds});
  dbms::Return_TSDB_Append_Data_Record_Data reply = db.append_data_record(request);
  tql::check_status(reply.status, reply.details);
}

}  // namespace dbms
