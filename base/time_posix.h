// The seam between time and zone code and the platform's C library. Only
// time_posix.cc includes system headers; everything here is plain values.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "base/zone.h"

namespace sys {

// The value of an environment variable, or nothing when it isn't set.
std::optional<std::string> get_env(const char* name);
// putenv of a "NAME=value" text that must live as long as the process.
// Returns false on failure.
bool put_env(char* text);
// Re-reads TZ.
void tz_set();
// Breaks `t` down in the current zone or in GMT; false when the platform
// refuses the time.
bool local_time(int64_t t, tm_t& out);
bool gm_time(int64_t t, tm_t& out);
// mktime in the current zone: normalises `tm` and gives the time, or -1.
int64_t make_time(tm_t& tm);
// strftime into a buffer of 1024 bytes; "" when it reports 0.
std::string format_time(const std::string& format, const tm_t& tm);
// The wall clock. Returns false when the platform reports a failure; the
// fields hold what it gave all the same.
bool wall_clock(int64_t& seconds, int32_t& microseconds);

}  // namespace sys
