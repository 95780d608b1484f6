#include "grapher/y_division.h"

#include <cmath>
#include <cstdio>
#include <limits>
#include <string>

#include "base/error.h"
#include "base/fatal.h"

namespace grapher {

namespace {

constexpr int kMaxDivisions = 6;

// A double truncated to 32 bits, saturating instead of overflowing.
int32_t toInt32(double v) {
  if (!(v > std::numeric_limits<int32_t>::min())) {
    return std::numeric_limits<int32_t>::min();
  }
  if (v >= std::numeric_limits<int32_t>::max()) {
    return std::numeric_limits<int32_t>::max();
  }
  return static_cast<int32_t>(v);
}

int floorMod(int i, int m) { return (i % m + m) % m; }
int floorDiv(int i, int m) { return (i - floorMod(i, m)) / m; }

// The fixed candidates of an empty range: 6 down to 2 divisions over 0..d.
void appendFixed(std::vector<YDivision>& out) {
  for (int d = kMaxDivisions; d >= 2; --d) out.push_back({d, 0, 0.0, 1.0 * d});
}

std::string rangeText(double low, double high) {
  char buf[96];
  std::snprintf(buf, sizeof buf, "No suitable divisions found for [%g; %g]", low, high);
  return buf;
}

}  // namespace

double stepValue(int i, bool binary) {
  static const double kDecimal[9] = {1, 2, 5, 10, 20, 50, 100, 200, 500};
  static const double kBinary[9] = {1, 2, 5, 10, 20, 50, 100, 256, 512};
  const double base = binary ? 1024.0 : 1000.0;
  const double digit = (binary ? kBinary : kDecimal)[floorMod(i, 9)];
  return digit * std::pow(base, floorDiv(i, 9));
}

void findDivisions(bool binary, double low, double high, std::vector<YDivision>& out) {
  const size_t before = out.size();
  // The scale covers values from 0 up: a negative end is raised to 0 (values
  // below it are clipped to the bottom row of the plot).
  if (std::isfinite(low) && low < 0) low = 0;
  if (std::isfinite(high) && high < 0) high = 0;
  // A range with an infinite or undefined end has no scale of its own; it is
  // drawn on the fixed one of the empty range.
  if (std::isnan(low) || std::isnan(high) ||
      (low <= high && !(std::isfinite(low) && std::isfinite(high)))) {
    appendFixed(out);
    return;
  }
  const double s = std::fabs(low) + std::fabs(high);
  if (s == 0) {
    high = 1.0;
  } else if (std::fabs(high - low) / s < 0.02) {
    const double c = (low + high) * 0.5;
    const double d = s * 0.02 * 0.5;
    low = c - d;
    high = c + d;
  }
  const double span = high - low;
  if (!(span > 0)) {
    appendFixed(out);
    return;
  }
  const double target = span / 6.0;
  int i = 0;
  while (stepValue(i, binary) > target) --i;
  while (target / 10.0 > stepValue(i, binary)) ++i;
  for (;; ++i) {
    const double step = stepValue(i, binary);
    const int32_t top = toInt32(std::ceil(high / step));
    const int32_t bottom = toInt32(std::floor(low / step));
    const int64_t n = int64_t{top} - bottom;
    if (n > kMaxDivisions) continue;
    const int32_t subdivisions = floorMod(i, 3) == 2 ? 5 : 2;
    if (n == 1) {
      out.push_back({2, subdivisions, bottom * step, (2.0 * top - bottom) * step});
      break;
    }
    out.push_back({static_cast<int32_t>(n), subdivisions, bottom * step, top * step});
    if (n <= 2) break;
  }
  TAVREL_ASSERT(out.size() > before, rangeText(low, high));
}

CommonScale chooseCommonScale(const std::vector<std::vector<YDivision>>& candidates) {
  for (const std::vector<YDivision>& group : candidates) {
    TAVREL_ASSERT(!group.empty(), "No possible division of Y-axis");
  }
  if (candidates.empty()) {
    throw error::EFatal("Could not find common y-axis division");
  }
  for (int32_t n = candidates[0][0].count; n >= 2; --n) {
    CommonScale scale{n, 0, {}};
    bool oneEach = true;
    for (const std::vector<YDivision>& group : candidates) {
      int taken = 0;
      for (const YDivision& d : group) {
        if (d.count != n) continue;
        if (scale.perGroup.empty() && taken == 0) {
          scale.subdivisions = d.subdivisions;
        } else if (scale.subdivisions != 1 && d.subdivisions != scale.subdivisions) {
          scale.subdivisions = 1;
        }
        if (taken++ == 0) scale.perGroup.push_back(d);
      }
      oneEach = oneEach && taken == 1;
    }
    // Every group must offer the count exactly once, so that each group gets
    // a candidate of its own.
    if (oneEach) return scale;
  }
  throw error::EFatal("Could not find common y-axis division");
}

}  // namespace grapher
