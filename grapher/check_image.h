// Charts of stored report data: a Graph filled from the options and records
// of a stored graph object, and the PNG bytes of a drawn chart, with the
// small error picture when it can't be drawn.
//
// The caller fetches the object and its series (index property tsdbIndex,
// at most 200 records) and owns them; nothing here talks to the database.
// The graph object's properties that a chart reads (plotMin, warnIfAbove,
// unit, stateLabel0, graphShowMinMax, ...) are named in tql/schema.h.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/zone.h"
#include "grapher/graph.h"
#include "tql/patch.h"
#include "tsdb/interval.h"

namespace grapher {

// The Graph kind of a graph object: kTabular when graphTabularUptime is set
// and not 0, else kPlot.
int32_t chartKind(const tql::patch_t& graphObject);

// Fills `graph` from the graph object's options and its records of
// `dataType` (2 uptime, 3 enum, 5 continuous, 6 accumulation): one line with
// an empty name. Raises error::EFatal "Tried to cast to uptime. Error."
// (types 2 and 6), "Tried to cast to enum. Error." or "Tried to cast to
// continous. Error." for a record of the wrong class, and
// error::EParseError for a damaged unit blob. Any other data type is the
// fatal assertion "Got unknown dataset type N in generate_check_image".
void generate_check_image(Graph& graph, const tql::patch_t& graphObject, int32_t dataType,
                          const std::vector<tsdb::interval_ptr>& records);

// Converts every value of `series` (samples, thresholds, plot range,
// extremes and sum) from its unit to `display`, which becomes its unit.
void convertSeries(ContinuousSeries& series, const Unit& display);

// The PNG of `graph` drawn in `zone`; when the drawing raises an
// error::Exception, the error picture of its text instead. Never raises
// error::Exception for a chart that can't be drawn; raises error::EFatal
// only if gd can't encode at all.
std::vector<uint8_t> chartPng(const Graph& graph, zone_t zone);

// A picture of one row of text in font 0, colour 5, as wide as the text.
std::vector<uint8_t> errorPicture(const std::string& text);

}  // namespace grapher
