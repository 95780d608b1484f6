// The thresholds of a numeric check and its gap allowance, read from the
// check's already-fetched properties.
#pragma once

#include <cstdint>

#include "tql/patch.h"

// NaN where not set; a comparison with NaN is false, so an unset threshold
// never fires.
struct Thresholds {
  double warnAbove;
  double warnBelow;
  double alertAbove;
  double alertBelow;
  double rangeMin;
  double rangeMax;

  Thresholds();  // All NaN.
};

// The absolute value when `absolute` is present and not null; else, when
// `percent` is, (rangeMax - rangeMin) x (percent / 100.0) + rangeMin (NaN
// when either range bound is NaN); else NaN. Either pointer may be null.
// Raises errors::tql code 9: "Type mismatch for decoding double: " and the
// name for a percent that is no real number, and the scalar decoder's
// texts for an absolute value that is no number.
double effectiveThreshold(const tql::property_t* absolute, const tql::property_t* percent,
                          double rangeMin, double rangeMax);

// rangeMin and rangeMax of the check (NaN when absent or null), then the
// four thresholds from warnIfAbove(Pct), warnIfBelow(Pct), alertIfAbove(Pct)
// and alertIfBelow(Pct). Raises what effectiveThreshold raises.
Thresholds loadThresholds(const tql::patch_t& check);

// The longest gap in seconds that still counts as the check having run:
// 2 x frequency (0 when absent or null; doubled in 32-bit unsigned
// arithmetic), plus, for a remote check (`remoteType` present and not
// null), 10 and the truncation of alertAbove / 1000 when alertAbove is
// above 0. Writes the debug line "checkFreq, deltaSetUnknown is ...".
// Raises errors::tql for a `frequency` that is no number.
uint32_t deltaSetUnknown(const tql::patch_t& check, double alertAbove);

// The check's `frequency` in seconds, a number of any numeric kind clamped
// into the unsigned 32-bit range. `present` tells whether the property
// exists and `null` whether it is null; the value is 0 unless both allow.
struct Frequency {
  bool present = false;
  bool null = false;
  uint32_t seconds = 0;
};
Frequency checkFrequency(const tql::patch_t& check);
