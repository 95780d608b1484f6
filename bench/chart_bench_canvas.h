// A canvas that records the calls a chart makes, and their replay straight
// on gd: the bare program the chart framework is measured against.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "grapher/canvas.h"

namespace bench {

struct CanvasCall {
  enum Kind { kPolygon, kLine, kDashed, kText, kCircle, kRectangle } kind;
  int x1, y1, x2, y2;  // Points, or centre and diameter, or text position.
  int colour;
  int font;
  std::string text;
  std::vector<grapher::Point> points;
};

class RecordingFactory : public grapher::CanvasFactory, private grapher::Canvas {
 public:
  grapher::CellSize fontSize(int font) const override;
  void makeCanvas(int width, int height) override;
  grapher::Canvas& getCanvas() override { return *this; }

  int width = 0;
  int height = 0;
  std::vector<CanvasCall> calls;

 private:
  void fillPolygon(const std::vector<grapher::Point>& points, int colour) override;
  void line(int x1, int y1, int x2, int y2, int colour) override;
  void dashedLine(int x1, int y1, int x2, int y2, int colour) override;
  void text(int font, int x, int y, const std::string& s, int colour) override;
  void circle(int cx, int cy, int diameter, int colour) override;
  void fillRectangle(int x1, int y1, int x2, int y2, int colour) override;
};

// Makes the picture with the recorded calls on gd alone and gives its PNG
// size in bytes.
size_t replayOnGd(const RecordingFactory& recorded);

}  // namespace bench
