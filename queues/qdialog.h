// Dialogs: a request to a sibling and the wait for its reply, over the
// process's queue (global_queue(), or the one given to tql_select).
//
// Each returns the reply's record. A peer that reaches the end of its
// stream raises error::ESystemError ("Peer DBMS returned EOS when waiting
// for dbms::Return_Tql_Select", ...); an exception reply raises
// errors::remote_error with the peer's text. No queue set, or a reply of
// the wrong type, is a fatal assertion.
#pragma once

#include "base/error.h"
#include "dbms/control_records.h"
#include "dbms/tql_records.h"
#include "dbms/tsdb_records.h"
#include "queues/childqueue.h"

namespace errors {

// A peer's failure reply: its text.
class remote_error : public error::TextException {
  using TextException::TextException;
};

}  // namespace errors

namespace queues {

dbms::Return_Tql_Select_Data tql_select(const dbms::Tql_Select_Data& request, childqueue& q);
dbms::Return_Tql_Create_Data tql_create(const dbms::Tql_Create_Data& request);
dbms::Return_Tql_Update_Data tql_update(const dbms::Tql_Update_Data& request);
dbms::Return_Tql_Delete_Data tql_delete(const dbms::Tql_Delete_Data& request);
dbms::Return_Tql_Forget_Data tql_forget(const dbms::Tql_Forget_Data& request);
dbms::Return_TSDB_Get_Data_Data tsdb_get_data(const dbms::TSDB_Get_Data_Data& request);
dbms::Return_TSDB_Put_Data_Data tsdb_put_data(const dbms::TSDB_Put_Data_Data& request);
dbms::Return_TSDB_Append_Data_Record_Data tsdb_append_data_record(
    const dbms::TSDB_Append_Data_Record_Data& request);
control::Server_Configuration_Fields server_configuration();

}  // namespace queues
