#include "analysis/report_selection.h"

#include "analysis/object_values.h"
#include "tql/decode.h"
#include "tql/errors.h"
#include "tql/schema.h"

namespace {

tql::object_set_t objectSet(const tql::patch_t& object, int32_t number) {
  tql::object_set_t out;
  if (const tql::property_t* p = object.find_set_property(number)) tql::decode_object_set(*p, out);
  return out;
}

// A path's elements; a property of another kind is a damaged stored value.
std::list<std::string> path(const tql::patch_t& selection) {
  const tql::property_t* p = selection.find_set_property(schema::kContains);
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
    if (child.class_ != schema::kReportSelection) continue;
    ReportSelectionRecord record;
    record.contains = objectSet(child, schema::kContains);
    record.nodeClasses = objectSet(child, schema::kNodeClasses);
    for (const tql::patch_t& path_object : child.children) {
      if (path_object.class_ == schema::kReportCheckSelection)
        record.checkPaths.push_back(path(path_object));
    }
    records.push_back(std::move(record));
  }
}
