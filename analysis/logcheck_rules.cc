// The LogCheck rules of a check in a configuration report: its rules and
// comments in their `order`, each as one row.
#include <algorithm>
#include <map>
#include <string>

#include "analysis/check_configuration.h"
#include "analysis/property_values.h"
#include "analysis/row_sink.h"
#include "analysis/row_texts.h"
#include "base/fatal.h"
#include "tql/catalogue.h"
#include "tql/decode.h"
#include "tql/schema.h"

namespace {

// Ascending by `order`; an object without it comes first.
bool orderedBefore(const tql::patch_t& a, const tql::patch_t& b) {
  const tql::property_t* pa = a.find_property(schema::kOrder);
  const tql::property_t* pb = b.find_property(schema::kOrder);
  if (pa == nullptr || pb == nullptr) return pa == nullptr && pb != nullptr;
  return pa->compare(tql::kLess, *pb);
}

std::optional<tql::id_t> destinationOf(const tql::patch_t& rule) {
  const auto ref = tql::value_of<tql::property_object_t>(rule, schema::kDestination);
  if (!ref) return std::nullopt;
  return ref->id;
}

// The forward targets of the rules, by id: one select for all of them.
std::map<tql::id_t, tql::patch_t> fetchTargets(ObjectSource& objects,
                                               const std::vector<tql::patch_t>& entries) {
  std::list<tql::id_t> ids;
  for (const tql::patch_t& e : entries) {
    if (e.class_ != schema::kLogCheckRule) continue;
    if (const auto id = destinationOf(e)) ids.push_back(*id);
  }
  std::map<tql::id_t, tql::patch_t> targets;
  if (ids.empty()) return targets;
  for (tql::patch_t& p : objects.select(ids, tql::make_pattern(schema::kRootClass, 2))) {
    const tql::id_t id = p.id;
    targets.emplace(id, std::move(p));
  }
  return targets;
}

// The agent of a rule's forward target in single quotes, or the text of a
// target that is gone.
std::string targetText(const tql::patch_t& rule, const std::map<tql::id_t, tql::patch_t>& targets) {
  const auto id = destinationOf(rule);
  const auto found = id ? targets.find(*id) : targets.end();
  if (found == targets.end()) return "<deleted forward LogCheck>";
  const auto agent = tql::value_of<tql::property_string_t>(found->second, schema::kAgentId);
  TAVREL_ASSERT(agent != nullptr,
                "agent_id_prop is NULL in ReportSingleRawIssue::analyseConfiguration");
  return "'" + *agent + "'";
}

void writeEntry(RowSink& rows, const tql::id_t& folder, const tql::patch_t& entry,
                const std::map<tql::id_t, tql::patch_t>& targets) {
  if (entry.class_ == schema::kLogCheckRuleComment) {
    if (const tql::property_t* text = entry.find_set_property(schema::kText)) {
      std::string value;
      tql::decode_string_or_text(*text, value);
      rows.row(folder, "", "# " + value, {});
    }
    return;
  }
  if (entry.class_ != schema::kLogCheckRule) return;
  const auto regex = tql::value_of<tql::property_string_t>(entry, schema::kLogCheckRegex);
  const auto status = tql::value_of<tql::property_enum_t>(entry, schema::kLogCheckStatus);
  const auto decision = tql::value_of<tql::property_enum_t>(entry, schema::kLogCheckLogDecision);
  if (!regex || !status || !decision) return;
  const bool forwards = decision->value == 2 || decision->value == 3;
  rows.row(folder, "",
           logCheckRuleText(*regex, status->value, decision->value,
                            forwards ? targetText(entry, targets) : ""),
           {});
}

}  // namespace

void writeLogCheckRules(RowSink& rows, ObjectSource& objects, const tql::patch_t& check,
                        const tql::id_t& folder) {
  auto pattern = tql::add_next(
      tql::make_pattern(schema::kCheck, 0),
      tql::pattern_list(tql::make_pattern(schema::kLogCheckRule, tql::kPatternAllProps),
                        tql::make_pattern(schema::kLogCheckRuleComment, tql::kPatternAllProps)));
  std::unique_ptr<tql::patch_t> found = objects.selectOne(check.id, std::move(pattern));
  if (!found) return;
  const tql::id_t sub = rows.folder(folder, 4, "LogCheck rules", {});
  std::vector<tql::patch_t>& entries = found->children;
  std::stable_sort(entries.begin(), entries.end(), orderedBefore);
  const std::map<tql::id_t, tql::patch_t> targets = fetchTargets(objects, entries);
  for (const tql::patch_t& entry : entries) writeEntry(rows, sub, entry, targets);
}
