// Canvas and CanvasFactory on libgd: a palette image with the 64 entries of
// palette.h allocated in order, so entry 0 is the background.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "grapher/canvas.h"

struct gdImageStruct;

namespace grapher {

// The character cell of a font, the same table for factory and canvas.
CellSize fontCell(int font);

class GDCanvas : public Canvas {
 public:
  // A width or height below 1 is taken as 1: gd can't hold an empty picture,
  // and the error picture of an empty text would be one. Raises
  // error::EFatal "Could not create a canvas of W x H pixels" when gd
  // refuses the size (too large).
  GDCanvas(int width, int height);
  ~GDCanvas() override;
  GDCanvas(const GDCanvas&) = delete;
  GDCanvas& operator=(const GDCanvas&) = delete;

  void fillPolygon(const std::vector<Point>& points, int colour) override;
  void line(int x1, int y1, int x2, int y2, int colour) override;
  void dashedLine(int x1, int y1, int x2, int y2, int colour) override;
  CellSize fontSize(int font) const override { return fontCell(font); }
  void text(int font, int x, int y, const std::string& s, int colour) override;
  void circle(int cx, int cy, int diameter, int colour) override;
  void fillRectangle(int x1, int y1, int x2, int y2, int colour) override;

  // The picture as PNG (indexed colour). The bytes belong to the caller.
  // Raises error::EFatal "PNG encoding failed" if gd gives nothing.
  std::vector<uint8_t> pngBytes() const;

  int width() const;
  int height() const;

 private:
  // gd's colour number of palette entry `colour`; an index outside the
  // palette is a fatal assertion (the parts keep their indexes in range).
  int gdColour(int colour) const;

  gdImageStruct* image_;
  std::vector<int> colours_;  // gd colour numbers of palette entries 0..63.
};

class GDCanvasFactory : public CanvasFactory {
 public:
  GDCanvasFactory() = default;
  GDCanvasFactory(const GDCanvasFactory&) = delete;
  GDCanvasFactory& operator=(const GDCanvasFactory&) = delete;

  CellSize fontSize(int font) const override { return fontCell(font); }
  // Raises what GDCanvas's constructor raises.
  void makeCanvas(int width, int height) override;
  GDCanvas& getCanvas() override;

 private:
  std::unique_ptr<GDCanvas> canvas_;  // Empty until makeCanvas.
};

}  // namespace grapher
