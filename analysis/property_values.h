// Small questions the row writers ask of a stored object's properties.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "analysis/object_values.h"
#include "tql/patch.h"
#include "tql/property.h"
#include "tql/value_of.h"

// A row label and the property that gives the row its value.
struct LabelledProperty {
  const char* label;
  int32_t property;
};

inline bool isSet(const tql::patch_t& object, int32_t number) {
  return object.find_set_property(number) != nullptr;
}

// The value of an enumeration property (of any enumeration), if it is one
// and not null.
inline std::optional<uint32_t> enumValue(const tql::patch_t& object, int32_t number) {
  const auto v = tql::value_of<tql::property_enum_t>(object, number);
  if (!v) return std::nullopt;
  return v->value;
}

// A string property that is not null and not empty.
inline std::optional<std::string> nonEmptyString(const tql::patch_t& object, int32_t number) {
  const std::string* v = tql::value_of<tql::property_string_t>(object, number);
  if (v == nullptr || v->empty()) return std::nullopt;
  return *v;
}
