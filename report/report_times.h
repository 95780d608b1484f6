// The two forms in which the renderers show times.
#pragma once

#include <cstdint>
#include <string>

#include "base/zone.h"

namespace report {

// A time of the HTML header block, "2026-01-05 08:03:09" in `zone`. A stored
// time before 1970 is a damaged value and raises error::EParseError; the
// platform's refusal raises error::ESystemError.
std::string header_time(int64_t t, zone_t zone);

// The time of a log entry, "05/01/2026 08:03:09" (day, month, year) in
// `zone`. Raises error::ESystemError when the platform refuses `t`.
std::string entry_time(int64_t t, zone_t zone);

}  // namespace report
