// Enum charts: one row of coloured bars per line of a group, the states of
// each interval stacked in the upper bar and their classes (green, yellow,
// red) in the lower one, under a legend of the states.
#pragma once

#include <functional>
#include <map>
#include <vector>

#include "grapher/graph.h"
#include "grapher/x_axis.h"

namespace grapher {

// The palette entry of a state class: 0 green, 1 yellow, anything else red.
int classColour(int stateClass);
// The class colour of `state` in `classes`; a state without a class is red.
int classColourOf(const std::map<int, int>& classes, int state);

// Walks the samples of `series` that an enum chart shows, segment by
// segment: `visit(previous, sample)` with the sample before it in the same
// run, or null at the start of a run. A sample with `unknown` above 0.99 is
// passed over and starts a new run.
void walkEnumSamples(
    const EnumSeries& series,
    const std::function<void(const EnumSample* previous, const EnumSample& sample)>& visit);

class Graph::EnumPart : public Graph::GraphPart {
 public:
  // The states named by the first line take the first colours, in rising
  // state number. `xAxis` and `group` must outlive the part.
  EnumPart(const GraphContext& context, const XAxisPart& xAxis, const EnumGroup& group);

  Margins margins() const override;
  // Bar rows and legend rows; 0 for an empty group.
  int height() const override;
  void draw(int y, Canvas& canvas) override;

  // The colour of a state; a state met for the first time takes the next
  // free colour, so colours stay the same over all rows of the part.
  int stateColour(int state);

 private:
  struct LegendSlot {
    int state;
    int row;  // Legend row, from 0.
    int x;
  };
  struct LegendLayout {
    std::vector<LegendSlot> slots;
    int rows;
  };

  int boxSize() const;
  // Places the entries of the first line's labels; with `countEmpty`,
  // states with an empty name take room as well (for height()).
  LegendLayout layoutLegend(bool countEmpty) const;
  bool classesCommon() const;
  void drawRow(const EnumLine& line, int r, Canvas& canvas);
  void drawLegend(int top, Canvas& canvas);

  const XAxisPart& xAxis_;
  const EnumGroup& group_;
  std::map<int, int> stateColours_;  // State number to palette entry.
  int coloursGiven_ = 0;
};

}  // namespace grapher
