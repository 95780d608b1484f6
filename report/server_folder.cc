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
  return {stored::kResultFolder,
          {stored::kFolderType, stored::kName, stored::kComment, stored::kOrder}};
}

// A graph comes with every option that its chart reads.
stored::ChildStep graph_step() {
  stored::ChildStep step{
      stored::kResultGraph,
      {schema::kUnit, schema::kPreferredUnit, schema::kPreferredBinary, schema::kStateColors,
       schema::kTsdbIndex, schema::kAlertIfAbove, schema::kAlertIfBelow, schema::kWarnIfAbove,
       schema::kWarnIfBelow, schema::kPlotMin, schema::kPlotMax, schema::kGraphShowMinMax,
       schema::kGraphShowNoResponse, schema::kGraphTabularUptime, stored::kOrder, stored::kName,
       stored::kComment}};
  for (int32_t state = 0; state < 32; ++state) step.wanted.insert(schema::kStateLabel0 + state);
  return step;
}

std::vector<stored::ChildStep> content_steps() {
  return {{stored::kResultRow,
           {stored::kOrder, stored::kName, stored::kText, stored::kComment, stored::kOriginNode}},
          folder_step(),
          graph_step(),
          {stored::kResultLog,
           {stored::kOrder, stored::kName, stored::kTsdbIncident, stored::kComment}}};
}

bool is_sub_section(const tql::patch_t& object) {
  return object.class_ == stored::kResultFolder &&
         stored::folder_type_of(object) == report::kFolderSubSection;
}

}  // namespace

void ServerReportFolder::comment(std::string& out) {
  out = stored::text_of(object, stored::kComment);
}

uint32_t ServerReportFolder::folderType() {
  return stored::folder_type_of(object).value_or(kUnknownFolderType);
}

void ServerReportFolder::name(std::string& out) { out = stored::text_of(object, stored::kName); }

void ServerReportFolder::anchor(std::string& out) { out = object.id.text(); }

void ServerReportFolder::contents(report::ContentList& out) {
  std::vector<tql::patch_t> children = stored::select_children(object.id, content_steps());
  stored::sort_by_order(children);
  for (tql::patch_t& child : children) {
    if (child.class_ == stored::kResultFolder && !is_sub_section(child)) continue;
    out.push_back(stored::make_item(std::move(child)));
  }
}

void ServerReportFolder::subfolders(std::vector<std::unique_ptr<report::ReportFolder>>& out) {
  std::vector<tql::patch_t> children = stored::select_children(object.id, {folder_step()});
  std::erase_if(children, [](const tql::patch_t& child) {
    return child.class_ != stored::kResultFolder || !stored::folder_type_of(child) ||
           is_sub_section(child);
  });
  stored::sort_folders(children);
  for (tql::patch_t& child : children) {
    out.push_back(std::make_unique<ServerReportFolder>(std::move(child)));
  }
}

namespace report::stored {

std::unique_ptr<ReportFolderContent> make_item(tql::patch_t object) {
  switch (object.class_) {
    case kResultRow:
      return std::make_unique<ServerReportRow>(std::move(object));
    case kResultGraph:
      return std::make_unique<ServerReportGraph>(std::move(object));
    case kResultLog:
      return std::make_unique<ServerReportLog>(std::move(object));
    case kResultFolder:
      return std::make_unique<ServerReportFolder>(std::move(object));
    case kReportText:
      return std::make_unique<ServerReportText>(std::move(object));
    default:
      throw error::EParseError("Unexpected class in report: " + std::to_string(object.class_));
  }
}

}  // namespace report::stored
