// Report::resolveIssue: the settings and the period of one generation.
#pragma once

#include <cstdint>

#include "analysis/resolved_issue.h"
#include "base/zone.h"
#include "tql/patch.h"

// The `period` values of a Report.
inline constexpr uint32_t kPeriodYesterday = 1;
inline constexpr uint32_t kPeriodLastWeek = 2;  // Monday to Sunday
inline constexpr uint32_t kPeriodLastMonth = 3;
inline constexpr uint32_t kPeriodLastYear = 4;
inline constexpr uint32_t kPeriodEverything = 5;  // From the start of monitoring to `when`.
inline constexpr uint32_t kPeriodLastQuarter = 6;

struct Report {
  // Fills `options` from the Report object `report` (with its properties)
  // for a generation ordered at `when`, with calendar work in `zone`:
  // - kind from `type` (required); the form flags, each true when absent,
  //   null or not a boolean; hideLevel and hideThreshold, their defaults
  //   when absent, null or of another kind;
  // - no `period`: hasPeriod false, start and duration 0;
  // - a null `period`: the fixed period of `startTime` and `duration`;
  // - else the calendar period before `when`'s day, week, month, year or
  //   quarter (lengths from composed local times, except a day of 86400 and
  //   a week of 604800 seconds), or 0 to `when`.
  // Raises errors::tql for a missing or damaged `type`, a damaged `period`,
  // and a missing `startTime` or `duration` with a null `period`;
  // error::EParseError "Error got unknown period in Report::resolveIssue"
  // for a `period` value outside 1 to 6, and "Report period starts before
  // 1970: START" / "Report period ends before 1970: ..." for a period that
  // begins or ends before the epoch (a fixed period, or an order time in the
  // first day, week, month or year of 1970); what local()/compose() raise.
  static void resolveIssue(const tql::patch_t& report, int64_t when, ResolvedIssue& options,
                           zone_t zone);
};
