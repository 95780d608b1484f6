#include "host/database_service.h"

#include "base/error.h"
#include "base/log.h"
#include "queues/event_names.h"
#include "queues/events.h"

namespace host {
namespace {

// Sends `record` as the reply event Rep to the sender of `request`.
template <class Rep>
void reply(queues::childqueue& queue, const queues::event& request,
           typename Rep::record_type record) {
  queue.send(Rep(request.dest, request.inresponse, std::move(record)));
}

template <class Req>
const typename Req::record_type* as(const queues::event& e) {
  const auto* typed = dynamic_cast<const Req*>(&e);
  return typed ? &typed->data : nullptr;
}

}  // namespace

void DatabaseService::handle(const queues::event& request, queues::childqueue& queue, double now) {
  if (request.exception) return;
  try {
    dispatch(request, queue, now);
  } catch (const error::Exception& e) {
    queue.send(queues::exevent(request.dest, request.inresponse, e.text()));
  }
  send_due(queue, now);
}

void DatabaseService::dispatch(const queues::event& request, queues::childqueue& queue,
                               double now) {
  using namespace queues;
  if (auto* select = as<Tql_Select_Event>(request)) {
    if (select->flags & 1) {
      reply<Return_Tql_Select_Event>(
          queue, request, registry_.subscribe(db_, {request.dest, request.inresponse}, *select, now));
    } else {
      reply<Return_Tql_Select_Event>(queue, request, db_.select(*select));
    }
  } else if (auto* create = as<Tql_Create_Event>(request)) {
    dbms::Return_Tql_Create_Data created = db_.create(*create);
    changed(created.new_id, created.status);
    reply<Return_Tql_Create_Event>(queue, request, std::move(created));
  } else if (auto* update = as<Tql_Update_Event>(request)) {
    dbms::Return_Tql_Update_Data updated = db_.update(*update);
    changed(update->id, updated.status);
    reply<Return_Tql_Update_Event>(queue, request, std::move(updated));
  } else if (auto* remove = as<Tql_Delete_Event>(request)) {
    reply<Return_Tql_Delete_Event>(queue, request, db_.remove(*remove));
  } else if (auto* get = as<Tsdb_Get_Data_Event>(request)) {
    reply<Return_Tsdb_Get_Data_Event>(queue, request, db_.get_data(*get));
  } else if (auto* put = as<Tsdb_Put_Data_Event>(request)) {
    reply<Return_Tsdb_Put_Data_Event>(queue, request, db_.put_data(*put));
  } else if (auto* append = as<Tsdb_Append_Data_Record_Event>(request)) {
    reply<Return_Tsdb_Append_Data_Record_Event>(queue, request, db_.append_data_record(*append));
  } else if (auto* ack = as<Tql_Acknowledge_Event>(request)) {
    registry_.acknowledge(request.dest, *ack);
  } else if (auto* forget = as<Tql_Forget_Event>(request)) {
    reply<Return_Tql_Forget_Event>(queue, request, registry_.forget(request.dest, *forget));
  } else {
    log("Database: ignored " + event_name(request.type_index) + " from " +
        queue_name(request.dest));
  }
}

void DatabaseService::changed(const tql::id_t& id, int32_t status) {
  if (progress_ && status == 0) progress_->changed(db_.objects(), id);
}

void DatabaseService::send_due(queues::childqueue& queue, double now) {
  for (DueReply& due : registry_.due(db_, now)) {
    queue.send(queues::Return_Tql_Select_Event(due.key.first, due.key.second, std::move(due.reply)));
  }
}

}  // namespace host
