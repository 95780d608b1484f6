// The data a Graph draws: continuous lines in groups that share a value
// axis, enum lines in groups that share a legend, and uptime lines. Plain
// values; a Graph holds copies.
#pragma once

#include <cstdint>
#include <limits>
#include <map>
#include <string>
#include <vector>

#include "base/unit.h"

namespace grapher {

inline constexpr double kUnset = std::numeric_limits<double>::quiet_NaN();
inline constexpr double kInfinity = std::numeric_limits<double>::infinity();

// One point of a curve.
struct ContinuousSample {
  int64_t time = 0;
  double min = 0;
  double avg = 0;
  double max = 0;
  double noResponse = 0;  // Fraction 0..1 of measurements without answer.
};

// The curve of one line: contiguous runs that are never joined across a gap.
struct ContinuousSeries {
  std::vector<std::vector<ContinuousSample>> segments;
  Unit unit;  // Display unit of the values.
  double warnIfBelow = kUnset;
  double warnIfAbove = kUnset;
  double alertIfBelow = kUnset;
  double alertIfAbove = kUnset;
  double plotMin = kUnset;
  double plotMax = kUnset;
  double minimum = kInfinity;  // Extremes of the series.
  double maximum = -kInfinity;
  double sum = 0;     // Sum of average x count.
  int32_t count = 0;  // Number of measurements.
};

// The primary series is drawn solid, the secondary dashed.
struct ContinuousLine {
  ContinuousSeries primary;
  ContinuousSeries secondary;
  std::string name;
};

// Lines that share one value axis.
struct ContinuousGroup {
  std::vector<ContinuousLine> lines;
  // Copies the two series into a new line at the end.
  void addLine(const ContinuousSeries& primary, const ContinuousSeries& secondary,
               const std::string& name) {
    lines.push_back({primary, secondary, name});
  }
};

struct EnumSample {
  int64_t time = 0;
  uint32_t states = 0;  // Bit i: state i held at some point.
  double unknown = 0;   // Fraction 0..1 of measurements without answer.
};

// State classes: 0 green, 1 yellow, 2 red.
struct EnumSeries {
  std::vector<std::vector<EnumSample>> segments;
  std::map<int, std::string> labels;  // State number to name.
  std::map<int, int> classes;         // State number to class.
};

// Only the primary series is drawn.
struct EnumLine {
  EnumSeries primary;
  EnumSeries secondary;
  std::string name;
};

// One EnumPart: one row per line, one legend.
struct EnumGroup {
  std::vector<EnumLine> lines;
  void addLine(const EnumSeries& primary, const EnumSeries& secondary, const std::string& name) {
    lines.push_back({primary, secondary, name});
  }
};

struct UptimeInterval {
  int64_t start = 0;
  int64_t end = 0;
};

struct UptimeLine {
  std::string name;
  std::vector<UptimeInterval> intervals;  // In rising time.
};

}  // namespace grapher
