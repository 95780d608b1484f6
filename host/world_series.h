// Time-series records in world files, as JSON arrays:
//   continuous (data types 2, 5, 6): [start, end, min, avg, max, ngood, nbad]
//   enum (data type 3):              [mask, ngood, nbad, start, end]
//   incident (data type 4):          [sev, msg, itime]
// Times are seconds since the epoch; min, avg and max are single-precision
// reals (numbers, or "nan", "inf", "-inf").
#pragma once

#include <cstdint>
#include <functional>
#include <nlohmann/json.hpp>
#include <string>

#include "tsdb/interval.h"

namespace host {

// Builds the JSON path of a record only when a message needs it, so that
// loading a million good records builds no strings.
using PathFn = std::function<std::string()>;

// A record of class `record_class` (1 incident, 2 continuous, 3 enum).
// Raises EWorldError at path() (and the element's index) when the array has
// the wrong length or an element the wrong type or range.
tsdb::interval_ptr record_from_json(int32_t record_class, const nlohmann::json& value,
                                    const PathFn& path);
nlohmann::json record_to_json(const tsdb::data_interval_t& record);

}  // namespace host
