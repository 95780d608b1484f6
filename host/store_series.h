// SeriesStore: the stand-in's time-series store in memory. A series is keyed
// by its owner object's id and an index property (2600 `tsdbIndex`, 2601
// `tsdbIncident`, ...), has a data type (2 to 6) and holds its records in
// time order: by `start` for continuous and enum records, by `itime` for
// incidents; records with equal times keep the order they came in.
#pragma once

#include <cstdint>
#include <map>
#include <utility>
#include <vector>

#include "tql/id.h"
#include "tsdb/interval.h"

namespace host {

struct Series {
  int32_t data_type = 0;
  std::vector<tsdb::interval_ptr> records;  // In time order; never null.
};

// The time a record covers: [start, end], or [itime, itime] for an incident.
std::pair<int64_t, int64_t> record_span(const tsdb::data_interval_t& record);
// The time by which a record is ordered: `start`, or `itime`.
inline int64_t record_time(const tsdb::data_interval_t& record) {
  return record_span(record).first;
}
// The class number (1 incident, 2 continuous, 3 enum) that a data type's
// records have; 0 for an unknown data type.
int32_t record_class_of(int32_t data_type);
// Raises EBadRequest "Unknown data type N" unless the data type is 2 to 6.
void check_data_type(int32_t data_type);
// Raises EBadRequest unless `data_type` is known and `record` is a record of
// its class; `what` names the record in the message.
void check_record(int32_t data_type, const tsdb::interval_ptr& record, const std::string& what);

class SeriesStore {
 public:
  using Key = std::pair<tql::id_t, int32_t>;

  // The series, or null.
  const Series* find(const tql::id_t& owner, int32_t index_property) const;
  // Replaces the series with `records`, sorted by time. Raises EBadRequest
  // for an unknown data type or a record of another class (nothing changes).
  void put(const tql::id_t& owner, int32_t index_property, int32_t data_type,
           std::vector<tsdb::interval_ptr> records);
  // Adds one record in time order (after those with the same time), making
  // the series if needed. Raises EBadRequest as put(), and when the series
  // exists with another data type.
  void append(const tql::id_t& owner, int32_t index_property, int32_t data_type,
              tsdb::interval_ptr record);
  // Drops every series of `owner`.
  void remove_owner(const tql::id_t& owner);

  const std::map<Key, Series>& all() const { return series_; }
  // The number of records in all series.
  size_t record_count() const;

 private:
  std::map<Key, Series> series_;
};

}  // namespace host
