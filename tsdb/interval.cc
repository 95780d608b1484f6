#include "tsdb/interval.h"

#include <cstdio>

#include "base/time_text.h"
#include "protocol/fdio.h"
#include "protocol/print.h"

namespace tsdb {

namespace {

std::string float_text(double v) {
  char buf[400];
  std::snprintf(buf, sizeof buf, "%f", v);
  return buf;
}

}  // namespace

std::string interval_time_text(int64_t t) {
  if (t < 0) return std::to_string(t);
  return time2str(t, timeZoneValue(kEnvironmentZone));
}

template <int32_t N, class Fields>
std::unique_ptr<data_interval_t> interval_kind_t<N, Fields>::clone() const {
  return std::make_unique<interval_kind_t>(*this);
}

template <int32_t N, class Fields>
void interval_kind_t<N, Fields>::write_fields(protocol::ioprim& io) const {
  io << fields();
}

template <int32_t N, class Fields>
void interval_kind_t<N, Fields>::read_fields(protocol::ioprim& io) {
  io >> static_cast<Fields&>(*this);
}

template <int32_t N, class Fields>
bool interval_kind_t<N, Fields>::equals(const data_interval_t& other) const {
  const auto* o = dynamic_cast<const interval_kind_t*>(&other);
  return o != nullptr && fields() == o->fields();
}

template <int32_t N, class Fields>
void interval_kind_t<N, Fields>::print_fields(std::ostream& os, int indent) const {
  protocol::print(os, fields(), indent);
}

template <>
void data_interval_incident_t::text(std::string& out) const {
  out = "(t: incident)(sev: " + std::to_string(sev) + ")(msg: \"" + msg +
        "\")(itime: " + interval_time_text(itime) + ")";
}

template <>
void data_interval_continuous_t::text(std::string& out) const {
  out = "(t: continuous)(start: " + interval_time_text(start) + ")(end: \"" +
        interval_time_text(end) + ")(min: " + float_text(min) + ")(avg: " + float_text(avg) +
        ")(max: " + float_text(max) + ")(ngood: " + std::to_string(ngood) +
        ")(nbad: " + std::to_string(nbad) + ")";
}

template <>
void data_interval_enum_t::text(std::string& out) const {
  out = "(t: enum)(start: " + interval_time_text(start) + ")(end: \"" + interval_time_text(end) +
        ")(mask: " + std::to_string(mask) + ")(ngood: " + std::to_string(ngood) +
        ")(nbad: " + std::to_string(nbad) + ")";
}

template class interval_kind_t<1, incident_fields>;
template class interval_kind_t<2, continuous_fields>;
template class interval_kind_t<3, enum_fields>;

protocol::ioprim& operator<<(protocol::ioprim& io, const interval_ptr& p) {
  if (!p) return io << int32_t{0};
  io << p->type();
  p->write_fields(io);
  return io;
}

protocol::ioprim& operator>>(protocol::ioprim& io, interval_ptr& p) {
  int32_t kind = 0;
  io >> kind;
  std::unique_ptr<data_interval_t> made;
  switch (kind) {
    case 1:
      made = std::make_unique<data_interval_incident_t>();
      break;
    case 2:
      made = std::make_unique<data_interval_continuous_t>();
      break;
    case 3:
      made = std::make_unique<data_interval_enum_t>();
      break;
    default:
      break;
  }
  if (made) made->read_fields(io);
  p.reset(std::move(made));
  return io;
}

void print_value(std::ostream& os, const data_interval_t& d, int indent) {
  os << "{\n";
  protocol::print_indent(os, indent + 2);
  os << "type: " << d.type() << "\n";
  d.print_fields(os, indent + 2);
  protocol::print_indent(os, indent);
  os << "}";
}

}  // namespace tsdb
