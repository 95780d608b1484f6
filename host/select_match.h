// Whether one object meets one step of a select pattern.
#pragma once

#include "host/store_objects.h"
#include "tql/pattern.h"

namespace host {

// True when `object` is of the step's class (class 13 matches any class) and
// meets every `where` condition. A condition compares the object's property
// of the condition's number with the condition's value by its `rel_op`
// (stored.compare(rel_op, value)); property 0 (`id`) stands for the object's
// id as a property_object_t. An object without the property fails the
// condition. Raises errors::tql_incomparable when the kinds can't be
// compared.
bool step_matches(const StoredObject& object, const tql::pattern_t& step);

// Raises EBadRequest when a condition anywhere in the tree has no property,
// or the tree is deeper than kMaxPatternDepth steps, so that a select either
// fails before it starts or not at all.
inline constexpr int kMaxPatternDepth = 64;
void check_pattern(const tql::pattern_t& pattern, int depth = 1);

}  // namespace host
