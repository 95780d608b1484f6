#include "tql/compare.h"

#include <algorithm>

#include "tql/catalogue.h"
#include "tql/errors.h"
#include "tql/text.h"

namespace tql::detail {

bool apply_rel_op(int32_t op, int r) {
  switch (op) {
    case kEqual:
      return r == 0;
    case kGreater:
      return r > 0;
    case kLess:
      return r < 0;
    case kGreaterEqual:
      return r >= 0;
    case kLessEqual:
      return r <= 0;
    case kNotEqual:
      return r != 0;
    case kEqualIgnoreCase:
      return r >= -1 && r <= 1;
    case kNotEqualIgnoreCase:
      return r < -1 || r > 1;
    default:
      throw errors::tql_incomparable("Unknown relative operator");
  }
}

int null_rank(bool this_null, bool other_null) {
  if (this_null == other_null) return 0;
  return this_null ? -2 : 2;
}

void type_mismatch(const char* word, const property_t& other) {
  throw errors::tql_incomparable(std::string("Type mismatch, ") + word + " != type of " +
                                 property_name(other.name));
}

void check_enum_types(const property_enum_t& a, const property_enum_t& b) {
  if (a.value.enum_type == b.value.enum_type) return;
  throw errors::tql_incomparable("Type mismatch, enum (" + std::to_string(a.value.enum_type) +
                                 ") != enum (" + std::to_string(b.value.enum_type) + ") of " +
                                 property_name(b.name));
}

bool contains_ignore_case(const std::string& a, const std::string& b) {
  return to_lower(a).find(to_lower(b)) != std::string::npos;
}

bool object_in_set(const property_object_t& a, const property_t& other) {
  const auto* set = dynamic_cast<const property_object_set_t*>(&other);
  if (set == nullptr) type_mismatch("object_set", other);
  if (a.is_null || set->is_null) return false;
  return set->value.count(a.value.id) > 0;
}

namespace {

// Every id of `small` is in `big`.
bool ids_within(const object_set_t& small, const object_set_t& big) {
  return std::all_of(small.begin(), small.end(),
                     [&](const auto& e) { return big.count(e.first) > 0; });
}

}  // namespace

bool set_relation(const property_object_set_t& a, const property_object_set_t& b, int32_t op) {
  switch (op) {
    case kSubsetOf:
      if (a.is_null) return true;
      return !b.is_null && ids_within(a.value, b.value);
    case kSupersetOf:
      if (b.is_null) return true;
      return !a.is_null && ids_within(b.value, a.value);
    default:  // kIntersects
      if (a.is_null || b.is_null) return false;
      return std::any_of(a.value.begin(), a.value.end(),
                         [&](const auto& e) { return b.value.count(e.first) > 0; });
  }
}

}  // namespace tql::detail
