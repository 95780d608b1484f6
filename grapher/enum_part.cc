#include "grapher/enum_part.h"

#include <algorithm>
#include <set>

#include "grapher/palette.h"
#include "tavml/dot_string.h"

namespace grapher {

namespace {

constexpr int kRowHeight = 40;

// Fills the bar rows top..top + rows - 1 from x0 to x1 - 1 with one stripe
// per colour, in rising colour order.
void stripes(Canvas& canvas, int x0, int x1, int top, int rows, const std::set<int>& colours) {
  const int n = static_cast<int>(colours.size());
  int i = 0;
  for (int colour : colours) {
    canvas.fillRectangle(x0, top + (i * rows) / n, x1 - 1, top + ((i + 1) * rows) / n - 1, colour);
    ++i;
  }
}

}  // namespace

void walkEnumSamples(
    const EnumSeries& series,
    const std::function<void(const EnumSample* previous, const EnumSample& sample)>& visit) {
  for (const std::vector<EnumSample>& segment : series.segments) {
    const EnumSample* previous = nullptr;
    for (const EnumSample& sample : segment) {
      if (sample.unknown > 0.99) {
        previous = nullptr;
        continue;
      }
      visit(previous, sample);
      previous = &sample;
    }
  }
}

int classColour(int stateClass) {
  if (stateClass == 0) return kGreen;
  if (stateClass == 1) return kYellow;
  return kRed;
}

int classColourOf(const std::map<int, int>& classes, int state) {
  auto it = classes.find(state);
  return it == classes.end() ? kRed : classColour(it->second);
}

Graph::EnumPart::EnumPart(const GraphContext& context, const XAxisPart& xAxis,
                          const EnumGroup& group)
    : GraphPart(context), xAxis_(xAxis), group_(group) {
  if (group.lines.empty()) return;
  for (const auto& [state, name] : group.lines[0].primary.labels) {
    stateColour(state);
  }
}

int Graph::EnumPart::stateColour(int state) {
  auto it = stateColours_.find(state);
  if (it != stateColours_.end()) return it->second;
  const int colour = stateColourAt(coloursGiven_++);
  stateColours_[state] = colour;
  return colour;
}

Margins Graph::EnumPart::margins() const {
  const int w = context_.charWidth;
  size_t longest = 0;
  for (const EnumLine& line : group_.lines) {
    longest = std::max(longest, line.name.size());
  }
  const int column = std::min<int>(context_.width / 4 / w, static_cast<int>(longest));
  return {w * column + w / 2, 0};
}

int Graph::EnumPart::boxSize() const { return std::max(context_.charHeight, 16); }

Graph::EnumPart::LegendLayout Graph::EnumPart::layoutLegend(bool countEmpty) const {
  LegendLayout layout{{}, 0};
  if (group_.lines.empty()) return layout;
  const int w = context_.charWidth;
  const int b = boxSize();
  const int total = context_.width - right_ - left_ - 6;
  // At least one column, however narrow the picture.
  const int c = std::max(1, total / (14 * w + b + 11));
  const int k = std::max(1, total / c);
  int u = 0;
  int row = 0;
  for (const auto& [state, name] : group_.lines[0].primary.labels) {
    if (name.empty() && !countEmpty) continue;
    const int len = static_cast<int>(name.size());
    const int span = std::min(c, (w * len + k - 1 + b + 1 + 10) / k);
    if (span + u > c) {
      ++row;
      u = 0;
    }
    layout.slots.push_back({state, row, (u * total) / c + left_ + 3});
    u += span;
    if (u >= c) {
      u = 0;
      ++row;
    }
  }
  layout.rows = row + (u > 0 ? 1 : 0);
  return layout;
}

int Graph::EnumPart::height() const {
  if (group_.lines.empty()) return 0;
  const int lines = static_cast<int>(group_.lines.size());
  return layoutLegend(true).rows * boxSize() + lines * kRowHeight + 6;
}

bool Graph::EnumPart::classesCommon() const {
  for (const EnumLine& line : group_.lines) {
    if (line.primary.classes != group_.lines[0].primary.classes) return false;
  }
  return true;
}

void Graph::EnumPart::draw(int y, Canvas& canvas) {
  if (group_.lines.empty()) return;
  int r = y;
  for (const EnumLine& line : group_.lines) {
    drawRow(line, r, canvas);
    r += kRowHeight;
  }
  for (const AxisTick& tick : xAxis_.ticks()) {
    const int x = xAxis_.xPosition(tick.time);
    if (tick.labelled) {
      canvas.line(x, y, x, r - 1, kGrid);
    } else {
      canvas.dashedLine(x, y, x, r - 1, kGrid);
    }
  }
  drawLegend(r, canvas);
}

void Graph::EnumPart::drawRow(const EnumLine& line, int r, Canvas& canvas) {
  const int h = context_.charHeight;
  const int w = context_.charWidth;
  canvas.text(context_.font, 0, (r + 38 - h + r + 2) / 2,
              tavml::dot_string_width(line.name, context_.width / 4 / w), kText);
  const EnumSeries& series = line.primary;
  walkEnumSamples(series, [&](const EnumSample* previous, const EnumSample& sample) {
    // Between two samples the states of both ends count; a lone sample
    // is a bar one pixel wide.
    int x0 = xAxis_.xPosition(sample.time);
    int x1 = x0 + 1;
    uint32_t mask = sample.states;
    if (previous != nullptr) {
      x0 = xAxis_.xPosition(previous->time);
      x1 = xAxis_.xPosition(sample.time);
      mask |= previous->states;
    }
    std::set<int> states;
    std::set<int> classes;
    for (int bit = 0; bit < 32; ++bit) {
      if ((mask >> bit & 1u) == 0) continue;
      states.insert(stateColour(bit));
      classes.insert(classColourOf(series.classes, bit));
    }
    stripes(canvas, x0, x1, r + 2, 23, states);
    stripes(canvas, x0, x1, r + 27, 11, classes);
  });
}

void Graph::EnumPart::drawLegend(int top, Canvas& canvas) {
  const int b = boxSize();
  const bool common = classesCommon();
  const EnumSeries& first = group_.lines[0].primary;
  for (const LegendSlot& slot : layoutLegend(false).slots) {
    const int x = slot.x;
    const int row = top + slot.row * b;
    const int colour = stateColour(slot.state);
    canvas.text(context_.font, x + b + 2, row, first.labels.at(slot.state), kText);
    canvas.fillRectangle(x + 1, row + 1, x + b - 2, row + 14, kAxis);
    if (common) {
      canvas.fillRectangle(x + 2, row + 2, x + b - 3, row + b - 7, colour);
      canvas.fillRectangle(x + 2, row + b - 5, x + b - 3, row + b - 3,
                           classColourOf(first.classes, slot.state));
    } else {
      canvas.fillRectangle(x + 2, row + 2, x + b - 3, row + b - 3, colour);
    }
  }
}

}  // namespace grapher
