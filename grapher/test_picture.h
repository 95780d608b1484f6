// Test helper: a PNG decoded back into palette indexes, so that tests check
// the picture itself rather than the calls that drew it.
#pragma once

#include <cstdint>
#include <vector>

namespace grapher::testing {

class Picture {
 public:
  // Decodes PNG bytes; fails the test (and gives a 0 x 0 picture) when they
  // don't decode.
  explicit Picture(const std::vector<uint8_t>& png);

  int width() const { return width_; }
  int height() const { return height_; }
  // Palette index at (x, y); -1 outside the picture.
  int at(int x, int y) const;
  // Number of pixels of `colour` in row y, or in column x.
  int countInRow(int y, int colour) const;
  int countInColumn(int x, int colour) const;
  // Number of pixels of `colour` in the rectangle, corners inclusive.
  int countIn(int x1, int y1, int x2, int y2, int colour) const;

 private:
  int width_ = 0;
  int height_ = 0;
  std::vector<int> pixels_;
};

}  // namespace grapher::testing

#include "base/zone.h"

namespace grapher {
class Graph;
}

namespace grapher::testing {

// Draws `graph` on a GDCanvas in `zone` (GMT by default) and decodes the PNG.
Picture drawn(const Graph& graph, int32_t zone = 0);

}  // namespace grapher::testing

#include <utility>

#include "grapher/series.h"

namespace grapher::testing {

// 2026-01-01 00:00:00 GMT, a Thursday.
inline constexpr int64_t kNewYear = 1767225600;
inline constexpr int64_t kHour = 3600;
inline constexpr int64_t kDay = 86400;

// A one-segment series of (time, value) samples with min = avg = max and
// statistics as stored data would give them.
ContinuousSeries series(const std::vector<std::pair<int64_t, double>>& points);

}  // namespace grapher::testing
