#include "dbms/tql_operations.h"

#include "base/fatal.h"
#include "tql/catalogue.h"
#include "tql/errors.h"

namespace tql {

void check_status(int32_t status, const details_t& details) {
  if (status == 0 || status == 16) return;
  throw errors::tql(status, join_details(details));
}

std::vector<patch_t> select(dbms::Database& db, const std::list<id_t>& ids,
                            std::unique_ptr<pattern_t> pattern, int32_t flags) {
  TAVREL_ASSERT((flags & 1) == 0, "Subscription does not make sense here");
  dbms::Tql_Select_Data request;
  request.root_ids = ids;
  request.pattern = std::move(*pattern);
  request.flags = flags;
  request.min_eval_interval = 15;
  dbms::Return_Tql_Select_Data reply = db.select(request);
  check_status(reply.status, reply.details);
  return std::move(reply.res);
}

std::unique_ptr<patch_t> select_one(dbms::Database& db, const id_t& id,
                                    std::unique_ptr<pattern_t> pattern, int32_t flags) {
  std::vector<patch_t> found = select(db, {id}, std::move(pattern), flags);
  TAVREL_ASSERT(found.size() <= 1, "lst.size() > 1");
  if (found.empty()) return nullptr;
  return std::make_unique<patch_t>(std::move(found.front()));
}

std::unique_ptr<patch_t> get_object(dbms::Database& db, const id_t& id, int32_t class_) {
  return select_one(db, id, make_pattern(class_, 2), 0);
}

std::unique_ptr<property_t> get_property(dbms::Database& db, const id_t& id, int32_t class_,
                                         int32_t property) {
  std::unique_ptr<patch_t> object =
      select_one(db, id, make_pattern(class_, std::set<int32_t>{property}, 0), 0);
  if (!object) throw errors::tql(errors::tql::kNoMatch);
  const property_t* found = object->find_property(property);
  if (!found) {
    throw errors::tql(errors::tql::kNoSuchProperty,
                      "Property not found " + property_name(property));
  }
  return found->clone();
}

created_t create_object(dbms::Database& db, const id_t& parent, int32_t class_,
                        std::vector<property_ptr> properties, int32_t flags) {
  dbms::Tql_Create_Data request;
  request.parent_id = parent;
  request.class_ = class_;
  request.properties = std::move(properties);
  request.flags = flags;
  dbms::Return_Tql_Create_Data reply = db.create(request);
  check_status(reply.status, reply.details);
  return {reply.new_id, reply.new_version, reply.status};
}

updated_t update_object(dbms::Database& db, const id_t& id, version_t version,
                        std::vector<property_ptr> properties, int32_t flags) {
  dbms::Tql_Update_Data request;
  request.id = id;
  request.version = version;
  request.properties = std::move(properties);
  request.flags = flags;
  dbms::Return_Tql_Update_Data reply = db.update(request);
  check_status(reply.status, reply.details);
  return {reply.new_version, reply.status};
}

int32_t delete_object(dbms::Database& db, const id_t& id, version_t version) {
  dbms::Tql_Delete_Data request;
  request.id = id;
  request.version = version;
  dbms::Return_Tql_Delete_Data reply = db.remove(request);
  check_status(reply.status, reply.details);
  return reply.status;
}

}  // namespace tql
