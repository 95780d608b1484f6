#include "host/select_match.h"

#include "host/store_errors.h"
#include "tql/schema.h"

namespace host {

namespace {

bool condition_holds(const StoredObject& object, const tql::condition_t& c) {
  if (c.prop->name == schema::kId) {
    tql::property_object_t self(schema::kId, {object.id, {}});
    return self.compare(c.rel_op, *c.prop);
  }
  auto it = object.properties.find(c.prop->name);
  if (it == object.properties.end()) return false;
  return it->second->compare(c.rel_op, *c.prop);
}

}  // namespace

bool step_matches(const StoredObject& object, const tql::pattern_t& step) {
  if (step.class_ != schema::kRootClass && step.class_ != object.class_) return false;
  for (const tql::condition_t& c : step.where) {
    if (!condition_holds(object, c)) return false;
  }
  return true;
}

void check_pattern(const tql::pattern_t& pattern, int depth) {
  if (depth > kMaxPatternDepth) {
    throw EBadRequest("The pattern is deeper than " + std::to_string(kMaxPatternDepth) + " steps");
  }
  for (const tql::condition_t& c : pattern.where) {
    if (!c.prop) {
      throw EBadRequest("A where condition of the pattern step for class " +
                        std::to_string(pattern.class_) + " has no property");
    }
  }
  for (const tql::pattern_t& next : pattern.next) check_pattern(next, depth + 1);
}

}  // namespace host
