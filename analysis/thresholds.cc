#include "analysis/thresholds.h"

#include <cmath>
#include <limits>
#include <sstream>

#include "analysis/object_values.h"
#include "base/log.h"
#include "tql/catalogue.h"
#include "tql/decode.h"
#include "tql/errors.h"
#include "tql/schema.h"

namespace {

double scalarOrNaN(const tql::patch_t& object, int32_t number) {
  const tql::property_t* p = object.find_set_property(number);
  double v = kNaN;
  if (p != nullptr) tql::decode_scalar(*p, v);
  return v;
}

uint32_t clampToUint32(double v) {
  if (!(v > 0)) return 0;  // Also NaN.
  if (v >= std::numeric_limits<uint32_t>::max()) return std::numeric_limits<uint32_t>::max();
  return static_cast<uint32_t>(v);
}

}  // namespace

Thresholds::Thresholds()
    : warnAbove(kNaN),
      warnBelow(kNaN),
      alertAbove(kNaN),
      alertBelow(kNaN),
      rangeMin(kNaN),
      rangeMax(kNaN) {}

double effectiveThreshold(const tql::property_t* absolute, const tql::property_t* percent,
                          double rangeMin, double rangeMax) {
  if (absolute != nullptr && !absolute->is_null) {
    double v = kNaN;
    tql::decode_scalar(*absolute, v);
    return v;
  }
  if (percent == nullptr || percent->is_null) return kNaN;
  const auto* real = dynamic_cast<const tql::property_real_t*>(percent);
  if (real == nullptr) {
    throw errors::tql(errors::tql::kIllegalType,
                      "Type mismatch for decoding double: " + tql::property_name(percent->name));
  }
  return (rangeMax - rangeMin) * (real->value / 100.0) + rangeMin;
}

Thresholds loadThresholds(const tql::patch_t& check) {
  Thresholds t;
  t.rangeMin = scalarOrNaN(check, schema::kRangeMin);
  t.rangeMax = scalarOrNaN(check, schema::kRangeMax);
  auto load = [&](int32_t absolute, int32_t percent) {
    return effectiveThreshold(check.find_property(absolute), check.find_property(percent),
                              t.rangeMin, t.rangeMax);
  };
  t.warnAbove = load(schema::kWarnIfAbove, schema::kWarnIfAbovePct);
  t.warnBelow = load(schema::kWarnIfBelow, schema::kWarnIfBelowPct);
  t.alertAbove = load(schema::kAlertIfAbove, schema::kAlertIfAbovePct);
  t.alertBelow = load(schema::kAlertIfBelow, schema::kAlertIfBelowPct);
  return t;
}

Frequency checkFrequency(const tql::patch_t& check) {
  Frequency f;
  const tql::property_t* p = check.find_property(schema::kFrequency);
  f.present = p != nullptr;
  f.null = f.present && p->is_null;
  if (f.present && !f.null) {
    double v = 0;
    tql::decode_scalar(*p, v);
    f.seconds = clampToUint32(v);
  }
  return f;
}

uint32_t deltaSetUnknown(const tql::patch_t& check, double alertAbove) {
  const uint32_t checkFreq = checkFrequency(check).seconds;
  uint32_t extra = 0;
  if (check.find_set_property(schema::kRemoteType) != nullptr) {
    extra = (alertAbove > 0 ? clampToUint32(alertAbove / 1000.0) : 0) + 10;
  }
  const uint32_t delta = 2u * checkFreq + extra;
  if (log_tracing()) {
    std::ostringstream line;
    line << "checkFreq, deltaSetUnknown is " << checkFreq << ", " << delta << " , " << alertAbove;
    log(line.str(), kLogTrace);
  }
  return delta;
}
