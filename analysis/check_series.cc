#include "analysis/check_series.h"

#include <string>
#include <utility>

#include "base/log.h"
#include "dbms/tql_operations.h"

dbms::Return_TSDB_Get_Data_Data fetchSeries(dbms::Database& db, const tql::id_t& id,
                                            int32_t indexProperty, bool raw, int64_t start,
                                            int64_t end, int32_t count) {
  dbms::TSDB_Get_Data_Data request;
  request.id = id;
  request.index_property = indexProperty;
  request.flags = 2;
  request.raw = raw;
  request.start = start;
  request.end = end;
  request.count = count;
  request.offset = 0;
  return db.get_data(request);
}

void putSeries(dbms::Database& db, const tql::id_t& id, int32_t indexProperty, int32_t dataType,
               std::vector<tsdb::interval_ptr> data) {
  dbms::TSDB_Put_Data_Data request;
  request.id = id;
  request.index_property = indexProperty;
  request.data_type = dataType;
  request.data = std::move(data);
  if (log_tracing()) {
    log("Put data printout BEGIN", kLogTrace);
    for (const tsdb::interval_ptr& record : request.data) {
      std::string line = "(null)";
      if (record) record->text(line);
      log(line, kLogTrace);
    }
    log("Put data printout FINISHED", kLogTrace);
  }
  dbms::Return_TSDB_Put_Data_Data reply = db.put_data(request);
  tql::check_status(reply.status, reply.details);
}
