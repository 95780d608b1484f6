// Value axis divisions: the tidy ways to divide one axis' value range, and
// the one number of divisions that all axes of a chart can share (they share
// the horizontal grid lines).
#pragma once

#include <cstdint>
#include <vector>

namespace grapher {

// A candidate scale for one axis.
struct YDivision {
  int32_t count;         // Grid intervals of the axis.
  int32_t subdivisions;  // Smaller intervals per division; 0: none offered.
  double min;            // Bottom value.
  double max;            // Top value.
};

// The i-th tidy step: digit (1, 2, 5, 10, 20, 50, 100, 200, 500; on a binary
// unit 256 and 512 for 200 and 500) times 1000 (1024 binary) to the power
// floor(i / 9). Negative i gives steps below 1.
double stepValue(int i, bool binary);

// Appends the candidates for [low, high] to `out`, finest (at most 6
// divisions) first and always ending with a 2-division one. An empty range
// (low > high, as from +inf/-inf) gives the fixed candidates 6..2 over 0..d.
// `binary` is the unit's binary flag. Never raises; values below 0 widen the
// scale downward like any other (see README: negative values).
void findDivisions(bool binary, double low, double high, std::vector<YDivision>& out);

// The common scale of several axes.
struct CommonScale {
  int32_t divisions;
  int32_t subdivisions;             // 0 or 1: no dashed lines.
  std::vector<YDivision> perGroup;  // The chosen candidate of each group.
};

// Picks the largest count that every group offers exactly once, starting at
// the first group's first candidate; the shared subdivision is that of the
// chosen candidates when they agree, else 1. Raises error::EFatal "Could not
// find common y-axis division" when no count from there down to 2 fits all.
// A group with an empty list is a fatal assertion "No possible division of
// Y-axis".
CommonScale chooseCommonScale(const std::vector<std::vector<YDivision>>& candidates);

}  // namespace grapher
