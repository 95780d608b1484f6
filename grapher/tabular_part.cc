#include "grapher/tabular_part.h"

#include <algorithm>
#include <cmath>

#include "base/fatal.h"
#include "grapher/palette.h"
#include "grapher/x_axis.h"

namespace grapher {

namespace {

constexpr int64_t kLongestMonth = 2678400;  // 31 days

bool monthColumns(int32_t division) { return division >= 4; }

// Seconds per column.
int64_t periodOf(int32_t division) {
  switch (division) {
    case 0:
      return 60;
    case 1:
      return 3600;
    case 2:
    case 3:
      return 86400;
    default:
      return kLongestMonth;
  }
}

// Rounds the broken-down start and end of the period to whole columns.
void alignToColumns(int32_t division, tm_t& fs, tm_t& fe) {
  switch (division) {
    case 0: {
      const int d = ((fe.min - fs.min) % 60 + 60) % 60;
      if (d % 5 != 0) fe.min += 5 - d % 5;
      break;
    }
    case 1:
      if (fe.min != 0 || fe.sec != 0) fe.hour += 1;
      fs.min = fe.min = 0;
      break;
    case 2:
    case 3:
      if (fe.hour != 0 || fe.min != 0 || fe.sec != 0) fe.mday += 1;
      fs.hour = fe.hour = 0;
      fs.min = fe.min = 0;
      break;
    default:
      if (!(fe.mday == 1 && fe.hour == 0 && fe.min == 0 && fe.sec == 0)) {
        fe.mon += 1;
      }
      fs.mday = fe.mday = 1;
      fs.hour = fe.hour = 0;
      fs.min = fe.min = 0;
      break;
  }
  fs.sec = fe.sec = 0;
}

}  // namespace

Graph::TabularPart::TabularPart(const GraphContext& context, bool markBoundaries)
    : GraphPart(context),
      markBoundaries_(markBoundaries),
      height_(graphSize(context.graph.size).tabularHeight +
              (context.graph.showTimeLabels ? context.charHeight + 4 : 0)) {}

void Graph::TabularPart::setMargins(int left, int right) {
  TAVREL_ASSERT(left == 0 && right == 0, "Margins not supported");
  GraphPart::setMargins(left, right);
}

int64_t Graph::TabularPart::nextColumn(int64_t t) const {
  const zone_t zone = context_.zone;
  const tm_t at = local(t, zone);
  tm_t f = at;
  f.sec = 0;
  switch (graph_.division) {
    case 0:
      f.min += 1;
      break;
    case 1:
      f.hour += 1;
      f.min = 0;
      break;
    case 2:
    case 3:
      f.mday += 1;
      f.hour = f.min = 0;
      break;
    default:
      f.mon += 1;
      f.mday = 1;
      f.hour = f.min = 0;
      break;
  }
  int64_t u = compose(f, zone);
  // Daylight saving ended on the way: the fields came out an hour short.
  if (at.isdst > 0 && local(u, zone).isdst <= 0) {
    tm_t g = local(u, zone);
    g.hour += 1;
    u = compose(g, zone);
  }
  return std::max(u, t + 1);
}

Graph::TabularPart::Layout Graph::TabularPart::makeLayout() const {
  const int32_t division = graph_.division;
  const double height = height_;
  Layout l{};
  l.headerRows = graph_.showTimeLabels ? context_.charHeight + 4 : 0;
  l.leftColumn = graph_.showValueAxes ? 3 * context_.charWidth : 0;
  tm_t fs = local(graph_.start, context_.zone);
  tm_t fe = local(graph_.end, context_.zone);
  const int64_t shift = ((fe.isdst > 0) - (fs.isdst > 0)) * int64_t{3600};
  const int64_t lost = shift < 0 ? -shift : 0;  // The hour that occurs twice.
  int rows = 31;
  if (division <= 1) rows = 60;
  if (division == 2 || division == 3) rows = shift < 0 ? 25 : 24;
  l.rowStep = (static_cast<int>(height - l.headerRows) - 1) / double{1.0 * rows};
  const int64_t extra = division != 1 ? lost : 0;
  l.pixelsPerSecond = (height - l.headerRows) / static_cast<double>(periodOf(division) + extra);
  alignToColumns(division, fs, fe);
  l.t0 = compose(fs, context_.zone);
  l.t1 = compose(fe, context_.zone);
  double columns = static_cast<double>((l.t1 - l.t0) - lost) / periodOf(division);
  if (shift < 0 && division == 1) columns = std::ceil(columns) + 1;
  const double count = std::max(1.0, std::ceil(columns));
  l.columnWidth = (static_cast<int>(context_.width - l.leftColumn) - 1) / count;
  return l;
}

void Graph::TabularPart::draw(int y, Canvas& canvas) {
  // The part is alone in its picture; it draws from the top row.
  (void)y;
  const int h = context_.charHeight;
  const int w = context_.charWidth;
  const int width = context_.width;
  if (cells().empty()) {
    const std::string text = "No data available for this interval.";
    const int len = static_cast<int>(text.size());
    canvas.text(context_.font, width / 2 - (len / 2) * w, height_ / 2 - h / 2, text, kText);
    return;
  }
  const Layout l = makeLayout();
  if (graph_.showTimeLabels) {
    canvas.fillRectangle(static_cast<int>(l.leftColumn), 0, width, static_cast<int>(l.headerRows),
                         kPlotArea);
  }
  const std::vector<TabularCell>& all = cells();
  for (size_t i = 0; i < all.size(); ++i) {
    Cursor at{l.leftColumn, l.headerRows, l.t0, 0};
    paintCell(l, all[i], at, canvas);
    if (markBoundaries_ && i + 1 < all.size()) {
      const int x = static_cast<int>(at.x);
      canvas.fillRectangle(x, static_cast<int>(std::max(at.y - 2, l.headerRows)),
                           static_cast<int>(x + l.columnWidth), static_cast<int>(at.y), kRed);
    }
  }
  drawColumns(l, canvas);
}

double Graph::TabularPart::columnBottom(const Layout& l, int64_t t, int64_t u) const {
  if (!monthColumns(graph_.division) || u - t >= kLongestMonth) return height_;
  const double days = std::round((u - t) / 86400.0);
  return static_cast<int>(days * 86400 * l.pixelsPerSecond + l.headerRows);
}

void Graph::TabularPart::paintCell(const Layout& l, TabularCell cell, Cursor& at,
                                   Canvas& canvas) const {
  const double entryY = at.y;
  int64_t e = nextColumn(at.t);
  while (cell.start >= e) {
    // A cell that starts after the last column of the table is not painted.
    if (e >= l.t1 || ++at.column >= kMaxTabularColumns) return;
    at.x += l.columnWidth;
    at.y = entryY;
    at.t = e;
    e = nextColumn(e);
  }
  if (cell.start < at.t) {
    cell.duration -= at.t - cell.start;
    if (cell.duration < 0) return;
    cell.start = at.t;
  }
  if (cell.start + cell.duration <= e) {
    const double offset = (cell.start - at.t) * l.pixelsPerSecond;
    const int x0 = static_cast<int>(at.x);
    const int yt = static_cast<int>(at.y + offset);
    const double yb = cell.duration * l.pixelsPerSecond + at.y + offset;
    at.y = yb;
    const int n = static_cast<int>(cell.colours.size());
    const int cw = static_cast<int>(x0 + l.columnWidth) - x0;
    int i = 0;
    for (int colour : cell.colours) {
      canvas.fillRectangle(x0 + (i * cw) / n, yt, x0 + ((i + 1) * cw) / n, static_cast<int>(yb),
                           colour);
      ++i;
    }
    return;
  }
  // Folded over the column boundary: this column's part, then the rest.
  paintCell(l, {cell.start, e - cell.start, cell.colours}, at, canvas);
  at.y = entryY;
  paintCell(l, {e, cell.start + cell.duration - e, cell.colours}, at, canvas);
}

}  // namespace grapher
