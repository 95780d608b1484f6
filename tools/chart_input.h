// The JSON description of one stored graph object that `tavrel-tool chart`
// draws; the format is written down in grapher/README.md.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tql/patch.h"
#include "tsdb/interval.h"

namespace tools {

struct ChartInput {
  int64_t start = 0;
  int64_t end = 0;
  int32_t dataType = 0;
  tql::patch_t graphObject;  // The graph properties, by number.
  std::vector<tsdb::interval_ptr> records;
};

// Parses the JSON text. Raises error::EParseError with what is wrong and
// where ("records[3]: ...") for text that isn't such a description: bad
// JSON, a missing or mistyped field, an unknown property name or value
// kind, a data type other than 2, 3, 5 and 6, or a record of the wrong
// length.
ChartInput parseChartInput(const std::string& text);

}  // namespace tools
