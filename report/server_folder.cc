// ServerReportFolder: a folder's contents and subfolders, each read with one
// query when asked for, and the item objects made from what comes back.
#include "base/error.h"
#include "grapher/check_image.h"
#include "report/server_items.h"
#include "report/server_query.h"
#include "report/server_values.h"
#include "tql/schema.h"

namespace stored = report::stored;

namespace {

stored::ChildStep folder_step() {
  return {schema::kReportResultFolder,
          {schema::kFolderType, schema::kName, schema::kComment, schema::kOrder}};
}

// A graph comes with every option that its chart reads.
stored::ChildStep graph_step() {
  stored::ChildStep step{
      schema::kReportResultGraph,
      {schema::kUnit, schema::kPreferredUnit, schema::kPreferredBinary, schema::kStateColors,
       schema::kTsdbIndex, schema::kAlertIfAbove, schema::kAlertIfBelow, schema::kWarnIfAbove,
       schema::kWarnIfBelow, schema::kPlotMin, schema::kPlotMax, schema::kGraphShowMinMax,
       schema::kGraphShowNoResponse, schema::kGraphTabularUptime, schema::kOrder, schema::kName,
       schema::kComment}};
  for (int32_t state = 0; state < 32; ++state) step.wanted.insert(schema::kStateLabel0 + state);
  return step;
}

std::vector<stored::ChildStep> content_steps() {
  return {{schema::kReportResultRow,
           {schema::kOrder, schema::kName, schema::kText, schema::kComment, schema::kOriginNode}},
          folder_step(),
          graph_step(),
          {schema::kReportResultLog,
           {schema::kOrder, schema::kName, schema::kTsdbIncident, schema::kComment}}};
}

bool is_sub_section(const tql::patch_t& object) {
  return object.class_ == schema::kReportResultFolder &&
         stored::folder_type_of(object) == schema::kFolderSubSection;
}

}  // namespace

void ServerReportFolder::comment(std::string& out) {
  out = stored::text_of(object, schema::kComment);
}

uint32_t ServerReportFolder::folderType() {
  return stored::folder_type_of(object).value_or(kUnknownFolderType);
}

void ServerReportFolder::name(std::string& out) { out = stored::text_of(object, schema::kName); }

void ServerReportFolder::anchor(std::string& out) { out = object.id.text(); }

void ServerReportFolder::contents(report::ContentList& out) {
  std::vector<tql::patch_t> children = stored::select_children(db_, object.id, content_steps());
  stored::sort_by_order(children);
  for (tql::patch_t& child : children) {
    if (child.class_ == schema::kReportResultFolder && !is_sub_section(child)) continue;
    out.push_back(stored::make_item(db_, std::move(child)));
  }
}

void ServerReportFolder::subfolders(std::vector<std::unique_ptr<report::ReportFolder>>& out) {
  std::vector<tql::patch_t> children = stored::select_children(db_, object.id, {folder_step()});
  std::erase_if(children, [](const tql::patch_t& child) {
    return child.class_ != schema::kReportResultFolder || !stored::folder_type_of(child) ||
           is_sub_section(child);
  });
  stored::sort_folders(children);
  for (tql::patch_t& child : children) {
    out.push_back(std::make_unique<ServerReportFolder>(db_, std::move(child)));
  }
}

namespace report::stored {

std::unique_ptr<ReportFolderContent> make_item(dbms::Database& db, tql::patch_t object) {
  switch (object.class_) {
    case schema::kReportResultRow:
      return std::make_unique<ServerReportRow>(std::move(object));
    case schema::kReportResultGraph:
      return std::make_unique<ServerReportGraph>(db, std::move(object));
    case schema::kReportResultLog:
      return std::make_unique<ServerReportLog>(db, std::move(object));
    case schema::kReportResultFolder:
      return std::make_unique<ServerReportFolder>(db, std::move(object));
    case schema::kReportText:
      return std::make_unique<ServerReportText>(std::move(object));
    default:
      throw error::EParseError("Unexpected class in report: " + std::to_string(object.class_));
  }
}

}  // namespace report::stored
