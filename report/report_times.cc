#include "report/report_times.h"

#include <cstdio>

#include "base/error.h"
#include "base/time_text.h"

namespace report {

std::string header_time(int64_t t, zone_t zone) {
  // time2str treats a negative time as a broken program; here it comes from
  // the database, so it is refused as a damaged value.
  if (t < 0) throw error::EParseError("Time before 1970 in report: " + std::to_string(t));
  return time2str(t, zone);
}

std::string entry_time(int64_t t, zone_t zone) {
  tm_t tm = local(t, zone);
  char text[64];
  std::snprintf(text, sizeof text, "%02i/%02i/%04i %02i:%02i:%02i", tm.mday, tm.mon + 1,
                tm.year + 1900, tm.hour, tm.min, tm.sec);
  return text;
}

}  // namespace report
