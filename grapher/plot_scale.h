// The vertical scale of one value axis on the plot of a continuous part:
// values min..max over the rows top..top + height - 1.
#pragma once

namespace grapher {

// A double as a pixel: adds 0.5 and truncates; undefined values give 0 and
// huge ones are held to +-1e6, so that nothing from outside overflows.
int toPixel(double v);

struct PlotScale {
  double min = 0;
  double max = 1;
  int top = 0;
  int height = 1;

  int bottomRow() const { return top + height - 1; }
  bool contains(double v) const { return v >= min && v <= max; }
  // The row of a value within min..max.
  int yOf(double v) const { return top + toPixel((max - v) / (max - min) * (height - 1)); }
  // The row of any value: values above the scale stand on the top row,
  // values below it on the bottom row.
  int clampedRow(double v) const {
    if (v > max) return top;
    if (v < min) return bottomRow();
    return yOf(v);
  }
};

}  // namespace grapher
