// Reading a series as TSDB_GET_DATA asks for it.
#pragma once

#include <cstdint>
#include <vector>

#include "host/store_series.h"

namespace host {

struct SeriesQuery {
  int64_t start = 0;
  int64_t end = 0;
  int32_t count = 0;   // The most records wanted; 0 for no bound.
  int32_t offset = 0;  // Records of the full result to skip first.
  bool raw = false;
};

// The records of `series` that overlap [start, end] (an incident: `itime`
// within it; an interval: start <= end of query and end >= start of query),
// in time order, from `offset` on. When more than `count` remain: with
// `raw` true (and always for incidents, which don't merge) the first `count`;
// with `raw` false, runs of adjacent records merged into exactly `count`
// records (merge_records). Raises EBadRequest for a negative count or
// offset.
std::vector<tsdb::interval_ptr> read_series(const Series& series, const SeriesQuery& query);

// One record for a run of adjacent continuous or enum records: the first
// start, the latest end, the least min, the greatest max, the average
// weighted by `ngood` (the plain mean when no record has a good sample), the
// sums of `ngood` and `nbad` (saturating), the OR of the masks. `run` is not
// empty and holds records of one class, 2 or 3.
tsdb::interval_ptr merge_records(const std::vector<const tsdb::data_interval_t*>& run);

}  // namespace host
