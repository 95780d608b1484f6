#include "grapher/continuous_plot.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <vector>

#include "grapher/palette.h"

namespace grapher {

int toPixel(double v) {
  if (std::isnan(v)) return 0;
  // Rounds halves up on the canvas; below it (off the picture) towards the
  // edge, as the charts have always been drawn, so that clipped lines keep
  // their pixels.
  return static_cast<int>(std::clamp(v, -1e6, 1e6) + 0.5);  // NOLINT(bugprone-incorrect-roundings)
}

namespace {

enum class End { kOpening, kClosing };

using PairFunction = std::function<void(const ContinuousSample&, const ContinuousSample&)>;
using EndFunction = std::function<void(const ContinuousSample&, End)>;
using SkipTest = std::function<bool(const ContinuousSample&)>;

// Walks every segment, joining consecutive samples with `pair` and marking
// the ends of each run with `end`. A sample that `skip` refuses closes the
// run before it.
void plotRuns(const ContinuousSeries& series, const SkipTest& skip, const PairFunction& pair,
              const EndFunction& end) {
  for (const std::vector<ContinuousSample>& segment : series.segments) {
    const ContinuousSample* previous = nullptr;
    for (const ContinuousSample& sample : segment) {
      if (skip(sample)) {
        if (previous != nullptr) end(*previous, End::kClosing);
        previous = nullptr;
        continue;
      }
      if (previous == nullptr) {
        end(sample, End::kOpening);
      } else {
        pair(*previous, sample);
      }
      previous = &sample;
    }
    if (previous != nullptr) end(*previous, End::kClosing);
  }
}

bool withoutAnswer(const ContinuousSample& s) { return s.noResponse > 0.99; }

// The value a sample is drawn at: the scale starts at 0 at the lowest, and a
// negative value is drawn as 0, on the bottom row of a scale from 0.
double shown(double v) { return v < 0 ? 0 : v; }

// The column where the edge from (x1, va) to (x2, vb) reaches the value v.
int clipX(int x1, int x2, double va, double vb, double v) {
  const double slope = (x2 - x1) / (vb - va);
  return x1 + toPixel((v - va) * slope);
}

// The corners of one edge of the shade polygon from (xa, va) to (xb, vb),
// the end left out: its start, clamped to the plot, and where it crosses the
// top or bottom of the scale, in the order met.
void edgeCorners(const PlotScale& scale, int xa, double va, int xb, double vb,
                 std::vector<Point>& out) {
  out.push_back({xa, scale.clampedRow(va)});
  struct Crossing {
    double at;
    Point p;
  };
  std::vector<Crossing> crossings;
  for (double bound : {scale.max, scale.min}) {
    if ((va - bound) * (vb - bound) < 0) {
      const int row = bound == scale.max ? scale.top : scale.bottomRow();
      crossings.push_back({(bound - va) / (vb - va), {clipX(xa, xb, va, vb, bound), row}});
    }
  }
  std::sort(crossings.begin(), crossings.end(),
            [](const Crossing& a, const Crossing& b) { return a.at < b.at; });
  for (const Crossing& c : crossings) out.push_back(c.p);
}

// One end of a line segment between a and b, clipped to the scale, or false
// when the whole segment lies beyond the same edge.
struct Segment {
  Point from;
  Point to;
};

bool clipSegment(const PlotScale& s, int x1, int x2, double a, double b, Segment& out) {
  if ((a > s.max && b > s.max) || (a < s.min && b < s.min)) return false;
  auto endAt = [&](int x, double v) -> Point {
    if (v > s.max) return {clipX(x1, x2, a, b, s.max), s.top};
    if (v < s.min) return {clipX(x1, x2, a, b, s.min), s.bottomRow()};
    return {x, s.yOf(v)};
  };
  out = {endAt(x1, a), endAt(x2, b)};
  return true;
}

}  // namespace

void drawCurve(const PlotPlace& place, const ContinuousSeries& series, int colour, bool dashed) {
  const PlotScale& s = place.scale;
  Canvas& canvas = place.canvas;
  auto skip = [](const ContinuousSample& x) { return withoutAnswer(x) || std::isnan(x.avg); };
  auto pair = [&](const ContinuousSample& a, const ContinuousSample& b) {
    Segment seg;
    if (!clipSegment(s, place.axis.xPosition(a.time), place.axis.xPosition(b.time), shown(a.avg),
                     shown(b.avg), seg)) {
      return;
    }
    // A flat curve on the bottom row is drawn twice as thick.
    if (seg.from.y == s.bottomRow() && seg.to.y == s.bottomRow()) {
      canvas.line(seg.from.x, seg.from.y + 1, seg.to.x, seg.to.y + 1, colour);
    }
    if (dashed) {
      canvas.dashedLine(seg.from.x, seg.from.y, seg.to.x, seg.to.y, colour);
    } else {
      canvas.line(seg.from.x, seg.from.y, seg.to.x, seg.to.y, colour);
    }
  };
  auto end = [&](const ContinuousSample& x, End) {
    if (s.contains(shown(x.avg))) {
      canvas.circle(place.axis.xPosition(x.time), s.yOf(shown(x.avg)), 4, colour);
    }
  };
  plotRuns(series, skip, pair, end);
}

void drawMinMaxShade(const PlotPlace& place, const ContinuousSeries& series) {
  const PlotScale& s = place.scale;
  auto skip = [](const ContinuousSample& x) {
    return withoutAnswer(x) || std::isnan(x.min) || std::isnan(x.max);
  };
  auto pair = [&](const ContinuousSample& a, const ContinuousSample& b) {
    const int x1 = place.axis.xPosition(a.time);
    const int x2 = place.axis.xPosition(b.time);
    std::vector<Point> corners;
    edgeCorners(s, x1, shown(a.max), x2, shown(b.max), corners);
    corners.push_back({x2, s.clampedRow(shown(b.max))});
    edgeCorners(s, x2, shown(b.min), x1, shown(a.min), corners);
    corners.push_back({x1, s.clampedRow(shown(a.min))});
    place.canvas.fillPolygon(corners, kMinMaxShade);
  };
  auto end = [&](const ContinuousSample& x, End e) {
    const int yu = s.clampedRow(shown(x.max));
    const int yl = s.clampedRow(shown(x.min));
    const int px = place.axis.xPosition(x.time) - (e == End::kOpening ? 1 : 0);
    place.canvas.fillPolygon({{px, yl}, {px, yu}, {px + 1, yu}, {px + 1, yl}}, kMinMaxShade);
  };
  plotRuns(series, skip, pair, end);
}

void drawNoResponse(const PlotPlace& place, const ContinuousSeries& series) {
  const PlotScale& s = place.scale;
  auto rowOf = [&](const ContinuousSample& x) {
    return s.top + toPixel((s.height - 1) * x.noResponse);
  };
  auto pair = [&](const ContinuousSample& a, const ContinuousSample& b) {
    const int x1 = place.axis.xPosition(a.time);
    const int x2 = place.axis.xPosition(b.time);
    place.canvas.fillPolygon({{x1, rowOf(a)}, {x1, s.top}, {x2, s.top}, {x2, rowOf(b)}},
                             kNoResponse);
  };
  auto end = [&](const ContinuousSample& x, End e) {
    const int y = rowOf(x);
    const int px = place.axis.xPosition(x.time) - (e == End::kOpening ? 1 : 0);
    place.canvas.fillPolygon({{px, y}, {px, s.top}, {px + 1, s.top}, {px + 1, y}}, kNoResponse);
  };
  plotRuns(
      series, [](const ContinuousSample&) { return false; }, pair, end);
}

}  // namespace grapher
