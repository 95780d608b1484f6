#include "analysis/row_sink.h"

#include "analysis/result_objects.h"
#include "dbms/tql_operations.h"

tql::id_t DatabaseRows::folder(const tql::id_t& parent, uint32_t folderType,
                               const std::string& name, const tql::id_t& origin) {
  return addFolder(db_, parent, folderType, name, origin);
}

void DatabaseRows::row(const tql::id_t& parent, const std::string& label, const std::string& value,
                       const tql::id_t& origin) {
  addRow(db_, parent, label, value, origin);
}

void DatabaseRows::propertyRow(const tql::id_t& parent, const std::string& label,
                               const tql::patch_t& object, int32_t property, bool useDefault,
                               const std::string& defaultText, const tql::id_t& origin) {
  addPropertyRow(db_, parent, label, object, property, useDefault, defaultText, origin);
}

void DatabaseRows::propertyRowIfSet(const tql::id_t& parent, const std::string& label,
                                    const tql::patch_t& object, int32_t property,
                                    const tql::id_t& origin) {
  addPropertyRowIfSet(db_, parent, label, object, property, origin);
}

std::unique_ptr<tql::patch_t> DatabaseObjects::selectOne(const tql::id_t& id,
                                                         std::unique_ptr<tql::pattern_t> pattern) {
  return tql::select_one(db_, id, std::move(pattern), 0);
}

std::vector<tql::patch_t> DatabaseObjects::select(const std::list<tql::id_t>& ids,
                                                  std::unique_ptr<tql::pattern_t> pattern) {
  return tql::select(db_, ids, std::move(pattern), 0);
}

std::unique_ptr<tql::patch_t> DatabaseObjects::getObject(const tql::id_t& id, int32_t class_) {
  return tql::get_object(db_, id, class_);
}
