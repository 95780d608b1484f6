#include "base/time_posix.h"

#include <sys/time.h>

#include <cstdlib>
#include <ctime>

namespace sys {
namespace {

void to_tm(const tm_t& in, struct tm& out) {
  out = {};
  out.tm_sec = in.sec;
  out.tm_min = in.min;
  out.tm_hour = in.hour;
  out.tm_mday = in.mday;
  out.tm_mon = in.mon;
  out.tm_year = in.year;
  out.tm_wday = in.wday;
  out.tm_yday = in.yday;
  out.tm_isdst = in.isdst;
}

void from_tm(const struct tm& in, tm_t& out) {
  out.sec = in.tm_sec;
  out.min = in.tm_min;
  out.hour = in.tm_hour;
  out.mday = in.tm_mday;
  out.mon = in.tm_mon;
  out.year = in.tm_year;
  out.wday = in.tm_wday;
  out.yday = in.tm_yday;
  out.isdst = in.tm_isdst;
}

}  // namespace

std::optional<std::string> get_env(const char* name) {
  const char* value = std::getenv(name);
  if (value == nullptr) return std::nullopt;
  return std::string(value);
}

bool put_env(char* text) { return ::putenv(text) == 0; }

void tz_set() { ::tzset(); }

bool local_time(int64_t t, tm_t& out) {
  time_t tt = static_cast<time_t>(t);
  struct tm result;
  if (::localtime_r(&tt, &result) == nullptr) return false;
  from_tm(result, out);
  return true;
}

bool gm_time(int64_t t, tm_t& out) {
  time_t tt = static_cast<time_t>(t);
  struct tm result;
  if (::gmtime_r(&tt, &result) == nullptr) return false;
  from_tm(result, out);
  return true;
}

int64_t make_time(tm_t& tm) {
  struct tm in;
  to_tm(tm, in);
  time_t t = ::mktime(&in);
  from_tm(in, tm);
  return static_cast<int64_t>(t);
}

std::string format_time(const std::string& format, const tm_t& tm) {
  struct tm in;
  to_tm(tm, in);
  char buffer[1024];
  size_t n = std::strftime(buffer, sizeof buffer, format.c_str(), &in);
  return std::string(buffer, n);
}

// gettimeofday gives the wall clock with microseconds since the epoch.
bool wall_clock(int64_t& seconds, int32_t& microseconds) {
  struct timeval tv = {};
  bool ok = ::gettimeofday(&tv, nullptr) == 0;
  seconds = tv.tv_sec;
  microseconds = static_cast<int32_t>(tv.tv_usec);
  return ok;
}

}  // namespace sys
