// The printed form of values and records, for debug logging only.
//
// A record prints one field a line, "name: value", each line at the indent
// given; a value that takes several lines (a container, a nested record)
// opens with "list {", "vector {", "set {", "map {" or "{" on the field's
// line, prints its elements two blanks deeper and closes with "}" at the
// field's indent. Map elements print as "key: value".
//
// print_value(os, v, indent) writes v starting at the current position;
// `indent` is the indent of the line it stands on. Types of other folders
// add their own print_value overloads in their namespace.
#pragma once

#include <cstdint>
#include <list>
#include <map>
#include <ostream>
#include <set>
#include <string>
#include <type_traits>
#include <vector>

#include "base/time_value.h"
#include "protocol/clone_ptr.h"
#include "protocol/record.h"

namespace protocol {

void print_indent(std::ostream& os, int indent);

template <class T>
requires std::is_arithmetic_v<T> || std::is_enum_v<T>
void print_value(std::ostream& os, T v, int indent);
void print_value(std::ostream& os, const std::string& s, int indent);
// A span or time as its decimal text, "S.UUUUUU".
void print_value(std::ostream& os, const TimeValue& t, int indent);
template <class T>
void print_value(std::ostream& os, const std::vector<T>& c, int indent);
template <class T>
void print_value(std::ostream& os, const std::list<T>& c, int indent);
template <class T, class C>
void print_value(std::ostream& os, const std::set<T, C>& c, int indent);
template <class K, class V>
void print_value(std::ostream& os, const std::map<K, V>& c, int indent);
template <class T>
void print_value(std::ostream& os, const clone_ptr<T>& p, int indent);
template <Record R>
void print_value(std::ostream& os, const R& r, int indent);

// The fields of `r`, one line each at `indent`.
template <Record R>
void print(std::ostream& os, const R& r, int indent);

namespace detail {

template <class C>
void print_sequence(std::ostream& os, const char* kind, const C& c, int indent) {
  os << kind << " {\n";
  for (const auto& e : c) {
    print_indent(os, indent + 2);
    print_value(os, e, indent + 2);
    os << "\n";
  }
  print_indent(os, indent);
  os << "}";
}

struct FieldPrinter {
  std::ostream& os;
  int indent;
  template <class F>
  void operator()(const char* name, const F& f) {
    print_indent(os, indent);
    os << name << ": ";
    print_value(os, f, indent);
    os << "\n";
  }
};

}  // namespace detail

template <class T>
requires std::is_arithmetic_v<T> || std::is_enum_v<T>
void print_value(std::ostream& os, T v, int) {
  if constexpr (std::is_same_v<T, bool>) {
    os << (v ? "true" : "false");
  } else if constexpr (std::is_enum_v<T>) {
    os << static_cast<int64_t>(v);
  } else {
    os << +v;
  }
}
template <class T>
void print_value(std::ostream& os, const std::vector<T>& c, int indent) {
  detail::print_sequence(os, "vector", c, indent);
}
template <class T>
void print_value(std::ostream& os, const std::list<T>& c, int indent) {
  detail::print_sequence(os, "list", c, indent);
}
template <class T, class C>
void print_value(std::ostream& os, const std::set<T, C>& c, int indent) {
  detail::print_sequence(os, "set", c, indent);
}
template <class K, class V>
void print_value(std::ostream& os, const std::map<K, V>& c, int indent) {
  os << "map {\n";
  for (const auto& [k, v] : c) {
    print_indent(os, indent + 2);
    print_value(os, k, indent + 2);
    os << ": ";
    print_value(os, v, indent + 2);
    os << "\n";
  }
  print_indent(os, indent);
  os << "}";
}
template <class T>
void print_value(std::ostream& os, const clone_ptr<T>& p, int indent) {
  if (!p) {
    os << "(null)";
  } else {
    print_value(os, *p, indent);
  }
}
template <Record R>
void print_value(std::ostream& os, const R& r, int indent) {
  os << "{\n";
  print(os, r, indent + 2);
  print_indent(os, indent);
  os << "}";
}
template <Record R>
void print(std::ostream& os, const R& r, int indent) {
  detail::FieldPrinter p{os, indent};
  R::visit(r, p);
}

}  // namespace protocol
