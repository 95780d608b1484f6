// Small questions the row writers ask of a stored object's properties.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "analysis/object_values.h"
#include "tql/patch.h"
#include "tql/property.h"

// A row label and the property that gives the row its value.
struct LabelledProperty {
  const char* label;
  int32_t property;
};

inline bool isSet(const tql::patch_t& object, int32_t number) {
  return object.find_set_property(number) != nullptr;
}

// The value of a property of kind K that is not null; nothing for a null
// property, one of another kind, or none.
template <class Kind>
std::optional<typename Kind::value_type> valueOf(const tql::property_t* p) {
  if (p == nullptr || p->is_null) return std::nullopt;
  const auto* typed = dynamic_cast<const Kind*>(p);
  if (typed == nullptr) return std::nullopt;
  return typed->value;
}

template <class Kind>
std::optional<typename Kind::value_type> valueOf(const tql::patch_t& object, int32_t number) {
  return valueOf<Kind>(object.find_property(number));
}

// The value of an enumeration property (of any enumeration), if it is one
// and not null.
inline std::optional<uint32_t> enumValue(const tql::patch_t& object, int32_t number) {
  const auto v = valueOf<tql::property_enum_t>(object, number);
  if (!v) return std::nullopt;
  return v->value;
}

// A string property that is not null and not empty.
inline std::optional<std::string> nonEmptyString(const tql::patch_t& object, int32_t number) {
  auto v = valueOf<tql::property_string_t>(object, number);
  if (!v || v->empty()) return std::nullopt;
  return v;
}
