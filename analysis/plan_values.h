// Readers of the values of stored plan objects, shared by the interval
// builder and the configuration listing.
#pragma once

#include <cstdint>
#include <string>

#include "tql/patch.h"

// `active` of an Event; absent or null is false. Raises errors::tql for a
// property of another kind.
bool eventActive(const tql::patch_t& event);

// `startTime` and `duration` of an Event, in seconds, clamped into the
// 32-bit range of a TimeValue. Raise errors::tql when absent, null or not
// a number.
int32_t eventStart(const tql::patch_t& event);
int32_t eventDuration(const tql::patch_t& event);

// `name` of a planner; empty when absent or null.
std::string plannerName(const tql::patch_t& planner);

// `date` of a DatePlanner, clamped into the 32-bit range. Raises
// errors::tql when absent, null or not a date.
int32_t plannerDate(const tql::patch_t& planner);

// A double clamped into int32 (NaN is 0): what a damaged stored number
// turns into before time arithmetic.
int32_t clampToInt32(double v);
