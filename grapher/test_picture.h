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
