// Texts of times, dates, clock times and the `period` enumeration, as
// reports and charts show them.
#pragma once

#include <cstdint>
#include <string>

#include "base/zone.h"

// "2026-01-05 08:03:09" in `zone`. A negative `t` is the fatal assertion
// "time2str(): Parameter less than 0", so callers pass only times that can't
// be negative: a stored time is checked where it is read (a report period
// by Report::resolveIssue, report headers by report::header_time) and
// refused as a damaged value. Raises what local() raises.
std::string time2str(int64_t t, zone_t zone);

// "2026-1-5" in `zone`, without padding; raises what local() raises.
std::string date2str(int64_t t, zone_t zone);

// "HH:MM:SS" of a number of seconds from midnight.
std::string clock2str(int64_t seconds);

// The text of a `period` value, 0 to 7 ("1 year" ... "1 hour"). Another
// value is the fatal assertion "Unknown value (n) in period2str".
std::string period2str(int v);
// True for the values period2str knows.
bool isPeriodValue(int64_t v);
