// Time-series records: tsdb::data_interval_t, one stored interval, and its
// three classes (incident, continuous, enum).
//
// Each class is interval_kind_t<N, Fields>: the class number N and a plain
// field struct that lists its fields once, in stream order; stream form,
// copy, equality and printing come from that list.
#pragma once

#include <cstdint>
#include <memory>
#include <ostream>
#include <string>

#include "protocol/clone_ptr.h"
#include "protocol/ioprim.h"

namespace tsdb {

// Kinds of series (`data_type`) and the record class each one holds.
inline constexpr int32_t kUptime = 2;        // continuous records
inline constexpr int32_t kEnum = 3;          // enum records
inline constexpr int32_t kIncidentLog = 4;   // incident records
inline constexpr int32_t kContinuous = 5;    // continuous records
inline constexpr int32_t kAccumulation = 6;  // continuous records

class data_interval_t {
 public:
  // The class number: 1 incident, 2 continuous, 3 enum.
  virtual int32_t type() const = 0;
  virtual ~data_interval_t() = default;
  // A deep copy, owned by the caller.
  virtual std::unique_ptr<data_interval_t> clone() const = 0;
  // One line of text; see the classes.
  virtual void text(std::string& out) const = 0;

  // The fields' fdio form, without the class number.
  virtual void write_fields(protocol::ioprim& io) const = 0;
  virtual void read_fields(protocol::ioprim& io) = 0;
  // Same class, equal fields.
  virtual bool equals(const data_interval_t& other) const = 0;
  // The fields, one line each at `indent`.
  virtual void print_fields(std::ostream& os, int indent) const = 0;

 protected:
  data_interval_t() = default;
  data_interval_t(const data_interval_t&) = default;
  data_interval_t& operator=(const data_interval_t&) = default;
};

using interval_ptr = protocol::clone_ptr<data_interval_t>;

struct incident_fields {
  uint32_t sev = 0;
  std::string msg;
  int64_t itime = 0;  // Seconds since the epoch.

  template <class Self, class V>
  static void visit(Self& s, V& v) {
    v("sev", s.sev);
    v("msg", s.msg);
    v("itime", s.itime);
  }
  bool operator==(const incident_fields&) const = default;
};

// min, avg and max are single precision in memory and on the stream.
struct continuous_fields {
  int64_t start = 0;
  int64_t end = 0;
  float min = 0;
  float avg = 0;
  float max = 0;
  uint32_t ngood = 0;
  uint32_t nbad = 0;

  template <class Self, class V>
  static void visit(Self& s, V& v) {
    v("start", s.start);
    v("end", s.end);
    v("min", s.min);
    v("avg", s.avg);
    v("max", s.max);
    v("ngood", s.ngood);
    v("nbad", s.nbad);
  }
  bool operator==(const continuous_fields&) const = default;
};

// `mask` has one bit for each state value seen. Note the stream order:
// mask and counts ahead of the times.
struct enum_fields {
  uint32_t mask = 0;
  uint32_t ngood = 0;
  uint32_t nbad = 0;
  int64_t start = 0;
  int64_t end = 0;

  template <class Self, class V>
  static void visit(Self& s, V& v) {
    v("mask", s.mask);
    v("ngood", s.ngood);
    v("nbad", s.nbad);
    v("start", s.start);
    v("end", s.end);
  }
  bool operator==(const enum_fields&) const = default;
};

template <int32_t N, class Fields>
class interval_kind_t final : public data_interval_t, public Fields {
 public:
  interval_kind_t() = default;
  explicit interval_kind_t(const Fields& f) : Fields(f) {}

  int32_t type() const override { return N; }
  std::unique_ptr<data_interval_t> clone() const override;
  void text(std::string& out) const override;
  void write_fields(protocol::ioprim& io) const override;
  void read_fields(protocol::ioprim& io) override;
  bool equals(const data_interval_t& other) const override;
  void print_fields(std::ostream& os, int indent) const override;
  const Fields& fields() const { return *this; }
};

// Incident: "(t: incident)(sev: S)(msg: "M")(itime: TIME)".
using data_interval_incident_t = interval_kind_t<1, incident_fields>;
// Continuous: "(t: continuous)(start: T)(end: "T)(min: F)(avg: F)(max: F)
// (ngood: N)(nbad: N)", on one line.
using data_interval_continuous_t = interval_kind_t<2, continuous_fields>;
// Enum: "(t: enum)(start: T)(end: "T)(mask: M)(ngood: N)(nbad: N)".
using data_interval_enum_t = interval_kind_t<3, enum_fields>;

template <>
void data_interval_incident_t::text(std::string& out) const;
template <>
void data_interval_continuous_t::text(std::string& out) const;
template <>
void data_interval_enum_t::text(std::string& out) const;
extern template class interval_kind_t<1, incident_fields>;
extern template class interval_kind_t<2, continuous_fields>;
extern template class interval_kind_t<3, enum_fields>;

// Times in the texts: time2str in the zone of TZ at start. A time before
// the epoch, which time2str can't show, prints as its decimal number.
std::string interval_time_text(int64_t t);

// fdio form in a container: 32-bit class number (0 for null), then the
// fields. A class number other than 1, 2, 3 reads as null, nothing more read.
protocol::ioprim& operator<<(protocol::ioprim& io, const interval_ptr& p);
protocol::ioprim& operator>>(protocol::ioprim& io, interval_ptr& p);

// "{", the class number as `type`, the fields, "}".
void print_value(std::ostream& os, const data_interval_t& d, int indent);

}  // namespace tsdb
