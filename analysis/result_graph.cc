#include "analysis/result_graph.h"

#include <utility>
#include <vector>

#include "analysis/object_values.h"
#include "analysis/result_create.h"
#include "tql/schema.h"
#include "tsdb/interval.h"

namespace {

using Properties = std::vector<tql::property_ptr>;

void addReal(Properties& p, int32_t number, double value) {
  p.emplace_back(tql::make_property<tql::kind::kReal>(number, value));
}

void copyIfPresent(Properties& p, const tql::patch_t& check, int32_t number) {
  if (const tql::property_t* q = check.find_property(number)) p.emplace_back(q->clone());
}

// The enum check's colours and state labels, or the unit of any other; an
// enum check without colours gets an empty unit.
void addPresentation(Properties& p, const GraphSettings& s, const tql::patch_t& check) {
  const bool isEnum = s.dataType == tsdb::kEnum;
  const std::string colors = stringOr(check, schema::kStateColors, "");
  if (isEnum && !colors.empty()) {
    p.emplace_back(tql::make_string_property(schema::kStateColors, colors));
    for (int32_t i = 0; i < 32; ++i) copyIfPresent(p, check, schema::kStateLabel0 + i);
    return;
  }
  p.emplace_back(
      tql::make_property<tql::kind::kBlob>(schema::kUnit, isEnum ? std::string() : s.unit));
  copyIfPresent(p, check, schema::kPreferredUnit);
  copyIfPresent(p, check, schema::kPreferredBinary);
}

// The alert level, and the warning level when `warnShown` (it is not hidden
// behind the alert level). NaN fails every test and leaves the property out.
void addLevels(Properties& p, int32_t alertNumber, double alert, int32_t warnNumber, double warn,
               bool warnShown) {
  if (alert >= 0.0) addReal(p, alertNumber, alert);
  if (warn >= 0.0 && warnShown) addReal(p, warnNumber, warn);
}

}  // namespace

std::vector<tql::property_ptr> graphProperties(const std::string& name, const GraphSettings& s,
                                               const tql::patch_t& check) {
  Properties p;
  p.emplace_back(orderProperty());
  p.emplace_back(tql::make_string_property(schema::kName, name));
  addPresentation(p, s, check);
  p.emplace_back(
      tql::make_property<tql::kind::kUint>(schema::kDataType, static_cast<uint32_t>(s.dataType)));
  addLevels(p, schema::kAlertIfAbove, s.alertAbove, schema::kWarnIfAbove, s.warnAbove,
            s.alertAbove < 0.0 || s.alertAbove > s.warnAbove);
  addLevels(p, schema::kAlertIfBelow, s.alertBelow, schema::kWarnIfBelow, s.warnBelow,
            s.alertBelow < 0.0 || s.warnBelow > s.alertBelow);
  if (s.plotMin >= 0.0) addReal(p, schema::kPlotMin, s.plotMin);
  if (s.plotMax >= 0.0) addReal(p, schema::kPlotMax, s.plotMax);
  p.emplace_back(tql::make_boolean_property(schema::kGraphShowMinMax, s.showMinMax));
  p.emplace_back(tql::make_boolean_property(schema::kGraphShowNoResponse, s.showNoResponse));
  p.emplace_back(tql::make_boolean_property(schema::kGraphTabularUptime, s.tabular));
  return p;
}

tql::id_t addGraph(dbms::Database& db, const tql::id_t& parent, const std::string& name,
                   const GraphSettings& s, const tql::patch_t& check) {
  return createResult(db, parent, schema::kReportResultGraph, graphProperties(name, s, check),
                      "ReportResultGraph");
}
