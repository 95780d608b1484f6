#include "queues/qdialog.h"

#include "base/fatal.h"
#include "queues/event_names.h"
#include "queues/events.h"

namespace queues {

namespace {

// One request and its reply: Req and Rep are the devent types, `reply_name`
// the reply record's name for the end-of-stream text.
template <class Req, class Rep>
typename Rep::record_type dialog(childqueue& q, queue_t peer,
                                 const typename Req::record_type& record, const char* reply_name) {
  uint32_t number = q.new_request_number();
  q.send(Req(peer, number, record));
  std::unique_ptr<event> reply = q.wait_reply(number, peer);
  if (!reply) {
    if (peer == main) {
      throw error::ESystemError(
          "Peer MAIN returned EOS when waiting for control::Server_Configuration");
    }
    throw error::ESystemError(std::string("Peer DBMS returned EOS when waiting for dbms::") +
                              reply_name);
  }
  if (auto* typed = dynamic_cast<Rep*>(reply.get())) return std::move(typed->data);
  if (auto* failure = dynamic_cast<exevent*>(reply.get())) {
    throw errors::remote_error(failure->text);
  }
  assertion_failed("Dialog to " + queue_name(peer) + ", sent " + event_name(Req::kType) +
                   " expected " + event_name(Rep::kType) + " got " + event_name(reply->type_index) +
                   " uid=" + std::to_string(number));
}

}  // namespace

dbms::Return_Tql_Select_Data QueueDatabase::select(const dbms::Tql_Select_Data& request) {
  return dialog<Tql_Select_Event, Return_Tql_Select_Event>(queue_, dbms, request,
                                                           "Return_Tql_Select");
}

dbms::Return_Tql_Create_Data QueueDatabase::create(const dbms::Tql_Create_Data& request) {
  return dialog<Tql_Create_Event, Return_Tql_Create_Event>(queue_, dbms, request,
                                                           "Return_Tql_Create");
}

dbms::Return_Tql_Update_Data QueueDatabase::update(const dbms::Tql_Update_Data& request) {
  return dialog<Tql_Update_Event, Return_Tql_Update_Event>(queue_, dbms, request,
                                                           "Return_Tql_Update");
}

dbms::Return_Tql_Delete_Data QueueDatabase::remove(const dbms::Tql_Delete_Data& request) {
  return dialog<Tql_Delete_Event, Return_Tql_Delete_Event>(queue_, dbms, request,
                                                           "Return_Tql_Delete");
}

dbms::Return_Tql_Forget_Data QueueDatabase::forget(const dbms::Tql_Forget_Data& request) {
  return dialog<Tql_Forget_Event, Return_Tql_Forget_Event>(queue_, dbms, request,
                                                           "Return_Tql_Forget");
}

dbms::Return_TSDB_Get_Data_Data QueueDatabase::get_data(const dbms::TSDB_Get_Data_Data& request) {
  return dialog<Tsdb_Get_Data_Event, Return_Tsdb_Get_Data_Event>(queue_, dbms, request,
                                                                 "Return_TSDB_Get_Data");
}

dbms::Return_TSDB_Put_Data_Data QueueDatabase::put_data(const dbms::TSDB_Put_Data_Data& request) {
  return dialog<Tsdb_Put_Data_Event, Return_Tsdb_Put_Data_Event>(queue_, dbms, request,
                                                                 "Return_TSDB_Put_Data");
}

dbms::Return_TSDB_Append_Data_Record_Data QueueDatabase::append_data_record(
    const dbms::TSDB_Append_Data_Record_Data& request) {
  return dialog<Tsdb_Append_Data_Record_Event, Return_Tsdb_Append_Data_Record_Event>(
      queue_, dbms, request, "Return_TSDB_Append_Data_Record");
}

control::Server_Configuration_Fields server_configuration(childqueue& queue) {
  return dialog<Request_Server_Configuration_Event, Server_Configuration_Event>(
      queue, main, 0, "Server_Configuration");
}

}  // namespace queues
