// Builders of stored objects for the analysis tests.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "tql/patch.h"
#include "tql/property.h"
#include "tql/schema.h"

namespace testing_patches {

inline tql::patch_t object(int32_t class_number, std::vector<tql::patch_t> children = {}) {
  tql::patch_t p;
  p.class_ = class_number;
  p.children = std::move(children);
  return p;
}

inline tql::patch_t& withUint(tql::patch_t& p, int32_t number, uint32_t v) {
  p.set_property(tql::make_property<tql::kind::kUint>(number, v));
  return p;
}

inline tql::patch_t& withReal(tql::patch_t& p, int32_t number, double v) {
  p.set_property(tql::make_property<tql::kind::kReal>(number, v));
  return p;
}

inline tql::patch_t& withString(tql::patch_t& p, int32_t number, std::string v) {
  p.set_property(tql::make_string_property(number, std::move(v)));
  return p;
}

inline tql::patch_t& withEnum(tql::patch_t& p, int32_t number, uint32_t value,
                              uint32_t enumeration = schema::kStateActionEnum) {
  p.set_property(
      tql::make_property<tql::kind::kEnum>(number, tql::enum_value_t{enumeration, value}));
  return p;
}

inline tql::patch_t& withBool(tql::patch_t& p, int32_t number, bool v) {
  p.set_property(tql::make_boolean_property(number, v));
  return p;
}

inline tql::patch_t& withObject(tql::patch_t& p, int32_t number, tql::id_t id) {
  p.set_property(tql::make_object_property(number, id));
  return p;
}

inline tql::patch_t& withObjectSet(tql::patch_t& p, int32_t number, std::vector<tql::id_t> ids) {
  tql::object_set_t set;
  for (const tql::id_t& id : ids) set.emplace(id, tql::origin_t{});
  p.set_property(tql::make_property<tql::kind::kObjectSet>(number, std::move(set)));
  return p;
}

// An object of `class_number` with the id `id`.
inline tql::patch_t objectWithId(int32_t class_number, tql::id_t id,
                                 std::vector<tql::patch_t> children = {}) {
  tql::patch_t p = object(class_number, std::move(children));
  p.id = id;
  return p;
}

// A property of kind `kind` with is_null set.
inline tql::patch_t& withNull(tql::patch_t& p, int32_t number, int32_t kind) {
  auto prop = tql::make_property(kind);
  prop->name = number;
  prop->is_null = true;
  p.set_property(std::move(prop));
  return p;
}

inline tql::patch_t event(bool active, uint32_t startTime, uint32_t duration) {
  tql::patch_t e = object(schema::kEvent);
  e.set_property(tql::make_boolean_property(schema::kActive, active));
  withUint(e, schema::kStartTime, startTime);
  withUint(e, schema::kDuration, duration);
  return e;
}

inline tql::patch_t dayPlanner(std::string name, std::vector<tql::patch_t> events) {
  tql::patch_t d = object(schema::kDayPlanner, std::move(events));
  withString(d, schema::kName, std::move(name));
  return d;
}

inline tql::patch_t datePlanner(int64_t date, std::vector<tql::patch_t> events) {
  tql::patch_t d = object(schema::kDatePlanner, std::move(events));
  d.set_property(tql::make_property<tql::kind::kDate>(schema::kDate, date));
  return d;
}

inline tql::patch_t plan(std::vector<tql::patch_t> planners) {
  return object(schema::kPlan, std::move(planners));
}

}  // namespace testing_patches
