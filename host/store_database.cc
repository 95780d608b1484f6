#include "host/store_database.h"

#include "host/select_eval.h"
#include "host/store_errors.h"
#include "host/store_series_read.h"
#include "tql/catalogue.h"
#include "tql/errors.h"

namespace host {

namespace {

tql::details_t detail(const std::string& text) {
  if (text.empty()) return {};
  return {tql::detail_t{0, text}};
}

std::vector<tql::property_ptr> checked_properties(const std::vector<tql::property_ptr>& in) {
  for (size_t i = 0; i < in.size(); ++i) {
    if (!in[i]) throw EBadRequest("Property " + std::to_string(i) + " of the request is null");
  }
  return in;
}

dbms::Status_Reply_Data not_found(const tql::id_t& id) {
  return {kStatusNotFound, detail("Object " + id.text() + " not found")};
}

}  // namespace

dbms::Return_Tql_Select_Data Database::select(const dbms::Tql_Select_Data& request) const {
  dbms::Return_Tql_Select_Data reply;
  try {
    reply.res = host::select(objects_, request.root_ids, request.pattern);
  } catch (const errors::tql& e) {
    reply.status = e.code();
    reply.details = detail(e.text());
  }
  return reply;
}

dbms::Return_Tql_Create_Data Database::create(const dbms::Tql_Create_Data& request) {
  if (failing_creates_.count(request.class_) != 0) {
    dbms::Return_Tql_Create_Data reply;
    reply.status = kInjectedFailure;
    reply.details =
        detail("Injected failure: creates of " + tql::class_name(request.class_) + " fail");
    return reply;
  }
  ChangeResult r = objects_.create(request.parent_id, request.class_,
                                   checked_properties(request.properties), request.new_id);
  dbms::Return_Tql_Create_Data reply;
  reply.new_id = r.id;
  reply.new_version = r.version;
  reply.status = r.status;
  reply.details = detail(r.detail);
  return reply;
}

dbms::Return_Tql_Update_Data Database::update(const dbms::Tql_Update_Data& request) {
  const StoredObject* target = objects_.find(request.id);
  if (target != nullptr && failing_updates_.count(target->class_) != 0) {
    dbms::Return_Tql_Update_Data reply;
    reply.status = kInjectedFailure;
    reply.details =
        detail("Injected failure: updates of " + tql::class_name(target->class_) + " fail");
    return reply;
  }
  ChangeResult r =
      objects_.update(request.id, request.version, checked_properties(request.properties));
  dbms::Return_Tql_Update_Data reply;
  reply.status = r.status;
  reply.new_version = r.version;
  reply.details = detail(r.detail);
  return reply;
}

dbms::Return_Tql_Delete_Data Database::remove(const dbms::Tql_Delete_Data& request) {
  std::vector<tql::id_t> removed;
  ChangeResult r = objects_.remove(request.id, request.version, removed);
  for (const tql::id_t& id : removed) series_.remove_owner(id);
  return {r.status, detail(r.detail)};
}

dbms::Return_TSDB_Get_Data_Data Database::get_data(const dbms::TSDB_Get_Data_Data& request) const {
  dbms::Return_TSDB_Get_Data_Data reply;
  if (objects_.find(request.id) == nullptr) {
    dbms::Status_Reply_Data missing = not_found(request.id);
    reply.status = missing.status;
    reply.details = missing.details;
    return reply;
  }
  const Series* s = series_.find(request.id, request.index_property);
  if (s == nullptr) return reply;
  reply.data_type = s->data_type;
  reply.data = read_series(
      *s, SeriesQuery{request.start, request.end, request.count, request.offset, request.raw});
  return reply;
}

dbms::Return_TSDB_Put_Data_Data Database::put_data(const dbms::TSDB_Put_Data_Data& request) {
  if (objects_.find(request.id) == nullptr) return not_found(request.id);
  series_.put(request.id, request.index_property, request.data_type, request.data);
  return {};
}

dbms::Return_TSDB_Append_Data_Record_Data Database::append_data_record(
    const dbms::TSDB_Append_Data_Record_Data& request) {
  if (objects_.find(request.id) == nullptr) return not_found(request.id);
  series_.append(request.id, request.index_property, request.data_type, request.data);
  return {};
}

}  // namespace host
