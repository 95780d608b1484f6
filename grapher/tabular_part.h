// The tabular chart: one status line folded into a calendar matrix. Each
// column is one period (a minute, an hour, a day or a month by the time
// division), time runs down the column, and cells are painted green, yellow
// or red. A tabular part is always the only part of its Graph.
#pragma once

#include <cstdint>
#include <set>
#include <vector>

#include "grapher/graph.h"

namespace grapher {

// One interval to paint.
struct TabularCell {
  int64_t start;
  int64_t duration;
  std::set<int> colours;  // Palette entries, painted as vertical stripes.
};

// A bound on the columns a cell is walked over, beside the end of the table.
inline constexpr int kMaxTabularColumns = 1000;

class Graph::TabularPart : public Graph::GraphPart {
 public:
  // Raises error::EFatal "Unhandled graph size" on an unknown size.
  TabularPart(const GraphContext& context, bool markBoundaries);

  Margins margins() const override { return {0, 0}; }
  // Both must be 0: the fatal assertion "Margins not supported".
  void setMargins(int left, int right) override;
  int height() const override { return height_; }
  void draw(int y, Canvas& canvas) override;

  // The intervals to paint, in order.
  virtual const std::vector<TabularCell>& cells() const = 0;

  // The start of the column after the one that begins at `t`, in the chart's
  // zone; always after `t`. Raises what the zone conversions raise.
  int64_t nextColumn(int64_t t) const;

 private:
  // The geometry of the table, worked out at the start of a draw.
  struct Layout {
    double headerRows;
    double leftColumn;
    double rowStep;
    double pixelsPerSecond;
    double columnWidth;
    int64_t t0;  // Start of the first column.
    int64_t t1;  // End of the last column.
  };
  // Where paintCell stands: the column's left edge, the row reached, the
  // column's start time and its number from 0.
  struct Cursor {
    double x;
    double y;
    int64_t t;
    int column;
  };

  Layout makeLayout() const;
  void paintCell(const Layout& layout, TabularCell cell, Cursor& at, Canvas& canvas) const;
  void drawColumns(const Layout& layout, Canvas& canvas) const;
  void drawRowLines(const Layout& layout, double x, double bottom, bool firstColumn, int& rowNumber,
                    Canvas& canvas) const;
  // The bottom row of the column from t to u: H, or shorter for a short
  // month in the month divisions.
  double columnBottom(const Layout& layout, int64_t t, int64_t u) const;

  bool markBoundaries_;
  int height_;
};

// Green runs and red gaps between them, with a 2-pixel mark where a cell
// ends.
class Graph::TabularUptimePart : public Graph::TabularPart {
 public:
  TabularUptimePart(const GraphContext& context, const UptimeLine& line);
  const std::vector<TabularCell>& cells() const override { return cells_; }

 private:
  std::vector<TabularCell> cells_;
};

// The class colour of each interval of an enum line's primary series.
class Graph::TabularEnumPart : public Graph::TabularPart {
 public:
  TabularEnumPart(const GraphContext& context, const EnumLine& line);
  const std::vector<TabularCell>& cells() const override { return cells_; }

 private:
  std::vector<TabularCell> cells_;
};

}  // namespace grapher
