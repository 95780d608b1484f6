#include "analysis/result_objects.h"

#include <utility>

#include "analysis/object_values.h"
#include "analysis/result_create.h"
#include "base/log.h"
#include "dbms/tql_operations.h"
#include "tql/catalogue.h"
#include "tql/decode.h"
#include "tql/errors.h"
#include "tql/schema.h"

uint32_t next_result_order() {
  static uint32_t counter = 1;
  return counter++;
}

tql::property_ptr orderProperty() {
  return tql::make_property<tql::kind::kUint>(schema::kOrder, next_result_order());
}

void appendOrigin(std::vector<tql::property_ptr>& properties, const tql::id_t& origin) {
  if (!origin.empty())
    properties.emplace_back(tql::make_object_property(schema::kOriginNode, origin));
}

tql::id_t createResult(dbms::Database& db, const tql::id_t& parent, int32_t class_,
                       std::vector<tql::property_ptr> properties, const char* className) {
  try {
    return tql::create_object(db, parent, class_, std::move(properties), 0).new_id;
  } catch (const errors::tql& e) {
    if (className != nullptr) {
      log(std::string("Caught exception during creation of ") + className + " with parent " +
          parent.text() + ": " + e.text() + " , " + std::to_string(e.code()));
    }
    throw;
  }
}

tql::id_t addFolder(dbms::Database& db, const tql::id_t& parent, uint32_t folderType,
                    const std::string& name, const tql::id_t& origin) {
  std::vector<tql::property_ptr> p;
  p.emplace_back(tql::make_property<tql::kind::kEnum>(
      schema::kFolderType, tql::enum_value_t{schema::kFolderTypeEnum, folderType}));
  p.emplace_back(tql::make_string_property(schema::kName, name));
  p.emplace_back(orderProperty());
  appendOrigin(p, origin);
  return createResult(db, parent, schema::kReportResultFolder, std::move(p), "ReportResultFolder");
}

tql::id_t addRow(dbms::Database& db, const tql::id_t& parent, const std::string& label,
                 const std::string& value, const tql::id_t& origin) {
  std::vector<tql::property_ptr> p;
  p.emplace_back(orderProperty());
  p.emplace_back(tql::make_string_property(schema::kName, label));
  p.emplace_back(tql::make_string_property(schema::kText, value));
  appendOrigin(p, origin);
  return createResult(db, parent, schema::kReportResultRow, std::move(p), "ReportResultRow");
}

tql::id_t addLog(dbms::Database& db, const tql::id_t& parent, const std::string& name) {
  std::vector<tql::property_ptr> p;
  p.emplace_back(orderProperty());
  p.emplace_back(tql::make_string_property(schema::kName, name));
  return createResult(db, parent, schema::kReportResultLog, std::move(p), "ReportResultLog");
}

tql::id_t addText(dbms::Database& db, const tql::id_t& parent, const std::string& text) {
  std::vector<tql::property_ptr> p;
  p.emplace_back(tql::make_string_property(schema::kComment, text));
  p.emplace_back(orderProperty());
  return createResult(db, parent, schema::kReportText, std::move(p), nullptr);
}

void addPropertyRow(dbms::Database& db, const tql::id_t& parent, const std::string& label,
                    const tql::patch_t& object, int32_t property, bool useDefault,
                    const std::string& defaultText, const tql::id_t& origin) {
  const tql::property_t* p = object.find_set_property(property);
  if (p == nullptr) {
    if (useDefault) addRow(db, parent, label, defaultText, origin);
    return;
  }
  std::string value;
  tql::decode_string_or_text(*p, value);
  addRow(db, parent, label, value, origin);
}

void addPropertyRowIfSet(dbms::Database& db, const tql::id_t& parent, const std::string& label,
                         const tql::patch_t& object, int32_t property, const tql::id_t& origin) {
  if (log_tracing()) {
    log((object.find_set_property(property) != nullptr ? "Existing property "
                                                       : "Non-existing property ") +
            tql::property_name(property),
        kLogTrace);
  }
  addPropertyRow(db, parent, label, object, property, false, "", origin);
}
