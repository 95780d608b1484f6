// addGraph: the ReportResultGraph of a check, which carries the chart's
// settings; its data is a series that the caller puts afterwards.
#pragma once

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "dbms/database.h"
#include "tql/id.h"
#include "tql/patch.h"
#include "tql/property.h"

struct GraphSettings {
  int32_t dataType = 0;
  std::string unit;  // The check's unit blob; empty for none.
  // Thresholds; NaN or negative: not shown.
  double alertAbove = std::numeric_limits<double>::quiet_NaN();
  double warnAbove = std::numeric_limits<double>::quiet_NaN();
  double alertBelow = std::numeric_limits<double>::quiet_NaN();
  double warnBelow = std::numeric_limits<double>::quiet_NaN();
  // Plot bounds; negative: not set.
  double plotMin = -1.0;
  double plotMax = -1.0;
  bool showMinMax = false;
  bool showNoResponse = false;
  bool tabular = false;
};

// The properties of the graph, in the order set: `order` (the next value
// of the counter), `name`, and the settings
// of `check` (stateColors and stateLabelN of an enum check with colours;
// else unit, preferredUnit, preferredBinary), `dataType`, the thresholds
// that make sense (a warning level only when it is not hidden behind the
// alert level), the plot bounds that are set, and the three flags.
std::vector<tql::property_ptr> graphProperties(const std::string& name,
                                               const GraphSettings& settings,
                                               const tql::patch_t& check);

// Creates the graph with graphProperties under `parent`. Raises errors::tql
// (after the error line) when the create fails.
tql::id_t addGraph(dbms::Database& db, const tql::id_t& parent, const std::string& name,
                   const GraphSettings& settings, const tql::patch_t& check);
