#include "grapher/gd_canvas.h"

#include <gd.h>
#include <gdfonts.h>
#include <gdfontt.h>

#include <algorithm>
#include <string>

#include "base/error.h"
#include "base/fatal.h"
#include "grapher/palette.h"

namespace grapher {

namespace {

// The gd font of a font number, or null for an unknown one.
gdFontPtr gdFont(int font) {
  switch (font) {
    case kFontSmall:
      return gdFontGetSmall();
    case kFontTiny:
      return gdFontGetTiny();
    default:
      return nullptr;
  }
}

}  // namespace

CellSize fontCell(int font) {
  gdFontPtr f = gdFont(font);
  if (f == nullptr) return {-1, -1};
  return {f->h, f->w};
}

GDCanvas::GDCanvas(int width, int height) {
  width = std::max(width, 1);
  height = std::max(height, 1);
  image_ = gdImageCreate(width, height);
  if (image_ == nullptr) {
    throw error::EFatal("Could not create a canvas of " + std::to_string(width) + " x " +
                        std::to_string(height) + " pixels");
  }
  colours_.reserve(kPaletteSize);
  for (const Rgb& c : kPalette) {
    colours_.push_back(gdImageColorAllocate(image_, c.red, c.green, c.blue));
  }
}

GDCanvas::~GDCanvas() { gdImageDestroy(image_); }

int GDCanvas::gdColour(int colour) const {
  TAVREL_ASSERT(colour >= 0 && colour < kPaletteSize,
                "Colour index out of range: " + std::to_string(colour));
  return colours_[colour];
}

void GDCanvas::fillPolygon(const std::vector<Point>& points, int colour) {
  if (points.size() < 3) return;
  std::vector<gdPoint> plain(points.size());
  for (size_t i = 0; i < points.size(); ++i) {
    plain[i].x = points[i].x;
    plain[i].y = points[i].y;
  }
  gdImageFilledPolygon(image_, plain.data(), static_cast<int>(plain.size()), gdColour(colour));
}

void GDCanvas::line(int x1, int y1, int x2, int y2, int colour) {
  gdImageLine(image_, x1, y1, x2, y2, gdColour(colour));
}

void GDCanvas::dashedLine(int x1, int y1, int x2, int y2, int colour) {
  gdImageDashedLine(image_, x1, y1, x2, y2, gdColour(colour));
}

void GDCanvas::text(int font, int x, int y, const std::string& s, int colour) {
  gdFontPtr f = gdFont(font);
  if (f == nullptr) return;
  std::string copy = s;  // gd takes a writable string.
  gdImageString(image_, f, x, y, reinterpret_cast<unsigned char*>(copy.data()), gdColour(colour));
}

void GDCanvas::circle(int cx, int cy, int diameter, int colour) {
  gdImageArc(image_, cx, cy, diameter, diameter, 0, 360, gdColour(colour));
}

void GDCanvas::fillRectangle(int x1, int y1, int x2, int y2, int colour) {
  // An inverted rectangle is empty: the parts pass x - 1 as the right edge of
  // a bar of no width and expect nothing (gd would swap the corners).
  if (x2 < x1 || y2 < y1) return;
  gdImageFilledRectangle(image_, x1, y1, x2, y2, gdColour(colour));
}

std::vector<uint8_t> GDCanvas::pngBytes() const {
  int size = 0;
  void* data = gdImagePngPtr(image_, &size);
  if (data == nullptr) throw error::EFatal("PNG encoding failed");
  const uint8_t* bytes = static_cast<const uint8_t*>(data);
  std::vector<uint8_t> out(bytes, bytes + size);
  gdFree(data);
  return out;
}

int GDCanvas::width() const { return gdImageSX(image_); }
int GDCanvas::height() const { return gdImageSY(image_); }

void GDCanvasFactory::makeCanvas(int width, int height) {
  TAVREL_ASSERT(canvas_ == nullptr, "makeCanvas invoked twice");
  canvas_ = std::make_unique<GDCanvas>(width, height);
}

GDCanvas& GDCanvasFactory::getCanvas() {
  TAVREL_ASSERT(canvas_ != nullptr, "getCanvas invoked before makeCanvas");
  return *canvas_;
}

}  // namespace grapher
