#include "grapher/x_axis.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>

#include "grapher/palette.h"

namespace grapher {

const char* const kMonthNames[12] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                     "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
const char* const kDayNames[7] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};

int32_t timeDivision(int32_t kind, int64_t span) {
  // The span saturates at the 32-bit limits rather than wrapping, so that a
  // period of many years never reads as a short one.
  const int64_t s = std::clamp<int64_t>(span, std::numeric_limits<int32_t>::min(),
                                        std::numeric_limits<int32_t>::max());
  const bool tabular = kind == kTabular;
  if (s <= (tabular ? 7200 : 43200)) return 0;
  if (s <= (tabular ? 172800 : 259200)) return 1;
  if (s <= 1296000) return 2;
  if (s <= 4838400) return 3;
  if (s <= 9676800) return 4;
  if (s <= 23328000) return 5;
  return 6;
}

std::string timeLabel(const Graph& graph, int64_t time, zone_t zone, bool withSeconds) {
  const tm_t f = local(time, zone);
  char buf[32];
  if (graph.division <= 1) {
    if (withSeconds) {
      std::snprintf(buf, sizeof buf, "%02i:%02i:%02i", f.hour, f.min, f.sec);
    } else {
      std::snprintf(buf, sizeof buf, "%02i:%02i", f.hour, f.min);
    }
    return buf;
  }
  const char* month = kMonthNames[f.mon];
  if (!withSeconds) {
    std::snprintf(buf, sizeof buf, "%02i %s", f.mday, month);
  } else if (graph.size == kSmall) {
    std::snprintf(buf, sizeof buf, "%02i %s %02i:%02i", f.mday, month, f.hour, f.min);
  } else {
    std::snprintf(buf, sizeof buf, "%02i %s %02i:%02i:%02i", f.mday, month, f.hour, f.min, f.sec);
  }
  if (buf[0] == '0') buf[0] = ' ';
  return buf;
}

Graph::XAxisPart::XAxisPart(const GraphContext& context, bool hasPartAbove, bool hasPartBelow)
    : GraphPart(context),
      showLabels_(context.graph.showTimeLabels),
      hasPartAbove_(hasPartAbove),
      hasPartBelow_(hasPartBelow) {}

void Graph::XAxisPart::setMargins(int left, int right) {
  GraphPart::setMargins(left, right);
  buildTicks();
}

namespace {

// Rounds the broken-down start down to the first tick boundary of the
// division.
void roundDown(tm_t& f, int32_t division) {
  f.sec = 0;
  switch (division) {
    case 0:
      f.min -= f.min % 10;
      break;
    case 1:
      f.hour -= f.hour % 2;
      f.min = 0;
      break;
    case 2:
    case 3:
    case 4:
      f.hour = 0;
      f.min = 0;
      f.isdst = -1;
      break;
    default:
      f.mday = 1;
      f.hour = 0;
      f.min = 0;
      f.isdst = -1;
      break;
  }
}

// Steps the fields to the next boundary; compose() normalises them, which
// keeps ticks on local midnight across daylight saving changes.
void step(tm_t& f, int32_t division) {
  switch (division) {
    case 0:
      f.min += 10;
      break;
    case 1:
      f.hour += 2;
      break;
    case 2:
    case 3:
    case 4:
      f.mday += 1;
      f.isdst = -1;
      break;
    default:
      f.mon += 1;
      f.isdst = -1;
      break;
  }
}

// The tick at the normalised fields `f`, if the division has one there.
bool tickAt(const tm_t& f, int32_t division, bool& labelled) {
  switch (division) {
    case 3:
      labelled = f.wday == 1;
      return true;
    case 4:
      labelled = f.mday == 1;
      return labelled || f.wday == 1;
    default:
      labelled = true;
      return true;
  }
}

}  // namespace

void Graph::XAxisPart::buildTicks() {
  ticks_.clear();
  const Graph& g = graph_;
  tm_t f = local(g.start, context_.zone);
  roundDown(f, g.division);
  int64_t t = compose(f, context_.zone);
  while (t <= g.end) {
    bool labelled = false;
    if (t >= g.start && tickAt(f, g.division, labelled)) {
      ticks_.push_back({t, labelled});
    }
    step(f, g.division);
    const int64_t next = compose(f, context_.zone);
    if (next <= t) break;  // A calendar that stands still ends the axis.
    t = next;
  }
}

int Graph::XAxisPart::xPosition(int64_t time) const {
  const Graph& g = graph_;
  double f = 0;
  if (g.end > g.start) {
    f = static_cast<double>(time - g.start) / static_cast<double>(g.end - g.start);
    f = std::clamp(f, 0.0, 1.0);
  }
  return left_ + static_cast<int>(std::lround(f * (context_.width - right_ - left_ - 1)));
}

int Graph::XAxisPart::height() const {
  if (!showLabels_) return hasPartAbove_ || hasPartBelow_ ? 1 : 0;
  return 5 * context_.charHeight / 3 + (hasPartAbove_ ? 4 : 0) + (hasPartBelow_ ? 4 : 0);
}

void Graph::XAxisPart::draw(int y, Canvas& canvas) {
  const int x0 = lineStart(left_);
  const int x1 = lineEnd(right_);
  const int h = context_.charHeight;
  const int w = context_.charWidth;
  if (!showLabels_) {
    if (hasPartAbove_ || hasPartBelow_) canvas.line(x0, y, x1, y, kAxis);
    return;
  }
  const int bottom = y + height() - 1;
  int offset = 0;
  if (hasPartAbove_) {
    canvas.line(x0, y, x1, y, kAxis);
    offset = 4;
  }
  if (hasPartBelow_) canvas.line(x0, bottom, x1, bottom, kAxis);
  int lastX = 0;
  bool lowRow = false;
  for (const AxisTick& tick : ticks_) {
    if (!tick.labelled) continue;
    const int x = xPosition(tick.time);
    const std::string s = timeLabel(graph_, tick.time, context_.zone, false);
    const int n = static_cast<int>(s.size());
    if (!(x - lastX > 3 * w && x + (w * n) / 2 <= context_.width)) continue;
    if (hasPartAbove_) canvas.line(x, y, x, y + 2, kAxis);
    if (hasPartBelow_) canvas.line(x, bottom - 2, x, bottom, kAxis);
    canvas.text(context_.font, x - (w * n) / 2, y + offset + (lowRow ? (2 * h) / 3 : 0), s, kText);
    lastX = x;
    lowRow = !lowRow;
  }
}

void Graph::SlaveXAxisPart::draw(int y, Canvas& canvas) {
  canvas.line(master_.lineStart(left_), y + 2, master_.lineEnd(right_), y + 2, kAxis);
  for (const AxisTick& tick : master_.ticks()) {
    const int x = master_.xPosition(tick.time);
    canvas.line(x, y, x, y + 2, kAxis);
  }
}

}  // namespace grapher
