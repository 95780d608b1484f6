// Numbers as the short texts that charts and report rows show.
#pragma once

#include <string>

#include "base/unit.h"

// Labels of one chart axis: the range picks one display unit (prefix) and
// one number of decimals for all labels. A plain value.
class ValueFormatter {
 public:
  // `unit` is the unit of the values; `min` and `max` the range shown. A
  // bare fraction unit (alternate label "0.01") is never rescaled.
  ValueFormatter(const Unit& unit, double min, double max);

  // The value in `displayUnit`, without unit: "0" for 0, else with the
  // decimals that the range's magnitude asks for, at most 15 characters.
  std::string text(double value) const;
  // The display label of `displayUnit`.
  std::string unitText() const;

  double min() const { return min_; }
  double max() const { return max_; }
  const Unit& displayUnit() const { return displayUnit_; }
  double magnitude() const { return magnitude_; }

 private:
  Unit unit_;
  double min_;
  double max_;
  Unit displayUnit_;
  double magnitude_;
};

// A value with its unit ("1.50 kW"), automatically scaled into `to`, or a
// duration ("1 days, 1h 1m") when both units are seconds and the value is
// 61 or more. "nan", "inf" and "-inf" for values that aren't finite.
// `from`'s compact flag asks for the short forms ("1.50kW", "1d 1h 1m").
std::string valueText(const Unit& from, double value, const Unit& to);

// `value` by printf "%<width>.<precision>f"; a width or precision below 0
// is left out of the format. "nan", "inf" and "-inf" for values that
// aren't finite. At most 127 characters. Raises error::ERange for a width
// or precision above 1000, which no caller needs and which would only make
// the formatting slow.
std::string numberText(double value, int width, int precision);
