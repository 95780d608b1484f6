#include "resources/picture.h"

#include <fstream>
#include <stdexcept>

namespace resources {

Picture::Picture(int width, int height, bool on_white) : im_(gdImageCreate(width, height)) {
  if (im_ == nullptr) throw std::runtime_error("gdImageCreate failed");
  // The first colour allocated is the background.
  const int background = gdImageColorAllocate(im_, 255, 255, 255);
  if (!on_white) gdImageColorTransparent(im_, background);
}

int Picture::color(Rgb c) {
  const int exact = gdImageColorExact(im_, c.r, c.g, c.b);
  if (exact >= 0 && exact != gdImageGetTransparent(im_)) return exact;
  const int fresh = gdImageColorAllocate(im_, c.r, c.g, c.b);
  if (fresh < 0) throw std::runtime_error("palette full");
  return fresh;
}

void Picture::disc(int cx, int cy, int diameter, Rgb fill) {
  gdImageFilledEllipse(im_, cx, cy, diameter, diameter, color(fill));
}

void Picture::ring(int cx, int cy, int diameter, Rgb line) {
  gdImageEllipse(im_, cx, cy, diameter, diameter, color(line));
}

void Picture::rect(int x1, int y1, int x2, int y2, Rgb fill) {
  gdImageFilledRectangle(im_, x1, y1, x2, y2, color(fill));
}

void Picture::line(int x1, int y1, int x2, int y2, Rgb c) {
  gdImageLine(im_, x1, y1, x2, y2, color(c));
}

void Picture::polygon(const std::vector<gdPoint>& points, Rgb fill) {
  std::vector<gdPoint> copy = points;  // gd takes a non-const pointer.
  gdImageFilledPolygon(im_, copy.data(), static_cast<int>(copy.size()), color(fill));
}

void Picture::save(const std::string& path) const {
  const bool gif = path.size() > 4 && path.compare(path.size() - 4, 4, ".gif") == 0;
  int size = 0;
  void* bytes = gif ? gdImageGifPtr(im_, &size) : gdImagePngPtr(im_, &size);
  if (bytes == nullptr) throw std::runtime_error("gd could not encode " + path);
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out.write(static_cast<const char*>(bytes), size);
  gdFree(bytes);
  if (!out.flush()) throw std::runtime_error("cannot write " + path);
}

}  // namespace resources
