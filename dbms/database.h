// The object database and the time-series store as this process sees them:
// each call sends one request record and returns the reply record. The
// process talks to the real database over its queue (queues/qdialog.h);
// unit tests hand the code a database in memory instead (host/).
//
// A reply carries the database's status; nothing here raises for it (see
// tql_operations.h for the typed calls that do). A database that is gone
// raises error::ESystemError; one that answers a request with an exception
// raises errors::remote_error with its text.
#pragma once

#include "base/error.h"
#include "dbms/tql_records.h"
#include "dbms/tsdb_records.h"

namespace errors {

// A peer's failure reply: its text.
class remote_error : public error::TextException {
  using TextException::TextException;
};

}  // namespace errors

namespace dbms {

class Database {
 public:
  virtual ~Database() = default;

  virtual Return_Tql_Select_Data select(const Tql_Select_Data& request) = 0;
  virtual Return_Tql_Create_Data create(const Tql_Create_Data& request) = 0;
  virtual Return_Tql_Update_Data update(const Tql_Update_Data& request) = 0;
  virtual Return_Tql_Delete_Data remove(const Tql_Delete_Data& request) = 0;
  virtual Return_Tql_Forget_Data forget(const Tql_Forget_Data& request) = 0;
  virtual Return_TSDB_Get_Data_Data get_data(const TSDB_Get_Data_Data& request) = 0;
  virtual Return_TSDB_Put_Data_Data put_data(const TSDB_Put_Data_Data& request) = 0;
  virtual Return_TSDB_Append_Data_Record_Data append_data_record(
      const TSDB_Append_Data_Record_Data& request) = 0;
};

}  // namespace dbms
