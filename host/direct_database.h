// The stand-in's store called directly, without a queue or a process: the
// database that unit tests hand to the code that reads and writes reports.
// A malformed request raises errors::remote_error with the text the host's
// endpoint would have sent as its exception reply. There are no
// subscriptions here, so forget answers status 0 for any request number.
#pragma once

#include "dbms/database.h"
#include "host/store_database.h"

namespace host {

class DirectDatabase : public dbms::Database {
 public:
  // The store must outlive this.
  explicit DirectDatabase(host::Database& store) : store_(store) {}

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
  // Runs one store call, turning a refused request into the remote error.
  template <class Call>
  auto serve(Call call) -> decltype(call());

  host::Database& store_;
};

}  // namespace host
