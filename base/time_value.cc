#include "base/time_value.h"

#include <cstdio>

#include "base/fatal.h"
#include "base/time_posix.h"

namespace {

constexpr int32_t kMicro = 1000000;

// 32-bit two's complement arithmetic without undefined overflow.
int32_t wrap_add(int32_t a, int32_t b) {
  return static_cast<int32_t>(static_cast<uint32_t>(a) + static_cast<uint32_t>(b));
}

}  // namespace

TimeValue::TimeValue(int32_t s, int32_t us) : seconds(s), microseconds(us) {
  TAVREL_ASSERT(us >= 0, "Cannot normalize negative microseconds");
  if (us >= kMicro) {
    seconds = wrap_add(seconds, us / kMicro);
    microseconds = us % kMicro;
  }
}

TimeValue& TimeValue::operator+=(const TimeValue& b) {
  const int32_t before = seconds;
  seconds = wrap_add(seconds, b.seconds);
  int64_t us = int64_t{microseconds} + b.microseconds;
  if (us >= kMicro) {
    seconds = wrap_add(seconds, 1);
    us -= kMicro;
    TAVREL_ASSERT(us < kMicro, "Too big usec in +=");
  }
  microseconds = static_cast<int32_t>(us);
  if (b.seconds < 0 && seconds > before) {
    *this = kSmallestTime;
  } else if (b.seconds >= 0 && seconds < before) {
    *this = kLargestTime;
  }
  return *this;
}

TimeValue TimeValue::operator+(const TimeValue& b) const {
  TimeValue sum = *this;
  sum += b;
  return sum;
}

TimeValue TimeValue::operator-(const TimeValue& b) const {
  TimeValue d;
  d.seconds =
      static_cast<int32_t>(static_cast<uint32_t>(seconds) - static_cast<uint32_t>(b.seconds));
  int64_t us = int64_t{microseconds} - b.microseconds;
  if (us < 0) {
    d.seconds = wrap_add(d.seconds, -1);
    us += kMicro;
    TAVREL_ASSERT(us >= 0, "Negative usec");
  }
  d.microseconds = static_cast<int32_t>(us);
  return d;
}

TimeValue TimeValue::now() {
  int64_t s = 0;
  int32_t us = 0;
  if (!sys::wall_clock(s, us)) {
    std::fprintf(stderr, "(TIME) Error getting system time \n");
    std::fprintf(stderr, "(TIME) This may cause inaccurate measurements \n");
  }
  TimeValue t;
  t.seconds = static_cast<int32_t>(s);
  t.microseconds = us;
  return t;
}

std::string TimeValue::text() const {
  char buffer[32];
  if (seconds >= 0) {
    std::snprintf(buffer, sizeof buffer, "%i.%06i", seconds, microseconds);
  } else if (microseconds == 0) {
    std::snprintf(buffer, sizeof buffer, "%i.000000", seconds);
  } else {
    // {s, u} with s < 0 stands for s + u/1e6, i.e. -((-s - 1) + (1e6 - u)/1e6).
    long long whole = -static_cast<long long>(seconds) - 1;
    std::snprintf(buffer, sizeof buffer, "-%lld.%06i", whole, kMicro - microseconds);
  }
  return buffer;
}

std::string TimeValue::format(const std::string& formatString, bool local) const {
  tm_t tm;
  bool ok = local ? sys::local_time(seconds, tm) : sys::gm_time(seconds, tm);
  if (!ok) return "invalid time";
  return sys::format_time(formatString, tm);
}
