// The legend of a continuous part: per line the minimum, average and maximum
// in the top rows, and on charts of several lines the line's key on its
// axis' stripe.
#include <string>

#include "base/value_format.h"
#include "grapher/continuous_part.h"
#include "grapher/palette.h"
#include "tavml/dot_string.h"

namespace grapher {

namespace {

struct LegendTexts {
  std::string min;
  std::string avg;
  std::string max;
};

LegendTexts legendTexts(const ContinuousSeries& series, const Unit& unit, bool small) {
  if (series.maximum < series.minimum) {
    return {"Min: N/A", "Avg: N/A", "Max: N/A"};
  }
  const ValueFormatter format(unit, series.minimum, series.maximum);
  const std::string suffix = small ? "" : " " + format.unitText();
  return {"Min: " + format.text(series.minimum) + suffix,
          "Avg: " + format.text(series.sum / series.count) + suffix,
          "Max: " + format.text(series.maximum) + suffix};
}

}  // namespace

void Graph::ContinuousPart::drawLegend(int y, Canvas& canvas) const {
  const int h = context_.charHeight;
  const int lines = static_cast<int>(legend_.size());
  for (int i = 0; i < lines; ++i) {
    const LegendEntry& entry = legend_[i];
    const int yl = y + i * h;
    if (graph_.showLegendValues) drawLegendTexts(entry, yl, canvas);
    if (lines >= 2 && graph_.showValueAxes) {
      const AxisEntry& axis = axes_[entry.axis];
      const int colour = lineColour(i);
      const int m = yl + h / 2;
      canvas.fillRectangle(axis.keyX, yl, axis.keyX + axis.keyWidth - 1, yl + h - 1, kPlotArea);
      canvas.line(axis.keyX + 4, m, axis.keyX + axis.keyWidth - 5, m, colour);
      canvas.circle(axis.keyX + axis.keyWidth / 2, m, 4, colour);
    }
  }
}

void Graph::ContinuousPart::drawLegendTexts(const LegendEntry& entry, int yl,
                                            Canvas& canvas) const {
  const int w = context_.charWidth;
  const bool single = legend_.size() == 1;
  const int cols = single ? 3 : 4;
  const int first = single ? 0 : 1;
  const int total = context_.width - right_ - left_ - 8;
  const LegendTexts texts =
      legendTexts(*entry.series, axisUnitOf(entry.axis), graph_.size == kSmall);
  const std::string* columns[3] = {&texts.min, &texts.avg, &texts.max};
  int firstX = 0;
  for (int c = 0; c < 3; ++c) {
    const int len = static_cast<int>(columns[c]->size());
    const int pad = single ? total / cols - len * w : 0;
    const int x = ((first + c) * total) / cols + pad / 2 + left_ + 4;
    if (c == 0) firstX = x;
    canvas.text(context_.font, x, yl, *columns[c], kText);
  }
  if (!single && !entry.name.empty()) {
    const int room = (firstX - left_ - 4) / w - 1;
    if (room >= 3) {
      canvas.text(context_.font, left_ + 4, yl, tavml::dot_string_width(entry.name, room), kText);
    }
  }
}

}  // namespace grapher
