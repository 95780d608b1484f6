#include "host/direct_database.h"

#include "host/store_errors.h"

namespace host {

template <class Call>
auto DirectDatabase::serve(Call call) -> decltype(call()) {
  try {
    return call();
  } catch (const EBadRequest& e) {
    throw errors::remote_error(e.text());
  }
}

dbms::Return_Tql_Select_Data DirectDatabase::select(const dbms::Tql_Select_Data& request) {
  return serve([&] { return store_.select(request); });
}

dbms::Return_Tql_Create_Data DirectDatabase::create(const dbms::Tql_Create_Data& request) {
  return serve([&] { return store_.create(request); });
}

dbms::Return_Tql_Update_Data DirectDatabase::update(const dbms::Tql_Update_Data& request) {
  return serve([&] { return store_.update(request); });
}

dbms::Return_Tql_Delete_Data DirectDatabase::remove(const dbms::Tql_Delete_Data& request) {
  return serve([&] { return store_.remove(request); });
}

dbms::Return_Tql_Forget_Data DirectDatabase::forget(const dbms::Tql_Forget_Data& request) {
  dbms::Return_Tql_Forget_Data reply;
  reply.forgotten_req_id = request.req_id_to_forget;
  return reply;
}

dbms::Return_TSDB_Get_Data_Data DirectDatabase::get_data(const dbms::TSDB_Get_Data_Data& request) {
  return serve([&] { return store_.get_data(request); });
}

dbms::Return_TSDB_Put_Data_Data DirectDatabase::put_data(const dbms::TSDB_Put_Data_Data& request) {
  return serve([&] { return store_.put_data(request); });
}

dbms::Return_TSDB_Append_Data_Record_Data DirectDatabase::append_data_record(
    const dbms::TSDB_Append_Data_Record_Data& request) {
  return serve([&] { return store_.append_data_record(request); });
}

}  // namespace host
