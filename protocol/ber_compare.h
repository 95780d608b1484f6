// Three-way comparison of the native field types of the catalogue, used by
// the generated classes to compare field by field: the first field that
// differs decides. Lists and sets compare element by element, and a list
// that is a prefix of the other comes first; a missing pointer comes first.
#pragma once

#include <cstddef>
#include <list>
#include <optional>
#include <set>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>

#include "base/bignum.h"
#include "protocol/ber_primitives.h"
#include "protocol/ber_target.h"

namespace protocol {

inline int compare_field(const std::string& a, const std::string& b) {
  return compare_values(a, b);
}
inline int compare_field(double a, double b) { return compare_reals(a, b); }
inline int compare_field(const BigNum& a, const BigNum& b) { return compare_values(a, b); }
template <class T>
requires std::is_integral_v<T>
int compare_field(T a, T b) { return compare_values(a, b); }

template <class T>
int compare_field(const Owned<T>& a, const Owned<T>& b) {
  if (!a || !b) return compare_values(static_cast<bool>(a), static_cast<bool>(b));
  return a->compare(*b);
}

template <class T>
int compare_field(const std::optional<T>& a, const std::optional<T>& b) {
  if (!a || !b) return compare_values(a.has_value(), b.has_value());
  return compare_field(*a, *b);
}

template <class Range>
int compare_range(const Range& a, const Range& b) {
  auto i = a.begin(), j = b.begin();
  for (; i != a.end() && j != b.end(); ++i, ++j) {
    if (int c = compare_field(*i, *j)) return c;
  }
  return compare_values(i != a.end(), j != b.end());
}

template <class T>
int compare_field(const std::list<T>& a, const std::list<T>& b) {
  return compare_range(a, b);
}

template <class T>
int compare_field(const std::set<T>& a, const std::set<T>& b) {
  return compare_range(a, b);
}

// Compares two tuples of references (std::tie) field by field.
template <class Tuple, size_t... I>
int compare_tuples(const Tuple& a, const Tuple& b, std::index_sequence<I...>) {
  int c = 0;
  ((c = (c != 0 ? c : compare_field(std::get<I>(a), std::get<I>(b)))), ...);
  return c;
}

template <class... T>
int compare_fields(const std::tuple<T...>& a, const std::tuple<T...>& b) {
  return compare_tuples(a, b, std::index_sequence_for<T...>{});
}

}  // namespace protocol
