#include "host/store_series.h"

#include <algorithm>

#include "host/store_errors.h"

namespace host {

std::pair<int64_t, int64_t> record_span(const tsdb::data_interval_t& record) {
  switch (record.type()) {
    case 1: {
      const int64_t t = static_cast<const tsdb::data_interval_incident_t&>(record).itime;
      return {t, t};
    }
    case 2: {
      const auto& c = static_cast<const tsdb::data_interval_continuous_t&>(record);
      return {c.start, c.end};
    }
    default: {
      const auto& e = static_cast<const tsdb::data_interval_enum_t&>(record);
      return {e.start, e.end};
    }
  }
}

int32_t record_class_of(int32_t data_type) {
  switch (data_type) {
    case tsdb::kUptime:
    case tsdb::kContinuous:
    case tsdb::kAccumulation:
      return 2;
    case tsdb::kEnum:
      return 3;
    case tsdb::kIncidentLog:
      return 1;
    default:
      return 0;
  }
}

void check_data_type(int32_t data_type) {
  if (record_class_of(data_type) == 0) {
    throw EBadRequest("Unknown data type " + std::to_string(data_type));
  }
}

void check_record(int32_t data_type, const tsdb::interval_ptr& record, const std::string& what) {
  check_data_type(data_type);
  const int32_t wanted = record_class_of(data_type);
  if (!record) throw EBadRequest(what + " is null");
  if (record->type() != wanted) {
    throw EBadRequest(what + " is of record class " + std::to_string(record->type()) +
                      ", data type " + std::to_string(data_type) + " needs class " +
                      std::to_string(wanted));
  }
}

const Series* SeriesStore::find(const tql::id_t& owner, int32_t index_property) const {
  auto it = series_.find({owner, index_property});
  return it == series_.end() ? nullptr : &it->second;
}

void SeriesStore::put(const tql::id_t& owner, int32_t index_property, int32_t data_type,
                      std::vector<tsdb::interval_ptr> records) {
  check_data_type(data_type);
  for (size_t i = 0; i < records.size(); ++i) {
    check_record(data_type, records[i], "Record " + std::to_string(i));
  }
  std::stable_sort(records.begin(), records.end(),
                   [](const tsdb::interval_ptr& a, const tsdb::interval_ptr& b) {
                     return record_time(*a) < record_time(*b);
                   });
  Series& s = series_[{owner, index_property}];
  s.data_type = data_type;
  s.records = std::move(records);
}

void SeriesStore::append(const tql::id_t& owner, int32_t index_property, int32_t data_type,
                         tsdb::interval_ptr record) {
  check_record(data_type, record, "The record");
  auto it = series_.find({owner, index_property});
  if (it != series_.end() && it->second.data_type != data_type) {
    throw EBadRequest("The series has data type " + std::to_string(it->second.data_type) +
                      ", not " + std::to_string(data_type));
  }
  Series& s = series_[{owner, index_property}];
  s.data_type = data_type;
  const int64_t t = record_time(*record);
  auto pos =
      std::upper_bound(s.records.begin(), s.records.end(), t,
                       [](int64_t v, const tsdb::interval_ptr& r) { return v < record_time(*r); });
  s.records.insert(pos, std::move(record));
}

void SeriesStore::remove_owner(const tql::id_t& owner) {
  auto it = series_.lower_bound({owner, INT32_MIN});
  while (it != series_.end() && it->first.first == owner) it = series_.erase(it);
}

size_t SeriesStore::record_count() const {
  size_t n = 0;
  for (const auto& [key, s] : series_) n += s.records.size();
  return n;
}

}  // namespace host
