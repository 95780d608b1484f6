#include "reporter/report_definition.h"

#include "analysis/object_values.h"
#include "base/fatal.h"
#include "dbms/tql_operations.h"
#include "tql/decode.h"
#include "tql/schema.h"

namespace {

using tql::add_next;
using tql::make_pattern;

constexpr int32_t kAll = tql::kPatternAllProps;
constexpr int32_t kSelected = tql::kPatternAllProps | tql::kPatternBit4;

std::unique_ptr<tql::pattern_t> planSteps() {
  auto week = add_next(
      make_pattern(schema::kWeekPlanner, kAll),
      add_next(make_pattern(schema::kDayPlanner, kAll), make_pattern(schema::kEvent, kAll)));
  auto plan = add_next(make_pattern(schema::kPlan, kAll),
                       tql::pattern_list(make_pattern(schema::kExpectedEvent, kAll),
                                         make_pattern(schema::kUnexpectedEvent, kAll)));
  return add_next(std::move(plan), std::move(week));
}

std::unique_ptr<tql::pattern_t> definitionPattern(const tql::id_t& report_id) {
  auto report = make_pattern(schema::kReport,
                             std::list<tql::condition_t>{tql::id_condition(report_id)}, kSelected);
  report = add_next(std::move(report), make_pattern(schema::kReportIssue, kAll));
  report = add_next(std::move(report), add_next(make_pattern(schema::kReportSelection, kSelected),
                                                make_pattern(schema::kReportCheckSelection, kAll)));
  report = add_next(std::move(report), planSteps());
  auto domain =
      make_pattern(schema::kDomain, std::set<int32_t>{schema::kName}, tql::kPatternNested);
  return add_next(std::move(domain),
                  tql::pattern_list(make_pattern(schema::kReportText, kAll), std::move(report)));
}

// A ReportText's `type`: 0 opening, 1 closing, anything else ignored.
void takeText(const tql::patch_t& text, ReportDefinition& definition) {
  const tql::property_t* type = text.find_set_property(schema::kType);
  if (type == nullptr) return;
  uint32_t value = 0;
  tql::decode_enum(*type, schema::kReportTextTypeEnum, value);
  if (value == 0) definition.opening_text = &text;
  if (value == 1) definition.closing_text = &text;
}

}  // namespace

std::string ReportDefinition::pathText() const {
  if (domain_path.empty()) return ".";
  std::string text;
  for (const std::string& name : domain_path) text += "." + name;
  return text.substr(1);
}

void walkDefinition(std::unique_ptr<tql::patch_t> tree, ReportDefinition& definition) {
  definition.tree = std::move(tree);
  const tql::patch_t* level = definition.tree.get();
  while (level->class_ != schema::kReport) {
    definition.owner_domain = level->id;
    if (level->id != tql::kRootId)
      definition.domain_path.push_back(stringOr(*level, schema::kName, ""));
    const tql::patch_t* next = nullptr;
    for (const tql::patch_t& child : level->children) {
      if (child.class_ == schema::kReportText) takeText(child, definition);
      if (child.class_ != schema::kDomain && child.class_ != schema::kReport) continue;
      TAVREL_ASSERT(next == nullptr, "Child found twice while searching for report template");
      next = &child;
    }
    TAVREL_ASSERT(next != nullptr, "Did not find child when searching for report template");
    level = next;
  }
  definition.report = level;
}

std::unique_ptr<ReportDefinition> fetchDefinition(dbms::Database& db, const tql::id_t& report_id) {
  std::unique_ptr<tql::patch_t> tree =
      tql::select_one(db, tql::kRootId, definitionPattern(report_id), 0);
  if (!tree) return nullptr;
  auto definition = std::make_unique<ReportDefinition>();
  walkDefinition(std::move(tree), *definition);
  return definition;
}
