#include "grapher/test_picture.h"

#include <gd.h>
#include <gtest/gtest.h>

namespace grapher::testing {

Picture::Picture(const std::vector<uint8_t>& png) {
  gdImagePtr image =
      gdImageCreateFromPngPtr(static_cast<int>(png.size()), const_cast<uint8_t*>(png.data()));
  if (image == nullptr) {
    ADD_FAILURE() << "not a PNG";
    return;
  }
  EXPECT_FALSE(gdImageTrueColor(image)) << "picture is not indexed";
  width_ = gdImageSX(image);
  height_ = gdImageSY(image);
  pixels_.resize(static_cast<size_t>(width_) * height_);
  for (int y = 0; y < height_; ++y) {
    for (int x = 0; x < width_; ++x) {
      pixels_[static_cast<size_t>(y) * width_ + x] = gdImageGetPixel(image, x, y);
    }
  }
  gdImageDestroy(image);
}

int Picture::at(int x, int y) const {
  if (x < 0 || y < 0 || x >= width_ || y >= height_) return -1;
  return pixels_[static_cast<size_t>(y) * width_ + x];
}

int Picture::countIn(int x1, int y1, int x2, int y2, int colour) const {
  int n = 0;
  for (int y = y1; y <= y2; ++y) {
    for (int x = x1; x <= x2; ++x) n += at(x, y) == colour;
  }
  return n;
}

int Picture::countInRow(int y, int colour) const { return countIn(0, y, width_ - 1, y, colour); }

int Picture::countInColumn(int x, int colour) const {
  return countIn(x, 0, x, height_ - 1, colour);
}

}  // namespace grapher::testing

#include "grapher/gd_canvas.h"
#include "grapher/graph.h"

namespace grapher::testing {

Picture drawn(const Graph& graph, int32_t zone) {
  GDCanvasFactory factory;
  graph.draw(factory, timeZoneValue(zone));
  return Picture(factory.getCanvas().pngBytes());
}

}  // namespace grapher::testing

namespace grapher::testing {

ContinuousSeries series(const std::vector<std::pair<int64_t, double>>& points) {
  ContinuousSeries s;
  s.segments.emplace_back();
  for (const auto& [time, value] : points) {
    s.segments.back().push_back({time, value, value, value, 0});
    s.minimum = std::min(s.minimum, value);
    s.maximum = std::max(s.maximum, value);
    s.sum += value;
    s.count += 1;
  }
  return s;
}

}  // namespace grapher::testing
