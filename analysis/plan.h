// The intervals of a Plan: which hours of a report's period count.
//
// A Plan holds DayPlanner (every day), WeekPlanner (DayPlanner children
// named by lower-case English weekday) and DatePlanner (one day) children,
// each with Event children (`active`, `startTime` and `duration` in seconds
// after the midnight). Calendar work uses the server's own zone (the zone
// of TZ at start), not the report's.
#pragma once

#include <cstdint>
#include <memory>

#include "analysis/interval_set.h"
#include "tql/patch.h"
#include "tql/pattern.h"

// Fills `result` with the intervals that `plan` describes between `start`
// and `end`, merged and clipped to (start, end). A day is 86400 seconds:
// after a change of daylight saving the events keep their distance from
// the first midnight. Additions saturate (TimeValue).
//
// `plan` null or not of class Plan: fatal assertion "get_plan_intervals:
// illegal plan parameter". A child of another class raises error::EFatal
// "Illegal subclass of Plan". A damaged property of an active Event (null,
// absent, wrong kind) raises errors::tql; an absent or null `active` counts
// as false. Raises what local()/compose() raise.
void get_plan_intervals(IntervalSet& result, const tql::patch_t* plan, TimeValue start,
                        TimeValue end);

// The IntervalSet of a report with a period: the intervals of `plan` (the
// first Plan among the Report's children, or null when it has none) for
// `start` to `start` + `duration`; when that gives nothing, the one interval
// of the whole period. Raises what get_plan_intervals raises.
IntervalSet reportIntervals(const tql::patch_t* plan, int64_t start, int64_t duration);

// The first child of `report` of class Plan, or null. The patch keeps it.
const tql::patch_t* firstPlan(const tql::patch_t& report);

// The query step that fetches plans: Plan (all properties) with its
// ExpectedEvent and UnexpectedEvent children and WeekPlanner, DayPlanner,
// Event below it, all with their properties.
std::unique_ptr<tql::pattern_t> planPattern();
