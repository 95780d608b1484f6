// Time zones, local time and calendar steps.
//
// A zone value is seconds east of GMT, or kEnvironmentZone for the zone
// that TZ named when the first zone value was built. The platform's local
// time is process-wide, so every conversion here first makes its zone
// current (applyZone): no code may rely on the current zone across a call.
// Not thread-safe; the process has one thread.
#pragma once

#include <cstdint>
#include <string>

// Broken-down time: the nine fields of the platform's tm, in its order.
struct tm_t {
  int sec = 0;
  int min = 0;
  int hour = 0;
  int mday = 0;
  int mon = 0;     // 0 to 11
  int year = 0;    // since 1900
  int wday = 0;    // Sunday is 0
  int yday = 0;    // from 0
  int isdst = -1;  // -1 unknown
};

inline constexpr int32_t kEnvironmentZone = 0xffffff;

// A time zone value; built only by timeZoneValue().
class zone_t {
 public:
  int32_t value() const { return value_; }
  bool operator==(const zone_t&) const = default;

 private:
  friend zone_t timeZoneValue(int32_t v);
  explicit zone_t(int32_t v) : value_(v) {}
  int32_t value_;
};

// Makes a zone value from an integer. The first call reads TZ from the
// environment and keeps a copy (or notes that it was unset); that copy
// is what kEnvironmentZone means for the rest of the process.
zone_t timeZoneValue(int32_t v);

// The TZ text that applyZone sets for `zone`: the saved TZ (empty when it
// was unset) for kEnvironmentZone, else "GMT", a "-" for zones at or east
// of GMT, the hours, and ":MM" / ":SS" when not zero ("GMT-1:01:01").
std::string zoneText(zone_t zone);

// Makes `zone` current for the process: puts "TZ=" + zoneText(zone) into
// the environment (cut at 1024 bytes) and calls tzset. Raises
// error::ESystemError "Couldn't set TZ environment variable".
void applyZone(zone_t zone);

// Local time of `t` in `zone`. Raises error::ESystemError
// "Couldn't get localtime for time " + t when the platform refuses t.
tm_t local(int64_t t, zone_t zone);

// The inverse of local(): the time of `tm` in `zone`; `tm` is normalised
// in place (mktime). Raises error::ESystemError "Couldn't compose time from
// tm: (s:..." with all nine fields when the platform gives -1.
int64_t compose(tm_t& tm, zone_t zone);

// Calendar steps in `zone`: the local day of the month (or month) moves
// on, the clock time of day stays, and the platform normalises overflow
// (31 January plus a month is 3 March). Across a daylight-saving change a
// day is 23 or 25 hours. Raise what local() and compose() raise, and
// error::ERange when the day of the month would leave the int range.
int64_t add_days(int64_t t, int n, zone_t zone);
int64_t add_day(int64_t t, zone_t zone);
int64_t add_month(int64_t t, zone_t zone);
