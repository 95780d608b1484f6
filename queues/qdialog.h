// Dialogs: a request to a sibling over the process's queue and the wait for
// its reply. QueueDatabase is the database of dbms/database.h over a queue;
// server_configuration asks the parent.
//
// A peer that reaches the end of its stream raises error::ESystemError
// ("Peer DBMS returned EOS when waiting for dbms::Return_Tql_Select", ...);
// an exception reply raises errors::remote_error with the peer's text. A
// reply of the wrong type is a fatal assertion.
#pragma once

#include "dbms/control_records.h"
#include "dbms/database.h"
#include "queues/childqueue.h"

namespace queues {

class QueueDatabase : public dbms::Database {
 public:
  // The queue must outlive this.
  explicit QueueDatabase(childqueue& queue) : queue_(queue) {}

  dbms::Return_Tql_Select_Data select(const dbms::Tql_Select_Data& request) override;
  dbms::Return_Tql_Create_Data create(const dbms::Tql_Create_Data& request) override;
  dbms::Return_Tql_Update_Data update(const dbms::Tql_Update_Data& request) override;
  dbms::Return_Tql_Delete_Data remove(const dbms::Tql_Delete_Data& request) override;
  dbms::Return_Tql_Forget_Data forget(const dbms::Tql_Forget_Data& request) override;
  dbms::Return_TSDB_Get_Data_Data get_data(const dbms::TSDB_Get_Data_Data& request) override;
  dbms::Return_TSDB_Put_Data_Data put_data(const dbms::TSDB_Put_Data_Data& request) override;
  dbms::Return_TSDB_Append_Data_Record_Data append_data_record(
      const dbms::TSDB_Append_Data_Record_Data& request) override;

 private:
  childqueue& queue_;
};

control::Server_Configuration_Fields server_configuration(childqueue& queue);

}  // namespace queues
