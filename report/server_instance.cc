#include "report/server_instance.h"

#include "dbms/tql_operations.h"
#include "report/server_items.h"
#include "report/server_query.h"
#include "report/server_report.h"
#include "report/server_values.h"
#include "tql/decode.h"
#include "tql/errors.h"
#include "tql/schema.h"

namespace stored = report::stored;

ServerReportInstance::ServerReportInstance(dbms::Database& db, tql::id_t instance_id)
    : db_(db), id_(instance_id) {
  std::unique_ptr<tql::patch_t> object = tql::get_object(db_, id_, schema::kReportInstance);
  if (!object) {
    throw errors::tql(errors::tql::kNotFound, "Report instance " + id_.text() + " not found");
  }
  tql::decode_string(object->property(schema::kName), name_);
  start_ = stored::seconds_of(*object, schema::kStartTime);
  duration_ = stored::seconds_of(*object, schema::kDuration);
  generated_ = object->find_property(schema::kGenerated) == nullptr
                   ? 0
                   : stored::seconds_of(*object, schema::kGenerated);
}

void ServerReportInstance::generatedBy(std::string& out) {
  std::unique_ptr<tql::property_t> generator =
      tql::get_property(db_, tql::id_t{}, schema::kClusterInfo, schema::kReportGenerator);
  tql::decode_string(*generator, out);
}

void ServerReportInstance::contents(report::ContentList& out) {
  std::vector<tql::patch_t> children = stored::select_children(
      db_, id_,
      {{schema::kReportResultFolder,
        {schema::kFolderType, schema::kOrder, schema::kName, schema::kComment}},
       {schema::kReportText, {schema::kOrder, schema::kComment}}});
  stored::sort_by_order(children);
  for (tql::patch_t& child : children) out.push_back(stored::make_item(db_, std::move(child)));
}

namespace report {

std::unique_ptr<ReportInstance> open_server_instance(dbms::Database& db, tql::id_t instance_id) {
  return std::make_unique<ServerReportInstance>(db, instance_id);
}

}  // namespace report
