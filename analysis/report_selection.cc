#include "analysis/report_selection.h"

#include "analysis/object_values.h"
#include "analysis/walk_schema.h"
#include "tql/decode.h"
#include "tql/errors.h"

namespace {

tql::object_set_t objectSet(const tql::patch_t& object, int32_t number) {
  tql::object_set_t out;
  if (const tql::property_t* p = setProperty(object, number)) tql::decode_object_set(*p, out);
  return out;
}

// A path's elements; a property of another kind is a damaged stored value.
std::list<std::string> path(const tql::patch_t& selection) {
  const tql::property_t* p = setProperty(selection, walk::kContains);
  if (p == nullptr) return {};
  const auto* list = dynamic_cast<const tql::property_string_list_t*>(p);
  if (list == nullptr) {
    throw errors::tql(errors::tql::kIllegalType,
                      "Type mismatch for property_string_list_t: contains");
  }
  return list->value;
}

}  // namespace

void selectionsOf(const tql::patch_t& report, std::vector<ReportSelectionRecord>& records) {
  records.clear();
  for (const tql::patch_t& child : report.children) {
    if (child.class_ != walk::kReportSelection) continue;
    ReportSelectionRecord record;
    record.contains = objectSet(child, walk::kContains);
    record.nodeClasses = objectSet(child, walk::kNodeClasses);
    for (const tql::patch_t& path_object : child.children) {
      if (path_object.class_ == walk::kReportCheckSelection) record.checkPaths.push_back(path(path_object));
    }
    records.push_back(std::move(record));
  }
}
