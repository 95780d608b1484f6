#include "analysis/selection_patterns.h"

#include <utility>

#include "base/log.h"
#include "tql/schema.h"

namespace {

using tql::add_next;
using tql::make_pattern;
using Conditions = std::list<tql::condition_t>;

constexpr int32_t kAll = tql::kPatternAllProps;                              // 2
constexpr int32_t kNestedAll = tql::kPatternNested | tql::kPatternAllProps;  // 3
constexpr int32_t kSelected = tql::kPatternAllProps | tql::kPatternBit4;     // 6

tql::condition_t siblingName(const std::string& name) {
  return {tql::make_string_property(schema::kSiblingName, name), tql::kEqual};
}

std::unique_ptr<tql::pattern_t> tagged(std::unique_ptr<tql::pattern_t> p, int32_t tag) {
  p->tag = tag;
  return p;
}

// CheckGroup 3 -> Check 6 where `checkWhere`, tag 0 -> CheckAccumulation 2, tag 0.
std::unique_ptr<tql::pattern_t> groupsWithChecks(const Conditions& checkWhere) {
  return add_next(make_pattern(schema::kCheckGroup, kNestedAll),
                  add_next(tagged(make_pattern(schema::kCheck, checkWhere, kSelected), 0),
                           tagged(make_pattern(schema::kCheckAccumulation, kAll), 0)));
}

// Wraps `inner` in CheckGroup steps for path[0 .. count), innermost last.
std::unique_ptr<tql::pattern_t> inGroups(std::unique_ptr<tql::pattern_t> inner,
                                         const std::vector<std::string>& path, size_t count) {
  for (size_t i = count; i-- > 0;) {
    inner = add_next(make_pattern(schema::kCheckGroup, Conditions{siblingName(path[i])}, kAll),
                     std::move(inner));
  }
  return inner;
}

}  // namespace

tql::condition_t idInSet(const tql::object_set_t& ids) {
  return {tql::make_property<tql::kind::kObjectSet>(schema::kId, ids), tql::kElementOf};
}

tql::condition_t isActive() {
  return {tql::make_boolean_property(schema::kActive, true), tql::kEqual};
}

std::unique_ptr<tql::pattern_t> selectionTreePattern(
    const std::vector<ReportSelectionRecord>& records, const NodeClassCatalogue& catalogue) {
  auto root = make_pattern(schema::kDomain, kNestedAll);
  for (size_t i = 0; i < records.size(); ++i) {
    const int32_t tag = static_cast<int32_t>(i);
    Conditions a{idInSet(records[i].contains)};
    Conditions b;
    for (const auto& [id, origin] : records[i].nodeClasses) resolveNodeClass(b, catalogue, id);
    Conditions c = a;
    c.insert(c.end(), b.begin(), b.end());
    root = add_next(std::move(root),
                    add_next(make_pattern(schema::kDomain, a, kAll),
                             add_next(make_pattern(schema::kDomain, kNestedAll),
                                      tagged(make_pattern(schema::kNode, b, kAll), tag))));
    root = add_next(std::move(root), tagged(make_pattern(schema::kNode, c, kSelected), tag));
  }
  return root;
}

std::unique_ptr<tql::pattern_t> oldStyleTreePattern(const tql::object_set_t& contains) {
  Conditions a{idInSet(contains)};
  auto listedDomains = add_next(
      make_pattern(schema::kDomain, a, kAll),
      add_next(make_pattern(schema::kDomain, kNestedAll), make_pattern(schema::kNode, kAll)));
  auto listedNodes =
      add_next(make_pattern(schema::kDomain, kNestedAll), make_pattern(schema::kNode, a, kAll));
  return add_next(make_pattern(schema::kDomain, kSelected),
                  tql::pattern_list(std::move(listedDomains), std::move(listedNodes)));
}

std::unique_ptr<tql::pattern_t> oldStyleCheckPattern(const tql::object_set_t& contains,
                                                     bool fallback) {
  Conditions where;
  if (!fallback) where.push_back(idInSet(contains));
  where.push_back(isActive());
  return add_next(make_pattern(schema::kNode, fallback ? kSelected : kAll),
                  groupsWithChecks(where));
}

void pathPatterns(const std::list<std::string>& pathList, tql::pattern_list_t& out) {
  const std::vector<std::string> path(pathList.begin(), pathList.end());
  const size_t n = path.size();
  if (n == 0) return;
  auto check = tagged(
      make_pattern(schema::kCheck, Conditions{siblingName(path[n - 1]), isActive()}, kSelected), 0);
  out.push_back(std::move(*inGroups(std::move(check), path, n - 1)));
  if (n < 2) return;
  if (log_tracing()) {
    log("AccSib1 " + path[n - 1], kLogTrace);
    log("AccSib2 " + path[n - 2], kLogTrace);
    for (size_t i = n - 2; i-- > 0;) log("AccSibn " + path[i], kLogTrace);
  }
  auto accumulation = add_next(
      make_pattern(schema::kCheck, Conditions{siblingName(path[n - 2]), isActive()}, kAll),
      tagged(
          make_pattern(schema::kCheckAccumulation, Conditions{siblingName(path[n - 1])}, kSelected),
          0));
  out.push_back(std::move(*inGroups(std::move(accumulation), path, n - 2)));
}

std::unique_ptr<tql::pattern_t> tagCheckPattern(const std::vector<ReportSelectionRecord>& records,
                                                const std::set<int32_t>& tags) {
  auto node = make_pattern(schema::kNode, kSelected);
  for (int32_t tag : tags) {
    if (tag < 0 || static_cast<size_t>(tag) >= records.size()) continue;
    const ReportSelectionRecord& record = records[static_cast<size_t>(tag)];
    if (record.checkPaths.empty()) {
      node = add_next(std::move(node), groupsWithChecks(Conditions{isActive()}));
      continue;
    }
    for (const auto& path : record.checkPaths) pathPatterns(path, node->next);
  }
  return node;
}
