// Graph: the model of one chart (period, options, series) and its drawing.
// draw() turns the model into a list of parts, horizontal bands over the
// whole width of the picture stacked top to bottom; it takes the widest
// margins of all parts, adds up their heights, has the factory make a canvas
// of exactly that size and lets each part draw at its own offset.
//
// A Graph is built, filled, drawn once and dropped. Not thread-safe.
#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "base/zone.h"
#include "grapher/canvas.h"
#include "grapher/series.h"

namespace grapher {

inline constexpr int32_t kPlot = 0;
inline constexpr int32_t kTabular = 1;

inline constexpr int32_t kSmall = 0;
inline constexpr int32_t kMedium = 1;
inline constexpr int32_t kLarge = 2;

// What a graph size fixes.
struct GraphSize {
  int width;             // Picture width.
  int font;              // kFontTiny or kFontSmall.
  int continuousHeight;  // Continuous part before its legend, less h / 2.
  int tabularHeight;     // Tabular part before its label row.
};

// The row of `size`; raises error::EFatal "Unhandled graph size" for any
// size but kSmall, kMedium, kLarge.
const GraphSize& graphSize(int32_t size);

class Graph {
 public:
  struct GraphContext;
  class GraphPart;
  class ErrorPart;
  class XAxisPart;
  class SlaveXAxisPart;
  class ContinuousPart;
  class EnumPart;
  class UptimePart;
  class OldStyleUptimePart;
  class TabularPart;
  class TabularUptimePart;
  class TabularEnumPart;

  using Parts = std::vector<std::unique_ptr<GraphPart>>;

  // Sets the fields below and chooses `division` from end - start.
  Graph(int32_t kind, int64_t start, int64_t end);
  ~Graph();
  Graph(const Graph&) = delete;
  Graph& operator=(const Graph&) = delete;

  void setShowMinMax(bool on) { showMinMax = on; }
  void setShowNoResponse(bool on) { showNoResponse = on; }
  // Append an empty group and give it back for filling; the reference stays
  // valid for the life of the Graph.
  ContinuousGroup& addContinuousGroup();
  EnumGroup& addEnumGroup();
  void addUptimeLine(const std::vector<UptimeInterval>& records, const std::string& name);
  // One ErrorPart at the top of the chart with two texts.
  void addError(const std::string& first, const std::string& second);

  // Draws the chart on a canvas that `factory` makes (once), in `zone`.
  // Raises error::EFatal "Unhandled graph size", "Could not find common
  // y-axis division", and what the zone conversions raise
  // (error::ESystemError); after a failure the factory may hold a canvas,
  // and the caller drops it.
  void draw(CanvasFactory& factory, zone_t zone) const;

  // The parts of the chart, top to bottom, for `context`; what draw() uses.
  // Raises what the parts' constructors raise (error::EFatal).
  Parts buildParts(const GraphContext& context) const;

  // The model. Fields are public, as the parts read them all.
  int32_t kind;
  int32_t size = kMedium;
  int64_t start;
  int64_t end;
  bool showMinMax = false;
  bool showNoResponse = false;
  bool showTimeLabels = true;
  bool showValueAxes = true;
  bool showLegendValues = true;
  int32_t division;
  std::deque<ContinuousGroup> continuousGroups;
  std::deque<EnumGroup> enumGroups;
  std::vector<UptimeLine> uptimeLines;
  std::vector<std::pair<std::string, std::string>> errors;
};

// What every part is given. Lives on the stack of Graph::draw; parts keep a
// reference and never outlive the draw.
struct Graph::GraphContext {
  GraphContext(const Graph& graph, zone_t zone, CanvasFactory& factory);

  const Graph& graph;
  zone_t zone;
  CanvasFactory& factory;
  int width;  // Picture width.
  int font;
  int charHeight;
  int charWidth;
};

struct Margins {
  int left;
  int right;
};

// One horizontal band of the chart. A part must not paint outside rows y to
// y + height() - 1 of its draw.
class Graph::GraphPart {
 public:
  explicit GraphPart(const GraphContext& context) : context_(context), graph_(context.graph) {}
  virtual ~GraphPart() = default;
  GraphPart(const GraphPart&) = delete;
  GraphPart& operator=(const GraphPart&) = delete;

  // The margins this part needs.
  virtual Margins margins() const = 0;
  // The common margins, before any draw.
  virtual void setMargins(int left, int right) {
    left_ = left;
    right_ = right;
  }
  virtual int height() const = 0;
  // Draws the part with its top at `y`.
  virtual void draw(int y, Canvas& canvas) = 0;

 protected:
  const GraphContext& context_;
  const Graph& graph_;
  int left_ = 0;
  int right_ = 0;
};

// Two texts in one row: the first at left + 4, the second a quarter of the
// way along.
class Graph::ErrorPart : public Graph::GraphPart {
 public:
  ErrorPart(const GraphContext& context, std::string first, std::string second)
      : GraphPart(context), first_(std::move(first)), second_(std::move(second)) {}
  Margins margins() const override { return {0, 0}; }
  int height() const override { return context_.charHeight; }
  void draw(int y, Canvas& canvas) override;

 private:
  std::string first_;
  std::string second_;
};

}  // namespace grapher
