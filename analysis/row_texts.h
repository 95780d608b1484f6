// The texts of report rows that depend only on values: percentages, period
// phrases and the words of a configuration report.
#pragma once

#include <cstdint>
#include <string>

#include "analysis/issue_stats.h"
#include "base/zone.h"

// A percentage as rows show it: three decimals and " %" ("99.500 %"); NaN
// is "nan %".
std::string percentText(double percent);

// The four percentages of a check's sums, with T = sum_total_time; each
// sum converted to double, added, multiplied by 100.0 and divided by T.
struct Percentages {
  double availability;  // unknown + ok + warn; NaN when T is 0
  double downtime;      // bad + alert; 0 when T is 0
  double confirmed;     // warn + ok; 0 when T is 0
  double unconfirmed;   // unknown; 0 when T is 0
};
Percentages percentagesOf(const IssueStats& stats);

// `alertStrategy`: "Immediate" for 0, "ScoreKeeper" for 1, "unknown" for
// anything else (no value at all included).
std::string alertStrategyText(const uint32_t* strategy);

// `forecastAlertTime`: "1 hour" ... "48 hours", "<unknown>" past 5.
std::string forecastTimeText(uint32_t value);
// `forecastAlertEstError`: "5 %" ... "25 %", "<unknown>" past 4.
std::string forecastErrorText(uint32_t value);

// `stateActionN`: "Ok", "Warn", "Alert", "Unknown" for any other value.
std::string stateActionText(uint32_t action);

// The row of a LogCheck rule: regex, ": ", by `decision` the status word
// (ok, warn, alert) and " log" (0) or " quiet" (1), "moveto " (2) or
// "copyto " (3) and `target`, nothing for another decision; then ";". A
// status other than 0 to 2 has the word "unknown".
std::string logCheckRuleText(const std::string& regex, uint32_t status, uint32_t decision,
                             const std::string& target);

// `period` of an accumulation check as text; "<unknown>" for a value that
// the period enumeration doesn't have.
std::string accumulationPeriodText(uint32_t value);
