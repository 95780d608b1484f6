// TimeValue: a point in time or a span, in seconds and microseconds.
//
// A plain value of two signed 32-bit fields, stored and sent as that pair.
// `seconds` counts from 1 January 1970 GMT (or is a span); `microseconds`
// is 0 to 999999 in a normalised value. Addition saturates at {0, 0} and
// {0x7fffffff, 0}; subtraction wraps like plain 32-bit arithmetic.
//
// Not thread-safe where noted (format with local time reads the process
// zone, see zone.h); the value itself is freely copyable.
#pragma once

#include <cstdint>
#include <string>

class TimeValue {
 public:
  int32_t seconds = 0;
  int32_t microseconds = 0;

  constexpr TimeValue() = default;
  // `microseconds` 0.
  constexpr TimeValue(int32_t s) : seconds(s) {}  // NOLINT: a plain count of seconds
  // Normalises: microseconds of 1000000 or more move into the seconds.
  // Negative microseconds are the fatal assertion
  // "Cannot normalize negative microseconds".
  TimeValue(int32_t s, int32_t us);

  // Saturating addition; see the file comment. A sum of microseconds that
  // stays at 1000000 or more after one carry (an unnormalised operand) is
  // the fatal assertion "Too big usec in +=".
  TimeValue& operator+=(const TimeValue& b);
  TimeValue operator+(const TimeValue& b) const;
  // Field-wise subtraction with one borrow and no saturation; microseconds
  // still negative after the borrow are the fatal assertion "Negative usec".
  TimeValue operator-(const TimeValue& b) const;

  // Both fields equal.
  bool operator==(const TimeValue& b) const = default;
  // These compare by toDouble(), which is exact for normalised values.
  bool operator<=(const TimeValue& b) const { return toDouble() <= b.toDouble(); }
  bool operator<(const TimeValue& b) const { return toDouble() < b.toDouble(); }
  bool operator>=(const TimeValue& b) const { return toDouble() >= b.toDouble(); }
  bool operator>(const TimeValue& b) const { return toDouble() > b.toDouble(); }

  // microseconds / 1e6 + seconds.
  double toDouble() const { return microseconds / 1e6 + seconds; }

  // The wall clock, with microseconds. When the platform fails it writes
  // "(TIME) Error getting system time " and "(TIME) This may cause
  // inaccurate measurements " to standard error and uses what it got.
  static TimeValue now();

  // Decimal form "S.UUUUUU"; a negative value reads as a signed decimal,
  // so {-2, 250000} is "-1.750000".
  std::string text() const;

  // strftime of `seconds`, broken down in the process's current zone when
  // `local` holds (callers apply a zone first, see zone.h), else in GMT.
  // A time that can't be broken down gives "invalid time"; a result that
  // doesn't fit 1024 bytes gives the empty text.
  std::string format(const std::string& formatString, bool local) const;
};

inline constexpr TimeValue kOneDay{86400};
inline constexpr TimeValue kLargestTime{0x7fffffff};
inline constexpr TimeValue kSmallestTime{0};
