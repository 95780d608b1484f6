#include "grapher/uptime_part.h"

#include <algorithm>

#include "base/value_format.h"
#include "grapher/palette.h"
#include "grapher/plot_scale.h"

namespace grapher {

Margins Graph::UptimePart::margins() const {
  size_t longest = 0;
  for (const UptimeLine& line : lines_) {
    longest = std::max(longest, line.name.size());
  }
  const int w = context_.charWidth;
  return {w * static_cast<int>(longest) + w / 2, 0};
}

void Graph::UptimePart::draw(int y, Canvas& canvas) {
  if (lines_.empty()) return;
  for (size_t i = 0; i < lines_.size(); ++i) {
    drawPass(lines_[i], y + 27 * static_cast<int>(i), false, canvas);
  }
  const int last = y + height() - 1;
  for (const AxisTick& tick : xAxis_.ticks()) {
    const int x = xAxis_.xPosition(tick.time);
    if (tick.labelled) {
      canvas.line(x, y, x, last, kGrid);
    } else {
      canvas.dashedLine(x, y, x, last, kGrid);
    }
  }
  for (size_t i = 0; i < lines_.size(); ++i) {
    drawPass(lines_[i], y + 27 * static_cast<int>(i), true, canvas);
  }
}

void Graph::UptimePart::drawPass(const UptimeLine& line, int r, bool second, Canvas& canvas) {
  if (second) {
    canvas.text(context_.font, 0, (r + 25 - context_.charHeight + r + 2) / 2, line.name, kText);
  }
  bool hasPrevious = false;
  int previous = 0;  // Right edge of the bar before.
  for (const UptimeInterval& run : line.intervals) {
    int x0 = xAxis_.xPosition(run.start);
    if (hasPrevious) x0 = std::max(x0, previous + 1);
    const int x1 = std::max(xAxis_.xPosition(run.end), x0);
    if (second && hasPrevious) {
      canvas.fillRectangle(previous, r + 2, x0 - 1, r + 24, kRed);
    }
    if (!second) canvas.fillRectangle(x0, r + 2, x1 - 1, r + 24, kGreen);
    previous = x1;
    hasPrevious = true;
  }
}

Graph::OldStyleUptimePart::OldStyleUptimePart(const GraphContext& context, const UptimeLine& line)
    : GraphPart(context),
      line_(line),
      headerHeight_(context.charHeight + 2),
      rowPad_(context.graph.size == kSmall ? 2 : 3),
      rowHeight_(context.charHeight + 2 * rowPad_ + 2) {}

Margins Graph::OldStyleUptimePart::margins() const {
  size_t leftColumn = 9;  // "Boot time"
  size_t rightColumn = 0;
  const auto& runs = line_.intervals;
  for (size_t i = 0; i < runs.size(); ++i) {
    leftColumn = std::max(leftColumn, timeLabel(graph_, runs[i].start, context_.zone, true).size());
    if (i + 1 < runs.size()) {
      rightColumn =
          std::max(rightColumn, timeLabel(graph_, runs[i].end, context_.zone, true).size());
    }
  }
  const int w = context_.charWidth;
  return {(static_cast<int>(leftColumn) + 1) * w, (static_cast<int>(rightColumn) + 1) * w};
}

int Graph::OldStyleUptimePart::height() const {
  return rowHeight_ * static_cast<int>(line_.intervals.size()) + headerHeight_;
}

void Graph::OldStyleUptimePart::draw(int y, Canvas& canvas) {
  const int w = context_.charWidth;
  const int width = context_.width;
  const auto& runs = line_.intervals;
  int64_t longest = 0;
  for (const UptimeInterval& run : runs) {
    longest = std::max(longest, run.end - run.start);
  }
  Unit seconds("s");
  if (graph_.size == kSmall) seconds.setCompact(true);
  canvas.text(context_.font, 0, y, "Boot time", kText);
  int r = y + headerHeight_;
  for (size_t i = 0; i < runs.size(); ++i) {
    const UptimeInterval& run = runs[i];
    const int ty = r + rowPad_;
    canvas.text(context_.font, 0, ty, timeLabel(graph_, run.start, context_.zone, true), kText);
    if (i + 1 < runs.size()) {
      const std::string e = timeLabel(graph_, run.end, context_.zone, true);
      canvas.text(context_.font, width - w * static_cast<int>(e.size()), ty, e, kText);
    }
    // With every run of length 0 there is nothing to compare: no bar.
    const double share = longest > 0 ? static_cast<double>(run.end - run.start) / longest : 0;
    const int x = left_ + toPixel((width - right_ - left_) * share);
    canvas.fillRectangle(left_, r, x - 1, r + rowHeight_ - 2, kGreen);
    const std::string length =
        valueText(seconds, static_cast<double>(run.end - run.start), seconds);
    const int len = static_cast<int>(length.size());
    canvas.text(context_.font, std::max(x - w - w * len, left_ + w), ty, length, kText);
    r += rowHeight_;
  }
}

}  // namespace grapher
