// Payload records of the metering events (namespace control): the requests
// for a metric and its type, a timing's values, and the description of a
// metric and of a group with everything below it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace control {

// Event 15 GET_METRIC: the path of names from the root group down.
struct Get_Metric_Data {
  std::vector<std::string> id;

  template <class Self, class V>
  static void visit(Self& s, V& v) {
    v("id", s.id);
  }
  bool operator==(const Get_Metric_Data&) const = default;
};

// Event 22 GET_METRIC_TYPE: the path, as for GET_METRIC.
struct Get_Metric_Type_Data {
  std::vector<std::string> id;

  template <class Self, class V>
  static void visit(Self& s, V& v) {
    v("id", s.id);
  }
  bool operator==(const Get_Metric_Type_Data&) const = default;
};

// Event 19 RETURN_METRIC_TIMING.
struct Return_Metric_Timing_Data {
  uint64_t n = 0;
  uint64_t min = 0;
  uint64_t max = 0;
  uint64_t sum = 0;
  uint64_t sum_squares = 0;

  template <class Self, class V>
  static void visit(Self& s, V& v) {
    v("n", s.n);
    v("min", s.min);
    v("max", s.max);
    v("sum", s.sum);
    v("sum_squares", s.sum_squares);
  }
  bool operator==(const Return_Metric_Timing_Data&) const = default;
};

// Event 23 RETURN_GET_METRIC_TYPE, and one metric of a listed group.
struct Metric {
  std::string name;
  std::string unit;
  std::string desc;
  int32_t type = 0;

  template <class Self, class V>
  static void visit(Self& s, V& v) {
    v("name", s.name);
    v("unit", s.unit);
    v("desc", s.desc);
    v("type", s.type);
  }
  bool operator==(const Metric&) const = default;
};

// Event 21 RETURN_LIST_METRICS: a group and everything below it.
struct Metric_Group {
  std::string name;
  std::vector<Metric_Group> groups;
  std::vector<std::string> tables;
  std::vector<Metric> metrics;

  template <class Self, class V>
  static void visit(Self& s, V& v) {
    v("name", s.name);
    v("groups", s.groups);
    v("tables", s.tables);
    v("metrics", s.metrics);
  }
  bool operator==(const Metric_Group&) const = default;
};

}  // namespace control
