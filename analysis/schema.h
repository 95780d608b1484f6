// Class and property numbers of the database schema that the analysis reads.
// The names are those of tql/catalogue_tables.cc; keep in step with it.
#pragma once

#include <cstdint>

namespace schema {

// Classes.
inline constexpr int32_t kPlan = 33;
inline constexpr int32_t kDayPlanner = 34;
inline constexpr int32_t kWeekPlanner = 35;
inline constexpr int32_t kDatePlanner = 36;
inline constexpr int32_t kEvent = 37;

// Properties.
inline constexpr int32_t kName = 51;
inline constexpr int32_t kStartTime = 305;
inline constexpr int32_t kDuration = 306;
inline constexpr int32_t kDate = 320;
inline constexpr int32_t kFrequency = 501;
inline constexpr int32_t kActive = 502;
inline constexpr int32_t kRemoteType = 507;
inline constexpr int32_t kWarnIfAbove = 510;
inline constexpr int32_t kAlertIfAbove = 511;
inline constexpr int32_t kWarnIfBelow = 515;
inline constexpr int32_t kAlertIfBelow = 516;
inline constexpr int32_t kRangeMin = 548;
inline constexpr int32_t kRangeMax = 549;
inline constexpr int32_t kWarnIfAbovePct = 550;
inline constexpr int32_t kAlertIfAbovePct = 551;
inline constexpr int32_t kWarnIfBelowPct = 552;
inline constexpr int32_t kAlertIfBelowPct = 553;
inline constexpr int32_t kStateAction0 = 2700;  // stateAction0 .. stateAction31 follow on.

// The enumeration of stateActionN.
inline constexpr uint32_t kStateActionEnum = 65538;

}  // namespace schema
