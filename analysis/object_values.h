// Readers of the properties of stored objects that the walk, the selection
// and the driver share: what is set (present and not null), and labels.
#pragma once

#include <cstdint>
#include <limits>
#include <string>

#include "tql/patch.h"

// The value that stands for a number that isn't set.
inline constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// The string value of a set property, or `fallback` when the property is
// absent or null. Raises errors::tql (code 9) for a property of another kind.
std::string stringOr(const tql::patch_t& object, int32_t number, const std::string& fallback);

// The value of a set double-valued property (uint, int or real), or
// `fallback` when absent or null. Raises errors::tql for other kinds.
double scalarOr(const tql::patch_t& object, int32_t number, double fallback);

// A boolean property: absent leaves `value` unchanged; present and null, or
// of another kind, raises errors::tql (code 9).
void readFlag(const tql::patch_t& object, int32_t number, bool& value);
