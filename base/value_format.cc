#include "base/value_format.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>

#include "base/error.h"

namespace {

// The unit without the prefixes of its numerators.
Unit withoutNumeratorPrefixes(const Unit& unit) {
  Unit bare = unit;
  std::erase_if(bare.numerators, [](const UnitEntry& e) { return e.tag() == UnitEntry::kPrefix; });
  return bare;
}

// A bare fraction unit is never rescaled.
bool scalesAutomatically(const Unit& unit) { return getLabel(unit, true, true) != "0.01"; }

std::string displayLabel(const Unit& unit) { return getLabel(unit, false, true); }

// "nan", "inf" or "-inf" for a value that isn't finite.
std::string nonFiniteText(double v) {
  if (std::isnan(v)) return "nan";
  return v > 0 ? "inf" : "-inf";
}

// The printf format of a number by its size, with "%s" for the unit behind
// it when `unit` holds. Sizes compare as they are, without absolute value.
std::string formatBySize(double size, bool unit, bool compact) {
  const char* number = size < 0.01  ? "%0.5f"
                       : size < 0.1 ? "%0.4f"
                       : size < 1   ? "%0.3f"
                       : size < 10  ? "%1.2f"
                       : size < 100 ? "%2.1f"
                                    : "%.0f";
  if (!unit) return number;
  return std::string(number) + (compact ? "%s" : " %s");
}

std::string durationText(int64_t t, bool compact) {
  char buffer[128];
  if (t >= 86400) {
    std::snprintf(buffer, sizeof buffer, "%lld%s %ih %im", static_cast<long long>(t / 86400),
                  compact ? "d" : " days,", static_cast<int>(t % 86400 / 3600),
                  static_cast<int>(t % 3600 / 60));
  } else if (t < 3601) {
    std::snprintf(buffer, sizeof buffer, "%im %is", static_cast<int>(t / 60),
                  static_cast<int>(t % 60));
  } else {
    std::snprintf(buffer, sizeof buffer, "%ih %im", static_cast<int>(t / 3600),
                  static_cast<int>(t % 3600 / 60));
  }
  return buffer;
}

}  // namespace

ValueFormatter::ValueFormatter(const Unit& unit, double min, double max)
    : unit_(unit), min_(min), max_(max) {
  const Unit bare = withoutNumeratorPrefixes(unit);
  displayUnit_ = convert(unit, (max + min) * 0.5, bare, scalesAutomatically(unit)).second;
  magnitude_ = convertValue(unit, std::max(std::fabs(min), std::fabs(max)), displayUnit_);
}

std::string ValueFormatter::text(double value) const {
  const double v = convertValue(unit_, value, displayUnit_);
  if (v == 0) return "0";
  char buffer[16];
  std::snprintf(buffer, sizeof buffer, formatBySize(magnitude_, false, false).c_str(), v);
  return buffer;
}

std::string ValueFormatter::unitText() const { return displayLabel(displayUnit_); }

std::string valueText(const Unit& from, double value, const Unit& to) {
  if (!std::isfinite(value)) return nonFiniteText(value);
  if (displayLabel(to) == "s" && displayLabel(from) == "s" && value >= 61) {
    const int64_t t = value >= 9.2e18 ? INT64_MAX : static_cast<int64_t>(value);
    return durationText(t, from.compact);
  }
  const auto [v, unit] =
      convert(from, value, withoutNumeratorPrefixes(to), scalesAutomatically(to));
  if (!std::isfinite(v)) return nonFiniteText(v);
  const std::string label = displayLabel(unit);
  char buffer[128];
  if (v == 0) {
    std::snprintf(buffer, sizeof buffer, from.compact ? "0%s" : "0 %s", label.c_str());
  } else {
    std::snprintf(buffer, sizeof buffer, formatBySize(v, true, from.compact).c_str(), v,
                  label.c_str());
  }
  return buffer;
}

std::string numberText(double value, int width, int precision) {
  if (!std::isfinite(value)) return nonFiniteText(value);
  if (width > 1000 || precision > 1000) throw error::ERange("Width or precision too large");
  std::string format = "%";
  if (width >= 0) format += std::to_string(width);
  if (precision >= 0) format += "." + std::to_string(precision);
  format += "f";
  char buffer[128];
  std::snprintf(buffer, sizeof buffer, format.c_str(), value);
  return buffer;
}
