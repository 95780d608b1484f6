// The steps of property_t::compare that all kinds share, and the operators
// that only some kinds know. Used by property.cc.
#pragma once

#include <cstdint>

#include "tql/property.h"

namespace tql::detail {

// Applies a relative operator 1 to 8 to a rank. Raises
// errors::tql_incomparable "Unknown relative operator" for any other.
bool apply_rel_op(int32_t op, int rank);

// The rank when at least one side is null: both 0, this -2, other 2.
int null_rank(bool this_null, bool other_null);

// Raises errors::tql_incomparable "Type mismatch, WORD != type of " and the
// name of `other`'s property.
[[noreturn]] void type_mismatch(const char* word, const property_t& other);

// Two enums of different enumerations can't be compared: raises
// errors::tql_incomparable.
void check_enum_types(const property_enum_t& a, const property_enum_t& b);

// Operator 14: `b`, folded to lower case, occurs in `a` folded likewise.
bool contains_ignore_case(const std::string& a, const std::string& b);

// Operator 12 of an object against an object set.
bool object_in_set(const property_object_t& a, const property_t& other);

// Operators 9, 10, 11 between two object sets.
bool set_relation(const property_object_set_t& a, const property_object_set_t& b, int32_t op);

}  // namespace tql::detail
