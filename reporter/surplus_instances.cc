#include "reporter/surplus_instances.h"

#include <algorithm>
#include <set>

#include "base/log.h"
#include "dbms/tql_operations.h"
#include "reporter/subscriptions.h"
#include "tql/decode.h"
#include "tql/errors.h"
#include "tql/pattern.h"
#include "tql/schema.h"

std::vector<const tql::patch_t*> surplus_instances(const tql::patch_t& report) {
  const tql::property_t& max_property = report.property(schema::kMaxInstances);
  if (max_property.is_null) return {};
  uint32_t max = 0;
  tql::decode_uint(max_property, max);
  std::vector<std::pair<int64_t, const tql::patch_t*>> dated;
  for (const tql::patch_t& child : report.children) {
    if (child.class_ != schema::kReportInstance) continue;
    int64_t date = 0;
    tql::decode_date(child.property(schema::kDate), date);
    dated.emplace_back(date, &child);
  }
  std::stable_sort(dated.begin(), dated.end(),
                   [](const auto& a, const auto& b) { return a.first < b.first; });
  std::vector<const tql::patch_t*> surplus;
  for (size_t i = 0; i + max < dated.size(); ++i) surplus.push_back(dated[i].second);
  return surplus;
}

void delete_surplus_instances(dbms::Database& db, tql::id_t report_id) {
  try {
    auto pattern = tql::add_next(
        tql::make_pattern(schema::kReport, std::set<int32_t>{schema::kMaxInstances}, 0),
        tql::make_pattern(schema::kReportInstance, std::set<int32_t>{schema::kDate}, 0));
    std::unique_ptr<tql::patch_t> report = tql::select_one(db, report_id, std::move(pattern), 0);
    if (!report) return;
    for (const tql::patch_t* instance : surplus_instances(*report)) {
      try {
        tql::delete_object(db, instance->id, instance->version);
      } catch (const errors::tql& e) {
        log("Error deleting old report instance: " + e.text());
      }
    }
  } catch (const errors::tql& e) {
    log("Error deleting surplus instances: " + e.text());
  }
}
