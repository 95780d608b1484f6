// Payload records of the time-series events (namespace dbms).
#pragma once

#include <cstdint>
#include <vector>

#include "dbms/tql_records.h"
#include "tql/id.h"
#include "tsdb/interval.h"

namespace dbms {

// Event 95 TSDB_GET_DATA.
struct TSDB_Get_Data_Data {
  tql::id_t id;                // The object that owns the series.
  int32_t index_property = 0;  // The series' property number on it.
  int32_t flags = 0;
  bool raw = false;  // Raw samples instead of aggregated ones.
  int64_t start = 0;
  int64_t end = 0;
  int32_t count = 0;   // The most records wanted.
  int32_t offset = 0;  // Position of the first record wanted.

  template <class Self, class V>
  static void visit(Self& s, V& v) {
    v("id", s.id);
    v("index_property", s.index_property);
    v("flags", s.flags);
    v("raw", s.raw);
    v("start", s.start);
    v("end", s.end);
    v("count", s.count);
    v("offset", s.offset);
  }
  bool operator==(const TSDB_Get_Data_Data&) const = default;
};

// Event 96 RETURN_TSDB_GET_DATA.
struct Return_TSDB_Get_Data_Data {
  int32_t data_type = 0;
  std::vector<tsdb::interval_ptr> data;
  int32_t status = 0;
  tql::details_t details;

  template <class Self, class V>
  static void visit(Self& s, V& v) {
    v("data_type", s.data_type);
    v("data", s.data);
    v("status", s.status);
    v("details", s.details);
  }
  bool operator==(const Return_TSDB_Get_Data_Data&) const = default;
};

// Event 97 TSDB_PUT_DATA.
struct TSDB_Put_Data_Data {
  tql::id_t id;
  int32_t index_property = 0;
  int32_t data_type = 0;
  std::vector<tsdb::interval_ptr> data;

  template <class Self, class V>
  static void visit(Self& s, V& v) {
    v("id", s.id);
    v("index_property", s.index_property);
    v("data_type", s.data_type);
    v("data", s.data);
  }
  bool operator==(const TSDB_Put_Data_Data&) const = default;
};

// Event 103 TSDB_APPEND_DATA_RECORD.
struct TSDB_Append_Data_Record_Data {
  tql::id_t id;
  int32_t index_property = 0;
  int32_t data_type = 0;
  tsdb::interval_ptr data;
  int32_t new_state = 0;

  template <class Self, class V>
  static void visit(Self& s, V& v) {
    v("id", s.id);
    v("index_property", s.index_property);
    v("data_type", s.data_type);
    v("data", s.data);
    v("new_state", s.new_state);
  }
  bool operator==(const TSDB_Append_Data_Record_Data&) const = default;
};

// The replies 98, 100, 104, 106 and 108: status and details.
using Return_TSDB_Put_Data_Data = Status_Reply_Data;
using Return_TSDB_Merge_Data_Data = Status_Reply_Data;
using Return_TSDB_Append_Data_Record_Data = Status_Reply_Data;
using Return_TSDB_Append_Data_Data = Status_Reply_Data;
using Return_TSDB_Truncate_Old_Data_Data = Status_Reply_Data;

}  // namespace dbms
