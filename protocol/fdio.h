// The fdio form of plain values, containers and records, written and read
// through a protocol::ioprim. The byte layout is in protocol/README.md.
//
// Readers raise io::EEndOfStream when the stream ends inside a value and
// error::EParseError for a value that can't be one (see the functions). A
// count read from the stream is never trusted for an allocation: strings are
// read in bounded pieces and containers reserve at most kReserveAhead
// elements ahead, so memory grows only with bytes that really arrived.
#pragma once

#include <cstdint>
#include <list>
#include <map>
#include <set>
#include <string>
#include <type_traits>
#include <vector>

#include "base/time_value.h"
#include "protocol/clone_ptr.h"
#include "protocol/ioprim.h"
#include "protocol/record.h"

namespace protocol {

inline constexpr uint32_t kReserveAhead = 1024;
inline constexpr uint64_t kStringPiece = 64 * 1024;

// Fixed-size numbers: their bytes in the machine's (little-endian) order.
template <class T>
concept Primitive = (std::is_arithmetic_v<T> && !std::is_same_v<T, bool> &&
                     (sizeof(T) == 4 || sizeof(T) == 8)) ||
                    (std::is_enum_v<T> && sizeof(T) == 4);

template <Primitive T>
ioprim& operator<<(ioprim& io, T v) {
  io.write_primitive(&v, sizeof v);
  return io;
}
template <Primitive T>
ioprim& operator>>(ioprim& io, T& v) {
  io.read_bytes(&v, sizeof v);
  return io;
}

// A boolean is a 32-bit word; any word but 0 reads as true.
ioprim& operator<<(ioprim& io, bool v);
ioprim& operator>>(ioprim& io, bool& v);

// A point in time or a span: 32-bit seconds, then 32-bit microseconds.
ioprim& operator<<(ioprim& io, const TimeValue& t);
ioprim& operator>>(ioprim& io, TimeValue& t);

// A 64-bit byte count, then the bytes; split over write areas as needed.
ioprim& operator<<(ioprim& io, const std::string& s);
ioprim& operator>>(ioprim& io, std::string& s);

// Containers: a 32-bit count, then the elements (maps: key, value).
template <class T>
ioprim& operator<<(ioprim& io, const std::vector<T>& c);
template <class T>
ioprim& operator<<(ioprim& io, const std::list<T>& c);
template <class T, class C>
ioprim& operator<<(ioprim& io, const std::set<T, C>& c);
template <class K, class V>
ioprim& operator<<(ioprim& io, const std::map<K, V>& c);
template <class T>
ioprim& operator>>(ioprim& io, std::vector<T>& c);
template <class T>
ioprim& operator>>(ioprim& io, std::list<T>& c);
template <class T, class C>
ioprim& operator>>(ioprim& io, std::set<T, C>& c);
template <class K, class V>
ioprim& operator>>(ioprim& io, std::map<K, V>& c);

// Records: their fields in the order of their field list. Reading raises
// error::EParseError for records nested deeper than ioprim::kMaxNesting.
template <Record R>
ioprim& operator<<(ioprim& io, const R& r);
template <Record R>
ioprim& operator>>(ioprim& io, R& r);

namespace detail {

template <class C>
void write_sequence(ioprim& io, const C& c) {
  io << static_cast<uint32_t>(c.size());
  for (const auto& e : c) io << e;
}

// Reads `count` elements one by one, appending each as it completes.
template <class C>
void read_sequence(ioprim& io, C& c) {
  uint32_t count = 0;
  io >> count;
  c.clear();
  if constexpr (requires { c.reserve(count); }) {
    c.reserve(count < kReserveAhead ? count : kReserveAhead);
  }
  for (uint32_t i = 0; i < count; ++i) {
    typename C::value_type e{};
    io >> e;
    if constexpr (requires { c.push_back(std::move(e)); }) {
      c.push_back(std::move(e));
    } else {
      c.insert(std::move(e));
    }
  }
}

struct FieldWriter {
  ioprim& io;
  template <class F>
  void operator()(const char*, const F& f) {
    io << f;
  }
};

struct FieldReader {
  ioprim& io;
  template <class F>
  void operator()(const char*, F& f) {
    io >> f;
  }
};

}  // namespace detail

template <class T>
ioprim& operator<<(ioprim& io, const std::vector<T>& c) {
  detail::write_sequence(io, c);
  return io;
}
template <class T>
ioprim& operator<<(ioprim& io, const std::list<T>& c) {
  detail::write_sequence(io, c);
  return io;
}
template <class T, class C>
ioprim& operator<<(ioprim& io, const std::set<T, C>& c) {
  detail::write_sequence(io, c);
  return io;
}
template <class K, class V>
ioprim& operator<<(ioprim& io, const std::map<K, V>& c) {
  io << static_cast<uint32_t>(c.size());
  for (const auto& [k, v] : c) io << k << v;
  return io;
}

template <class T>
ioprim& operator>>(ioprim& io, std::vector<T>& c) {
  detail::read_sequence(io, c);
  return io;
}
template <class T>
ioprim& operator>>(ioprim& io, std::list<T>& c) {
  detail::read_sequence(io, c);
  return io;
}
template <class T, class C>
ioprim& operator>>(ioprim& io, std::set<T, C>& c) {
  detail::read_sequence(io, c);
  return io;
}
// A key that comes twice keeps its first value.
template <class K, class V>
ioprim& operator>>(ioprim& io, std::map<K, V>& c) {
  uint32_t count = 0;
  io >> count;
  c.clear();
  for (uint32_t i = 0; i < count; ++i) {
    K k{};
    V v{};
    io >> k >> v;
    c.emplace(std::move(k), std::move(v));
  }
  return io;
}

template <Record R>
ioprim& operator<<(ioprim& io, const R& r) {
  detail::FieldWriter w{io};
  R::visit(r, w);
  return io;
}
template <Record R>
ioprim& operator>>(ioprim& io, R& r) {
  ioprim::Nesting level(io);
  detail::FieldReader rd{io};
  R::visit(r, rd);
  return io;
}

}  // namespace protocol
