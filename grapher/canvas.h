// The drawing surface of a chart. The parts draw through Canvas only and
// measure text through CanvasFactory before the canvas exists, because a
// picture's height is known only after every part has been measured.
//
// Coordinates are signed 32-bit pixels, origin top left, y growing downwards.
// A colour is an index into the palette (palette.h); a font is a small number
// (kFontSmall, kFontTiny). Not thread-safe; one chart is drawn on one thread.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace grapher {

inline constexpr int kFontSmall = 0;  // 6 x 13 cells; medium and large charts.
inline constexpr int kFontTiny = 1;   // 5 x 8 cells; small charts.

struct Point {
  int32_t x;
  int32_t y;
};

// A character cell. An unknown font gives (-1, -1).
struct CellSize {
  int height;
  int width;
};

class Canvas {
 public:
  virtual ~Canvas() = default;

  // Fills the closed polygon through `points`. Fewer than 3 points draw
  // nothing.
  virtual void fillPolygon(const std::vector<Point>& points, int colour) = 0;
  // A one-pixel line, both ends drawn.
  virtual void line(int x1, int y1, int x2, int y2, int colour) = 0;
  // The same, dashed 4 pixels on, 4 off.
  virtual void dashedLine(int x1, int y1, int x2, int y2, int colour) = 0;
  virtual CellSize fontSize(int font) const = 0;
  // Single-byte characters; (x, y) is the top left corner of the first cell.
  // An unknown font draws nothing.
  virtual void text(int font, int x, int y, const std::string& s, int colour) = 0;
  // A full circle outline of `diameter`, centred on (cx, cy).
  virtual void circle(int cx, int cy, int diameter, int colour) = 0;
  // Filled, both corners inclusive; x2 < x1 or y2 < y1 draws nothing.
  virtual void fillRectangle(int x1, int y1, int x2, int y2, int colour) = 0;
};

class CanvasFactory {
 public:
  virtual ~CanvasFactory() = default;

  virtual CellSize fontSize(int font) const = 0;
  // Creates the one canvas of this factory. A second call is a fatal
  // assertion "makeCanvas invoked twice".
  virtual void makeCanvas(int width, int height) = 0;
  // The canvas made; it belongs to the factory. Before makeCanvas a fatal
  // assertion "getCanvas invoked before makeCanvas".
  virtual Canvas& getCanvas() = 0;
};

}  // namespace grapher
