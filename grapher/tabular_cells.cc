// The cells of the two tabular charts: uptime runs and their gaps, and the
// class colours of enum intervals.
#include <iterator>

#include "grapher/enum_part.h"
#include "grapher/palette.h"
#include "grapher/tabular_part.h"

namespace grapher {

namespace {

// The one colour of an enum interval with the states of `mask`: red if any
// state's class is neither green nor yellow, else yellow if any is yellow,
// else green if any is green. States without a class don't count; a cell
// without a classed state has no colour.
std::set<int> enumCellColours(uint32_t mask, const std::map<int, int>& classes) {
  bool red = false;
  bool yellow = false;
  bool green = false;
  for (int bit = 0; bit < 32; ++bit) {
    if ((mask >> bit & 1u) == 0) continue;
    auto it = classes.find(bit);
    if (it == classes.end()) continue;
    red = red || (it->second != 0 && it->second != 1);
    yellow = yellow || it->second == 1;
    green = green || it->second == 0;
  }
  if (red) return {kRed};
  if (yellow) return {kYellow};
  if (green) return {kGreen};
  return {};
}

}  // namespace

Graph::TabularUptimePart::TabularUptimePart(const GraphContext& context, const UptimeLine& line)
    : TabularPart(context, true) {
  const auto& runs = line.intervals;
  for (auto it = runs.begin(); it != runs.end(); ++it) {
    cells_.push_back({it->start, it->end - it->start, {kGreen}});
    auto next = std::next(it);
    if (next != runs.end()) {
      cells_.push_back({it->end, next->start - it->end, {kRed}});
    }
  }
}

Graph::TabularEnumPart::TabularEnumPart(const GraphContext& context, const EnumLine& line)
    : TabularPart(context, false) {
  const EnumSeries& series = line.primary;
  walkEnumSamples(series, [&](const EnumSample* previous, const EnumSample& sample) {
    if (previous != nullptr) {
      cells_.push_back({previous->time, sample.time - previous->time,
                        enumCellColours(previous->states | sample.states, series.classes)});
    } else {
      cells_.push_back({sample.time, 1, enumCellColours(sample.states, series.classes)});
    }
  });
}

}  // namespace grapher
