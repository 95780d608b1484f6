#include "base/zone.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <optional>

#include "base/error.h"
#include "base/time_posix.h"

namespace {

struct SavedZone {
  bool read = false;
  std::optional<std::string> tz;  // TZ as the process found it
};

SavedZone& saved_zone() {
  static SavedZone saved;
  return saved;
}

// putenv keeps the pointer, so the text lives in a buffer of its own.
char tz_buffer[1024];

}  // namespace

zone_t timeZoneValue(int32_t v) {
  SavedZone& saved = saved_zone();
  if (!saved.read) {
    saved.tz = sys::get_env("TZ");
    saved.read = true;
  }
  return zone_t(v);
}

std::string zoneText(zone_t zone) {
  if (zone.value() == kEnvironmentZone) return saved_zone().tz.value_or("");
  const int64_t a = std::llabs(int64_t{zone.value()});
  const int h = static_cast<int>(a / 3600);
  const int m = static_cast<int>(a % 3600 / 60);
  const int s = static_cast<int>(a % 60);
  char buffer[64];
  int n = std::snprintf(buffer, sizeof buffer, "GMT%s%i", zone.value() >= 0 ? "-" : "", h);
  if (m != 0) n += std::snprintf(buffer + n, sizeof buffer - n, ":%02i", m);
  if (s != 0) std::snprintf(buffer + n, sizeof buffer - n, ":%02i", s);
  return buffer;
}

void applyZone(zone_t zone) {
  std::snprintf(tz_buffer, sizeof tz_buffer, "TZ=%s", zoneText(zone).c_str());
  if (!sys::put_env(tz_buffer)) {
    throw error::ESystemError("Couldn't set TZ environment variable");
  }
  sys::tz_set();
}

tm_t local(int64_t t, zone_t zone) {
  applyZone(zone);
  tm_t tm;
  if (!sys::local_time(t, tm)) {
    throw error::ESystemError("Couldn't get localtime for time " + std::to_string(t));
  }
  return tm;
}

int64_t compose(tm_t& tm, zone_t zone) {
  applyZone(zone);
  const int64_t t = sys::make_time(tm);
  if (t == -1) {
    char buffer[256];
    std::snprintf(buffer, sizeof buffer,
                  "Couldn't compose time from tm: (s:%i m:%i h:%i md:%i mo:%i yr:%i wd:%i "
                  "yd:%i i:%i",
                  tm.sec, tm.min, tm.hour, tm.mday, tm.mon, tm.year, tm.wday, tm.yday, tm.isdst);
    throw error::ESystemError(buffer);
  }
  return t;
}

namespace {

int64_t step(int64_t t, zone_t zone, int days, int months) {
  tm_t tm = local(t, zone);
  const int64_t mday = int64_t{tm.mday} + days;
  if (mday > INT32_MAX || mday < INT32_MIN) throw error::ERange("Too many days to add to a time");
  tm.mday = static_cast<int>(mday);
  tm.mon += months;
  tm.isdst = -1;
  return compose(tm, zone);
}

}  // namespace

int64_t add_days(int64_t t, int n, zone_t zone) { return step(t, zone, n, 0); }
int64_t add_day(int64_t t, zone_t zone) { return step(t, zone, 1, 0); }
int64_t add_month(int64_t t, zone_t zone) { return step(t, zone, 0, 1); }
