#include "bench/chart_bench_canvas.h"

#include <gd.h>
#include <gdfonts.h>
#include <gdfontt.h>

#include "grapher/gd_canvas.h"
#include "grapher/palette.h"

namespace bench {

grapher::CellSize RecordingFactory::fontSize(int font) const { return grapher::fontCell(font); }

void RecordingFactory::makeCanvas(int w, int h) {
  width = w;
  height = h;
}

void RecordingFactory::fillPolygon(const std::vector<grapher::Point>& points, int colour) {
  calls.push_back({CanvasCall::kPolygon, 0, 0, 0, 0, colour, 0, {}, points});
}
void RecordingFactory::line(int x1, int y1, int x2, int y2, int colour) {
  calls.push_back({CanvasCall::kLine, x1, y1, x2, y2, colour, 0, {}, {}});
}
void RecordingFactory::dashedLine(int x1, int y1, int x2, int y2, int colour) {
  calls.push_back({CanvasCall::kDashed, x1, y1, x2, y2, colour, 0, {}, {}});
}
void RecordingFactory::text(int font, int x, int y, const std::string& s, int colour) {
  calls.push_back({CanvasCall::kText, x, y, 0, 0, colour, font, s, {}});
}
void RecordingFactory::circle(int cx, int cy, int diameter, int colour) {
  calls.push_back({CanvasCall::kCircle, cx, cy, diameter, 0, colour, 0, {}, {}});
}
void RecordingFactory::fillRectangle(int x1, int y1, int x2, int y2, int colour) {
  calls.push_back({CanvasCall::kRectangle, x1, y1, x2, y2, colour, 0, {}, {}});
}

size_t replayOnGd(const RecordingFactory& recorded) {
  gdImagePtr im = gdImageCreate(recorded.width, recorded.height);
  int colours[grapher::kPaletteSize];
  for (int i = 0; i < grapher::kPaletteSize; ++i) {
    const grapher::Rgb& c = grapher::kPalette[i];
    colours[i] = gdImageColorAllocate(im, c.red, c.green, c.blue);
  }
  std::vector<gdPoint> points;
  std::string text;
  for (const CanvasCall& c : recorded.calls) {
    const int colour = colours[c.colour];
    switch (c.kind) {
      case CanvasCall::kPolygon:
        points.resize(c.points.size());
        for (size_t i = 0; i < c.points.size(); ++i) {
          points[i].x = c.points[i].x;
          points[i].y = c.points[i].y;
        }
        gdImageFilledPolygon(im, points.data(), static_cast<int>(points.size()), colour);
        break;
      case CanvasCall::kLine:
        gdImageLine(im, c.x1, c.y1, c.x2, c.y2, colour);
        break;
      case CanvasCall::kDashed:
        gdImageDashedLine(im, c.x1, c.y1, c.x2, c.y2, colour);
        break;
      case CanvasCall::kText:
        text = c.text;
        gdImageString(im, c.font == 0 ? gdFontGetSmall() : gdFontGetTiny(), c.x1, c.y1,
                      reinterpret_cast<unsigned char*>(text.data()), colour);
        break;
      case CanvasCall::kCircle:
        gdImageArc(im, c.x1, c.y1, c.x2, c.x2, 0, 360, colour);
        break;
      case CanvasCall::kRectangle:
        if (c.x2 >= c.x1 && c.y2 >= c.y1) {
          gdImageFilledRectangle(im, c.x1, c.y1, c.x2, c.y2, colour);
        }
        break;
    }
  }
  int size = 0;
  void* png = gdImagePngPtr(im, &size);
  gdFree(png);
  gdImageDestroy(im);
  return static_cast<size_t>(size);
}

}  // namespace bench
