#include "host/database_service.h"

#include "base/error.h"
#include "base/log.h"
#include "host/parent_service.h"
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
  if (request.exception || gone_) return;
  if (db_.vanish_after() && served_ >= *db_.vanish_after()) {
    gone_ = true;
    if (log_)
      write_log_line(*log_, "database: gone after " + std::to_string(served_) + " requests");
    return;
  }
  ++served_;
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
      subscribe(request, *select, queue, now);
    } else {
      reply<Return_Tql_Select_Event>(queue, request, db_.select(*select));
    }
  } else if (auto* create = as<Tql_Create_Event>(request)) {
    dbms::Return_Tql_Create_Data created = db_.create(*create);
    note("create", request, created.new_id.text(), created.status);
    changed(created.new_id, created.status);
    reply<Return_Tql_Create_Event>(queue, request, std::move(created));
  } else if (auto* update = as<Tql_Update_Event>(request)) {
    dbms::Return_Tql_Update_Data updated = db_.update(*update);
    note("update", request, update->id.text(), updated.status);
    changed(update->id, updated.status);
    reply<Return_Tql_Update_Event>(queue, request, std::move(updated));
  } else if (auto* remove = as<Tql_Delete_Event>(request)) {
    dbms::Return_Tql_Delete_Data removed = db_.remove(*remove);
    note("delete", request, remove->id.text(), removed.status);
    reply<Return_Tql_Delete_Event>(queue, request, std::move(removed));
  } else if (auto* get = as<Tsdb_Get_Data_Event>(request)) {
    reply<Return_Tsdb_Get_Data_Event>(queue, request, db_.get_data(*get));
  } else if (auto* put = as<Tsdb_Put_Data_Event>(request)) {
    reply<Return_Tsdb_Put_Data_Event>(queue, request, db_.put_data(*put));
  } else if (auto* append = as<Tsdb_Append_Data_Record_Event>(request)) {
    reply<Return_Tsdb_Append_Data_Record_Event>(queue, request, db_.append_data_record(*append));
  } else if (auto* ack = as<Tql_Acknowledge_Event>(request)) {
    registry_.acknowledge(request.dest, *ack);
  } else if (auto* forget = as<Tql_Forget_Event>(request)) {
    dbms::Return_Tql_Forget_Data forgotten = registry_.forget(request.dest, *forget);
    note("forget", request, "request " + std::to_string(forget->req_id_to_forget),
         forgotten.status);
    reply<Return_Tql_Forget_Event>(queue, request, std::move(forgotten));
  } else {
    log("Database: ignored " + event_name(request.type_index) + " from " +
        queue_name(request.dest));
  }
}

void DatabaseService::changed(const tql::id_t& id, int32_t status) {
  if (progress_ && status == 0) progress_->changed(db_.objects(), id);
}

void DatabaseService::subscribe(const queues::event& request, const dbms::Tql_Select_Data& select,
                                queues::childqueue& queue, double now) {
  dbms::Return_Tql_Select_Data first;
  if (db_.subscription_fault() != 0) {
    first.status = db_.subscription_fault();
    first.details.push_back({0, "subscription refused by the world's faults"});
  } else {
    first = registry_.subscribe(db_, {request.dest, request.inresponse}, select, now);
  }
  note("subscribe", request, "request " + std::to_string(request.inresponse), first.status);
  reply<queues::Return_Tql_Select_Event>(queue, request, std::move(first));
}

void DatabaseService::note(const char* what, const queues::event& request,
                           const std::string& object, int32_t status) {
  if (log_ == nullptr) return;
  write_log_line(*log_, std::string(what) + ": " + queues::queue_name(request.dest) + " " + object +
                            " status " + std::to_string(status));
}

size_t DatabaseService::send_due(queues::childqueue& queue, double now) {
  if (gone_) return 0;
  std::vector<DueReply> due = registry_.due(db_, now);
  for (DueReply& reply : due) {
    queue.send(
        queues::Return_Tql_Select_Event(reply.key.first, reply.key.second, std::move(reply.reply)));
  }
  return due.size();
}

}  // namespace host
