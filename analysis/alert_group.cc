// The alert group of a check, check accumulation or node, followed up the
// tree where it is inherited: "0.2" takes the node's group, "0.3" the group
// of the nearest domain above that names one.
#include <memory>
#include <string>

#include "analysis/check_configuration.h"
#include "analysis/property_values.h"
#include "analysis/row_sink.h"
#include "base/log.h"
#include "tql/catalogue.h"
#include "tql/schema.h"

namespace {

using tql::add_next;
using tql::make_pattern;

void trace(const std::string& line) {
  if (log_tracing()) log(line, kLogTrace);
}

// The first object of class `class_` on the chain of first children from
// `top` (itself included), or null.
const tql::patch_t* firstOnChain(const tql::patch_t& top, int32_t class_) {
  const tql::patch_t* p = &top;
  while (p->class_ != class_) {
    if (p->children.empty()) return nullptr;
    p = &p->children.front();
  }
  return p;
}

std::unique_ptr<tql::pattern_t> whereId(int32_t class_, const tql::id_t& id, int32_t flags) {
  return make_pattern(class_, std::list<tql::condition_t>{tql::id_condition(id)}, flags);
}

// From the report's root down to `object` (a check, or for anything else a
// check accumulation below a check).
std::unique_ptr<tql::pattern_t> pathToObject(const tql::patch_t& object) {
  std::unique_ptr<tql::pattern_t> leaf;
  if (object.class_ == schema::kCheck) {
    leaf = whereId(schema::kCheck, object.id, 0);
  } else {
    leaf = add_next(make_pattern(schema::kCheck, 0),
                    whereId(schema::kCheckAccumulation, object.id, 0));
  }
  return add_next(
      make_pattern(schema::kDomain, tql::kPatternNested),
      add_next(make_pattern(schema::kNode, tql::kPatternAllProps),
               add_next(make_pattern(schema::kCheckGroup, tql::kPatternNested), std::move(leaf))));
}

// The group reference of `p`: set when it is an object property that is not
// null.
std::optional<tql::id_t> groupOf(const tql::property_t* p) {
  const auto ref = tql::value_of<tql::property_object_t>(p);
  if (!ref) return std::nullopt;
  return ref->id;
}

// The group that the domains above `object` give it: the lowest real group
// on the chain from the root. Null when the chain can't be followed.
std::optional<tql::id_t> domainGroup(ObjectSource& objects, const tql::patch_t& object,
                                     const tql::id_t& inherited) {
  const std::set<int32_t> wanted{schema::kAlertGroupProperty};
  auto child = make_pattern(schema::kRootClass, wanted, 0);
  child->where.push_back(tql::id_condition(object.id));
  auto chain = objects.selectOne(
      tql::kRootId,
      add_next(make_pattern(schema::kRootClass, wanted, tql::kPatternNested), std::move(child)));
  if (!chain) {
    trace("Couldn't get root for determining AlertGroup");
    return std::nullopt;
  }
  tql::id_t group = inherited;
  for (const tql::patch_t* level = chain.get(); level->class_ != schema::kNode;) {
    if (const tql::property_t* p = level->find_property(schema::kAlertGroupProperty)) {
      if (p->is_null) {
        group = tql::id_t();
      } else if (auto id = groupOf(p); id && *id != tql::kId02 && *id != tql::kId03) {
        group = *id;
      }
    }
    if (level->id == object.id) break;
    if (level->children.empty()) {
      trace("Couldn't find current object in chain of children");
      return std::nullopt;
    }
    level = &level->children.front();
  }
  return group;
}

// The rows of the group's alert paths; false when a path can't be found.
bool writePaths(RowSink& rows, ObjectSource& objects, const tql::id_t& folder,
                const tql::patch_t& group, const tql::id_t& rootId) {
  const auto members = tql::value_of<tql::property_object_set_t>(group, schema::kMembers);
  if (!members) return true;
  for (const auto& [pathId, origin] : *members) {
    trace("Got path " + pathId.text());
    auto pattern =
        add_next(make_pattern(schema::kDomain, 0),
                 add_next(make_pattern(schema::kDomain, tql::kPatternNested),
                          add_next(make_pattern(schema::kUser, 0),
                                   whereId(schema::kAlertPath, pathId, tql::kPatternAllProps))));
    const auto found = objects.selectOne(rootId, std::move(pattern));
    const tql::patch_t* path = found ? firstOnChain(*found, schema::kAlertPath) : nullptr;
    if (path == nullptr) {
      log("Error: couldn't find AlertPath.");
      return false;
    }
    trace("Got okay path " + pathId.text());
    rows.propertyRow(folder, " ", *path, schema::kLongLabel, false, "", {});
  }
  return true;
}

}  // namespace

void writeAlertGroupRows(RowSink& rows, ObjectSource& objects, const tql::id_t& folder,
                         const tql::patch_t& object, const tql::id_t& rootId) {
  trace("creating alertgroup " + object.id.text() + " origin " + rootId.text());
  std::string prefix;
  std::optional<tql::id_t> group = groupOf(&object.property(schema::kAlertGroupProperty));
  if (!group) {
    rows.row(folder, "Alert group", "none", {});
    return;
  }
  if (*group == tql::kId02) {
    prefix += object.class_ == schema::kCheckAccumulation ? "as check -> " : "as node -> ";
    const auto path = objects.selectOne(rootId, pathToObject(object));
    if (!path) {
      trace("Couldn't get alertgroup " + group->text());
      return;
    }
    const tql::patch_t* node = firstOnChain(*path, schema::kNode);
    if (node == nullptr) {
      log("Error: couldn't find AlertGroup.");
      return;
    }
    group = groupOf(node->find_property(schema::kAlertGroupProperty));
    if (!group) {
      rows.row(folder, "Alert group", prefix + "none", {});
      return;
    }
  }
  if (*group == tql::kId03) {
    prefix += "as domain -> ";
    group = domainGroup(objects, object, *group);
    if (!group) return;
  }
  const auto found = group->empty() ? nullptr : objects.getObject(*group, schema::kAlertGroup);
  if (!found) {
    trace("Couldn't get alertgroup " + group->text());
    return;
  }
  trace("Got alertgroup " + group->text());
  const auto name = tql::value_of<tql::property_string_t>(*found, schema::kName);
  if (!name) return;
  rows.row(folder, "Alert group", prefix + *name, {});
  writePaths(rows, objects, folder, *found, rootId);
}

void addAlertGroupRows(dbms::Database& db, const tql::id_t& folder, const tql::patch_t& object,
                       const tql::id_t& rootId) {
  DatabaseRows rows(db);
  DatabaseObjects objects(db);
  writeAlertGroupRows(rows, objects, folder, object, rootId);
}
