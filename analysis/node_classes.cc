#include "analysis/node_classes.h"

#include "analysis/object_values.h"
#include "dbms/tql_operations.h"
#include "tql/decode.h"
#include "tql/schema.h"

namespace {

void collect(const tql::patch_t& object, NodeClassCatalogue& catalogue) {
  if (object.class_ == schema::kNodeClass) {
    NodeClassRecord record;
    if (const tql::property_t* p = object.find_set_property(schema::kAutoPromote)) {
      tql::decode_boolean(*p, record.autoPromote);
    }
    tql::object_set_t parents;
    if (const tql::property_t* p = object.find_set_property(schema::kInheritsFrom)) {
      tql::decode_object_set(*p, parents);
    }
    for (const auto& [parent, origin] : parents) {
      record.parents.push_back(parent);
      catalogue.derivedClasses.emplace(parent, object.id);
    }
    catalogue.classRecords[object.id] = std::move(record);
  }
  for (const tql::patch_t& child : object.children) collect(child, catalogue);
}

}  // namespace

NodeClassCatalogue catalogueOf(const tql::patch_t& tree) {
  NodeClassCatalogue catalogue;
  collect(tree, catalogue);
  return catalogue;
}

NodeClassCatalogue readNodeClasses(dbms::Database& db) {
  auto pattern = tql::add_next(
      tql::make_pattern(schema::kDomain, tql::kPatternNested),
      tql::make_pattern(schema::kNodeClass,
                        std::set<int32_t>{schema::kInheritsFrom, schema::kAutoPromote}, 0));
  std::unique_ptr<tql::patch_t> tree = tql::select_one(db, tql::kRootId, std::move(pattern), 0);
  return tree ? catalogueOf(*tree) : NodeClassCatalogue{};
}

namespace {

// `promoting` holds the autoPromote classes on the way down, so that a
// cycle of them ends instead of recursing for ever.
void resolve(std::list<tql::condition_t>& conditions, const NodeClassCatalogue& catalogue,
             const tql::id_t& id, std::set<tql::id_t>& promoting) {
  auto it = catalogue.classRecords.find(id);
  if (it != catalogue.classRecords.end() && it->second.autoPromote) {
    if (!promoting.insert(id).second) return;
    for (const tql::id_t& parent : it->second.parents)
      resolve(conditions, catalogue, parent, promoting);
    promoting.erase(id);
    return;
  }
  std::set<tql::id_t> closure;
  addDerived(closure, catalogue.derivedClasses, id);
  tql::object_set_t value;
  for (const tql::id_t& c : closure) value.emplace(c, tql::origin_t{});
  conditions.push_back(tql::condition_t{
      tql::make_property<tql::kind::kObjectSet>(schema::kNodeClasses, std::move(value)),
      tql::kIntersects});
}

}  // namespace

void resolveNodeClass(std::list<tql::condition_t>& conditions, const NodeClassCatalogue& catalogue,
                      const tql::id_t& id) {
  std::set<tql::id_t> promoting;
  resolve(conditions, catalogue, id, promoting);
}

void addDerived(std::set<tql::id_t>& closure,
                const std::multimap<tql::id_t, tql::id_t>& derivedClasses, const tql::id_t& id) {
  if (!closure.insert(id).second) return;
  auto [first, last] = derivedClasses.equal_range(id);
  for (auto it = first; it != last; ++it) addDerived(closure, derivedClasses, it->second);
}
