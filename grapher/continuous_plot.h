// The curves of a continuous part: runs of samples drawn as joined pairs
// with end marks, the minimum to maximum shading and the no-response area.
// A gap between segments, or samples without answers, is never bridged.
#pragma once

#include "grapher/canvas.h"
#include "grapher/plot_scale.h"
#include "grapher/series.h"
#include "grapher/x_axis.h"

namespace grapher {

// Where a series is drawn: the master axis for columns, the scale of its
// value axis for rows.
struct PlotPlace {
  const Graph::XAxisPart& axis;
  const PlotScale& scale;
  Canvas& canvas;
};

// The curve of `series` in `colour`: solid, or dashed for a secondary series.
// Samples without answers (noResponse above 0.99, or no average) break it.
// Segments outside the scale are clipped at its top and bottom rows.
void drawCurve(const PlotPlace& place, const ContinuousSeries& series, int colour, bool dashed);

// The minimum to maximum band of `series` in colour 13, clipped to the scale.
void drawMinMaxShade(const PlotPlace& place, const ContinuousSeries& series);

// The no-response area of `series` in colour 12, hanging from the top of the
// plot by the fraction of measurements without answer.
void drawNoResponse(const PlotPlace& place, const ContinuousSeries& series);

}  // namespace grapher
