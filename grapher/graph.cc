#include "grapher/graph.h"

#include <algorithm>

#include "base/error.h"
#include "grapher/continuous_part.h"
#include "grapher/enum_part.h"
#include "grapher/palette.h"
#include "grapher/tabular_part.h"
#include "grapher/uptime_part.h"
#include "grapher/x_axis.h"

namespace grapher {

const GraphSize& graphSize(int32_t size) {
  static const GraphSize kSizes[3] = {
      {200, kFontTiny, 80, 80},
      {600, kFontSmall, 120, 301},
      {1000, kFontSmall, 200, 400},
  };
  if (size < kSmall || size > kLarge) {
    throw error::EFatal("Unhandled graph size");
  }
  return kSizes[size];
}

Graph::Graph(int32_t kind, int64_t start, int64_t end)
    : kind(kind), start(start), end(end), division(timeDivision(kind, end - start)) {}

Graph::~Graph() = default;

ContinuousGroup& Graph::addContinuousGroup() { return continuousGroups.emplace_back(); }

EnumGroup& Graph::addEnumGroup() { return enumGroups.emplace_back(); }

void Graph::addUptimeLine(const std::vector<UptimeInterval>& records, const std::string& name) {
  uptimeLines.push_back({name, records});
}

void Graph::addError(const std::string& first, const std::string& second) {
  errors.emplace_back(first, second);
}

Graph::GraphContext::GraphContext(const Graph& graph, zone_t zone, CanvasFactory& factory)
    : graph(graph),
      zone(zone),
      factory(factory),
      width(graphSize(graph.size).width),
      font(graphSize(graph.size).font) {
  const CellSize cell = factory.fontSize(font);
  charHeight = cell.height;
  charWidth = cell.width;
}

Graph::Parts Graph::buildParts(const GraphContext& context) const {
  Parts parts;
  const bool noGroups = continuousGroups.empty() && enumGroups.empty();
  const bool oneUptime = errors.empty() && noGroups && uptimeLines.size() == 1;
  if (kind == kTabular && oneUptime) {
    parts.push_back(std::make_unique<TabularUptimePart>(context, uptimeLines[0]));
    return parts;
  }
  if (kind == kTabular && errors.empty() && continuousGroups.empty() && uptimeLines.empty() &&
      enumGroups.size() == 1 && enumGroups[0].lines.size() == 1) {
    parts.push_back(std::make_unique<TabularEnumPart>(context, enumGroups[0].lines[0]));
    return parts;
  }
  if (oneUptime) {
    parts.push_back(std::make_unique<OldStyleUptimePart>(context, uptimeLines[0]));
    return parts;
  }
  for (const auto& [first, second] : errors) {
    parts.push_back(std::make_unique<ErrorPart>(context, first, second));
  }
  auto axis = std::make_unique<XAxisPart>(context, !continuousGroups.empty(), !enumGroups.empty());
  const XAxisPart& master = *axis;
  if (!continuousGroups.empty()) {
    parts.push_back(std::make_unique<ContinuousPart>(context, master, continuousGroups));
  }
  parts.push_back(std::move(axis));
  // Every enum part but one right under the axis gets a strip of ticks.
  auto slaveUnlessUnderAxis = [&] {
    if (parts.back().get() != &master) {
      parts.push_back(std::make_unique<SlaveXAxisPart>(context, master));
    }
  };
  for (const EnumGroup& group : enumGroups) {
    slaveUnlessUnderAxis();
    parts.push_back(std::make_unique<EnumPart>(context, master, group));
  }
  // The uptime bars always get a strip of ticks of their own: the axis has
  // no line towards them (its part below is the enum part only).
  if (!uptimeLines.empty()) {
    parts.push_back(std::make_unique<SlaveXAxisPart>(context, master));
    parts.push_back(std::make_unique<UptimePart>(context, master, uptimeLines));
  }
  return parts;
}

void Graph::draw(CanvasFactory& factory, zone_t zone) const {
  graphSize(size);  // Refuses an unknown size before anything is made.
  const GraphContext context(*this, zone, factory);
  Parts parts = buildParts(context);
  Margins common{0, 0};
  for (const auto& part : parts) {
    const Margins m = part->margins();
    common.left = std::max(common.left, m.left);
    common.right = std::max(common.right, m.right);
  }
  int total = 0;
  for (const auto& part : parts) {
    part->setMargins(common.left, common.right);
    total += part->height();
  }
  factory.makeCanvas(context.width, total);
  Canvas& canvas = factory.getCanvas();
  int y = 0;
  for (const auto& part : parts) {
    part->draw(y, canvas);
    y += part->height();
  }
}

void Graph::ErrorPart::draw(int y, Canvas& canvas) {
  canvas.text(context_.font, left_ + 4, y, first_, kText);
  const int quarter = (context_.width - right_ - left_ - 8) / 4;
  canvas.text(context_.font, left_ + 4 + quarter, y, second_, kText);
}

}  // namespace grapher
