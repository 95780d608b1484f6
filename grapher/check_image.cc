#include "grapher/check_image.h"

#include <optional>

#include "base/error.h"
#include "base/fatal.h"
#include "base/unit.h"
#include "grapher/contiguous.h"
#include "grapher/gd_canvas.h"
#include "grapher/palette.h"
#include "tql/schema.h"

namespace grapher {

namespace {

// A numeric property as a double; absent, null and non-numeric ones give
// nothing.
std::optional<double> numberOf(const tql::patch_t& object, int32_t number) {
  const tql::property_t* p = object.find_set_property(number);
  if (p == nullptr) return std::nullopt;
  switch (p->type()) {
    case tql::property_real_t::kKind:
      return static_cast<const tql::property_real_t*>(p)->value;
    case tql::property_int_t::kKind:
      return static_cast<const tql::property_int_t*>(p)->value;
    case tql::property_uint_t::kKind:
      return static_cast<const tql::property_uint_t*>(p)->value;
    case tql::property_boolean_t::kKind:
      return static_cast<const tql::property_boolean_t*>(p)->value ? 1 : 0;
    default:
      return std::nullopt;
  }
}

double numberOr(const tql::patch_t& object, int32_t number, double otherwise) {
  return numberOf(object, number).value_or(otherwise);
}

// A string or blob property's bytes.
std::optional<std::string> bytesOf(const tql::patch_t& object, int32_t number) {
  const tql::property_t* p = object.find_set_property(number);
  if (p == nullptr) return std::nullopt;
  if (p->type() == tql::property_string_t::kKind) {
    return static_cast<const tql::property_string_t*>(p)->value;
  }
  if (p->type() == tql::property_blob_t::kKind) {
    return static_cast<const tql::property_blob_t*>(p)->value;
  }
  return std::nullopt;
}

Unit unitOf(const tql::patch_t& object, int32_t number) {
  const std::optional<std::string> blob = bytesOf(object, number);
  if (!blob) return Unit();
  return Unit(std::vector<uint8_t>(blob->begin(), blob->end()));
}

// The fields of each record, which must be of class N; raises
// error::EFatal `failure` when one isn't.
template <int32_t N, class Fields>
std::vector<Fields> fieldsOf(const std::vector<tsdb::interval_ptr>& records, const char* failure) {
  using Record = tsdb::interval_kind_t<N, Fields>;
  std::vector<Fields> out;
  for (const tsdb::interval_ptr& r : records) {
    const Record* typed = dynamic_cast<const Record*>(r.get());
    if (typed == nullptr) throw error::EFatal(failure);
    out.push_back(typed->fields());
  }
  return out;
}

void addUptime(Graph& graph, const std::vector<tsdb::interval_ptr>& records) {
  std::vector<UptimeInterval> runs;
  for (const tsdb::continuous_fields& r :
       fieldsOf<2, tsdb::continuous_fields>(records, "Tried to cast to uptime. Error.")) {
    runs.push_back({r.start, r.end});
  }
  graph.addUptimeLine(runs, "");
}

void addEnum(Graph& graph, const tql::patch_t& object,
             const std::vector<tsdb::interval_ptr>& records) {
  const auto fields = fieldsOf<3, tsdb::enum_fields>(records, "Tried to cast to enum. Error.");
  EnumSeries series;
  const std::string colours = bytesOf(object, schema::kStateColors).value_or("");
  // Masks have 32 bits: letters past state 31 name no state.
  for (size_t i = 0; i < colours.size() && i < 32; ++i) {
    const int state = static_cast<int>(i);
    const char c = colours[i];
    if (c != 'r' && c != 'y' && c != 'g') continue;
    series.classes[state] = c == 'r' ? 2 : c == 'y' ? 1 : 0;
    if (auto label = bytesOf(object, schema::kStateLabel0 + state)) {
      series.labels[state] = *label;
    }
  }
  EnumSeries secondary = series;
  findContiguous(series, fields);
  graph.addEnumGroup().addLine(series, secondary, "");
}

void addContinuous(Graph& graph, const tql::patch_t& object,
                   const std::vector<tsdb::interval_ptr>& records, SampleForm form,
                   const char* failure, const Unit& stored, const Unit& display) {
  const auto fields = fieldsOf<2, tsdb::continuous_fields>(records, failure);
  ContinuousSeries primary;
  primary.unit = stored;
  ContinuousSeries secondary = primary;
  findContiguous(primary, fields, form);
  primary.warnIfBelow = numberOr(object, schema::kWarnIfBelow, kUnset);
  primary.warnIfAbove = numberOr(object, schema::kWarnIfAbove, kUnset);
  primary.alertIfBelow = numberOr(object, schema::kAlertIfBelow, kUnset);
  primary.alertIfAbove = numberOr(object, schema::kAlertIfAbove, kUnset);
  primary.plotMin = numberOr(object, schema::kPlotMin, kUnset);
  primary.plotMax = numberOr(object, schema::kPlotMax, kUnset);
  convertSeries(primary, display);
  graph.addContinuousGroup().addLine(primary, secondary, "");
}

}  // namespace

int32_t chartKind(const tql::patch_t& graphObject) {
  return numberOr(graphObject, schema::kGraphTabularUptime, 0) != 0 ? kTabular : kPlot;
}

void convertSeries(ContinuousSeries& series, const Unit& display) {
  if (series.unit == display) return;  // Nothing to convert.
  const Unit from = series.unit;
  auto to = [&](double& v) { v = convertValue(from, v, display); };
  for (auto& segment : series.segments) {
    for (ContinuousSample& s : segment) {
      to(s.min);
      to(s.avg);
      to(s.max);
    }
  }
  for (double* v :
       {&series.warnIfBelow, &series.warnIfAbove, &series.alertIfBelow, &series.alertIfAbove,
        &series.plotMin, &series.plotMax, &series.minimum, &series.maximum, &series.sum}) {
    to(*v);
  }
  series.unit = display;
}

void generate_check_image(Graph& graph, const tql::patch_t& graphObject, int32_t dataType,
                          const std::vector<tsdb::interval_ptr>& records) {
  const Unit stored = unitOf(graphObject, schema::kUnit);
  Unit display = graphObject.find_set_property(schema::kPreferredUnit)
                     ? unitOf(graphObject, schema::kPreferredUnit)
                     : stored;
  if (auto binary = numberOf(graphObject, schema::kPreferredBinary)) {
    display.setBinary(*binary != 0);
  }
  graph.setShowMinMax(numberOr(graphObject, schema::kGraphShowMinMax, 0) != 0);
  graph.setShowNoResponse(numberOr(graphObject, schema::kGraphShowNoResponse, 0) != 0);
  switch (dataType) {
    case tsdb::kUptime:
      addUptime(graph, records);
      break;
    case tsdb::kEnum:
      addEnum(graph, graphObject, records);
      break;
    case tsdb::kContinuous:
      addContinuous(graph, graphObject, records, SampleForm::kPlain,
                    "Tried to cast to continous. Error.", stored, display);
      break;
    case tsdb::kAccumulation:
      addContinuous(graph, graphObject, records, SampleForm::kRising,
                    "Tried to cast to uptime. Error.", stored, display);
      break;
    default:
      assertion_failed("Got unknown dataset type " + std::to_string(dataType) +
                       " in generate_check_image");
  }
}

std::vector<uint8_t> errorPicture(const std::string& text) {
  GDCanvasFactory factory;
  const CellSize cell = factory.fontSize(kFontSmall);
  factory.makeCanvas(static_cast<int>(text.size()) * cell.width, cell.height);
  factory.getCanvas().text(kFontSmall, 0, 0, text, kAxis);
  return factory.getCanvas().pngBytes();
}

std::vector<uint8_t> chartPng(const Graph& graph, zone_t zone) {
  try {
    GDCanvasFactory factory;
    graph.draw(factory, zone);
    return factory.getCanvas().pngBytes();
  } catch (const error::Exception& e) {
    return errorPicture(e.text());
  }
}

}  // namespace grapher
