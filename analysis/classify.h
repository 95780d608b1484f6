// How one sample's span is classified, per data type. Internal to the
// analysis routines; inline because they run once per sample.
#pragma once

#include <bit>
#include <cstdint>

#include "analysis/sample_walk.h"
#include "analysis/thresholds.h"

// The sum that a measured span goes to, by the sample's max and min against
// the thresholds, in this order: alert above, alert below, warn above, warn
// below, else ok. NaN thresholds never fire.
inline uint64_t& thresholdSum(const Thresholds& t, float min, float max, Sums& sums) {
  const double high = max;
  const double low = min;
  if (high > t.alertAbove || t.alertBelow > low) return sums.alert;
  if (high > t.warnAbove || t.warnBelow > low) return sums.warn;
  return sums.ok;
}

// (nbad x span + n / 2) / n with n = nbad + ngood, truncating: the failed
// share rounded to the nearest second. `nbad` is not 0. n is taken in 64
// bits so that damaged counts can't make it 0, and the product in 128 bits
// when the span is too long for 64.
inline int64_t badShare(uint32_t nbad, uint32_t ngood, int64_t span) {
  const uint64_t n = uint64_t{nbad} + ngood;
  if (span <= INT32_MAX)
    return static_cast<int64_t>((nbad * static_cast<uint64_t>(span) + n / 2) / n);
  const unsigned __int128 product =
      static_cast<unsigned __int128>(nbad) * static_cast<uint64_t>(span);
  return static_cast<int64_t>((product + n / 2) / n);
}

[[gnu::cold]] void logSpanWithoutGood();

// Data type 5.
inline void classifyContinuous(const Thresholds& t, const ContinuousSample& s, int64_t span,
                               Sums& sums) {
  if (s.nbad != 0) {
    const int64_t part = badShare(s.nbad, s.ngood, span);
    sums.bad += static_cast<uint64_t>(part);
    span -= part;
  }
  if (s.ngood != 0) {
    thresholdSum(t, s.min, s.max, sums) += static_cast<uint64_t>(span);
  } else {
    sums.unknown += static_cast<uint64_t>(span);
    if (span != 0) [[unlikely]]
      logSpanWithoutGood();
  }
}

// Data types 6 and 2: the whole span to one sum.
inline void classifyWhole(const Thresholds& t, const ContinuousSample& s, int64_t span,
                          Sums& sums) {
  uint64_t& sum =
      s.ngood != 0 ? thresholdSum(t, s.min, s.max, sums) : (s.nbad != 0 ? sums.bad : sums.unknown);
  sum += static_cast<uint64_t>(span);
}

// The states of an enum check, as bit masks by the sum their time goes to.
// A state with no stateActionN, or another value than 0 to 2, is unknown.
struct StateTable {
  uint32_t ok = 0;
  uint32_t warn = 0;
  uint32_t alert = 0;
  uint32_t unknown = 0xffffffff;
};

// Data type 3: span / number of states, to each state's sum.
inline void classifyEnum(const StateTable& table, const EnumSample& s, int64_t span, Sums& sums) {
  const int count = std::popcount(s.mask);
  if (count == 0) return;  // Stays in the total alone.
  const uint64_t part = static_cast<uint64_t>(span) / static_cast<uint64_t>(count);
  sums.ok += part * static_cast<uint64_t>(std::popcount(s.mask & table.ok));
  sums.warn += part * static_cast<uint64_t>(std::popcount(s.mask & table.warn));
  sums.alert += part * static_cast<uint64_t>(std::popcount(s.mask & table.alert));
  sums.unknown += part * static_cast<uint64_t>(std::popcount(s.mask & table.unknown));
}
