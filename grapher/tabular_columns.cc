// The grid of the tabular chart: column labels, column edges, row lines and
// row numbers, and the corner letters.
#include <cstdio>
#include <string>

#include "grapher/palette.h"
#include "grapher/tabular_part.h"
#include "grapher/x_axis.h"

namespace grapher {

namespace {

// The label of the column that begins at the broken-down time `f`.
std::string columnLabel(int32_t division, const tm_t& f, bool small) {
  char buf[32];
  switch (division) {
    case 0:
      std::snprintf(buf, sizeof buf, "%02i", f.min);
      return buf;
    case 1:
      std::snprintf(buf, sizeof buf, "%02i", f.hour);
      return buf;
    case 2:
      if (small) return kDayNames[f.wday];
      std::snprintf(buf, sizeof buf, "%s %i", kDayNames[f.wday], f.mday);
      return buf;
    case 3:
      std::snprintf(buf, sizeof buf, "%i", f.mday);
      return buf;
    case 4:
    case 5:
    case 6:
      return kMonthNames[f.mon];
    default:
      return "Unknown";
  }
}

// The letters in the top left corner: what the columns and rows count.
const char* const* cornerLetters(int32_t division) {
  static const char* const kMinutes[3] = {"m", "\\", "s"};
  static const char* const kHours[3] = {"h", "\\", "m"};
  static const char* const kDays[3] = {"d", "\\", "h"};
  switch (division) {
    case 0:
      return kMinutes;
    case 1:
      return kHours;
    case 3:
      return kDays;
    default:
      return nullptr;
  }
}

}  // namespace

void Graph::TabularPart::drawColumns(const Layout& l, Canvas& canvas) const {
  const int32_t division = graph_.division;
  const int w = context_.charWidth;
  const bool small = graph_.size == kSmall;
  const double firstBottom = columnBottom(l, l.t0, nextColumn(l.t0));
  const int left = static_cast<int>(l.leftColumn);
  canvas.line(left, 0, left, static_cast<int>(firstBottom), kGrid);
  canvas.line(left, 0, context_.width, 0, kGrid);
  if (const char* const* letters = cornerLetters(division)) {
    canvas.text(context_.font, 11, 0, letters[0], kText);
    canvas.text(context_.font, 6, 3, letters[1], kText);
    canvas.text(context_.font, 1, 6, letters[2], kText);
  }
  const int every = division == 0 ? 5 : 2;
  int rowNumber = division >= 4 ? 1 : 0;
  double x = l.leftColumn;
  int n = 1;
  for (int64_t t = l.t0; t < l.t1 && n <= kMaxTabularColumns; ++n) {
    const bool sparse = (division == 0 || division == 1 || division == 3) &&
                        (small || division == 0) && n % every != 0;
    if (graph_.showTimeLabels && !sparse) {
      const std::string s = columnLabel(division, local(t, context_.zone), small);
      const int len = static_cast<int>(s.size());
      int pos = static_cast<int>((l.columnWidth - w * len) * 0.5 + x);
      if (division == 0) pos -= len == 1 ? 1 : 3;
      canvas.text(context_.font, pos, 2, s, kText);
    }
    const int64_t u = nextColumn(t);
    const double bottom = columnBottom(l, t, u);
    const int xr = static_cast<int>(x + l.columnWidth);
    canvas.line(xr, sparse ? static_cast<int>(l.headerRows) : 0, xr,
                u < l.t1 ? height_ : static_cast<int>(bottom), kGrid);
    drawRowLines(l, x, bottom, n == 1, rowNumber, canvas);
    x += l.columnWidth;
    t = u;
  }
}

void Graph::TabularPart::drawRowLines(const Layout& l, double x, double bottom, bool firstColumn,
                                      int& rowNumber, Canvas& canvas) const {
  const int32_t division = graph_.division;
  const int h = context_.charHeight;
  const int step = division == 2 || division == 3 ? 6 : 5;
  const double offset = division <= 3 ? h / 2 : 0;
  double rowStep = l.rowStep;
  if (!(rowStep > 0)) rowStep = 3;
  while (rowStep < 3) rowStep *= 2;
  double lastLabel = -1000;
  int r = 0;
  for (double y = l.headerRows; static_cast<int>(y) < bottom; y += rowStep, ++r, ++rowNumber) {
    const bool major = r % step == 0;
    const bool labelled = major && !(r == 0 && division <= 3);
    if (firstColumn && graph_.showValueAxes && labelled && y > lastLabel + h + 2 &&
        y + h + 1 < height_) {
      char buf[16];
      std::snprintf(buf, sizeof buf, division >= 4 ? "%i" : "%02i", rowNumber);
      canvas.text(context_.font, 1, static_cast<int>(y - offset), buf, kText);
      lastLabel = y;
    }
    canvas.line(static_cast<int>(x), static_cast<int>(y), static_cast<int>(x + l.columnWidth),
                static_cast<int>(y), major ? kAxis : kGrid);
  }
}

}  // namespace grapher
