// Object ids, versions and origins of the object database.
#pragma once

#include <compare>
#include <cstdint>
#include <initializer_list>
#include <ostream>
#include <string>

#include "protocol/ioprim.h"

namespace tql {

// Names an object: 0 to 3 unsigned 32-bit components, held inline (no heap).
// Ids order lexicographically by component; a prefix comes first.
class id_t {
 public:
  static constexpr uint32_t kMaxComponents = 3;

  id_t() = default;
  // Raises error::ERange for more than 3 components.
  id_t(std::initializer_list<uint32_t> components);

  uint32_t size() const { return count_; }
  bool empty() const { return count_ == 0; }
  // Raise error::ERange "small vector reference overflow I >= 3" at or past
  // the count.
  uint32_t operator[](uint32_t i) const;
  uint32_t& operator[](uint32_t i);
  // Raises error::ERange when the id has 3 components already.
  void push_back(uint32_t component);
  void clear() { count_ = 0; }

  // The components joined with ".", as "0.1"; empty for no components.
  std::string text() const;

  friend bool operator==(const id_t& a, const id_t& b);
  friend std::strong_ordering operator<=>(const id_t& a, const id_t& b);

 private:
  void check_index(uint32_t i) const;

  uint32_t components_[kMaxComponents] = {0, 0, 0};
  uint32_t count_ = 0;
};

// Ids that the system itself defines: the root object (class 13), 0.2, 0.3.
inline const id_t kRootId{0, 1};
inline const id_t kId02{0, 2};
inline const id_t kId03{0, 3};

// The version of a stored object. Order compares the signed (wrapping)
// difference of `first`, then of `second`.
struct version_t {
  int64_t first = 0;
  int64_t second = 0;

  // "first.1.second", as "7.1.3".
  std::string text() const;
  bool operator==(const version_t&) const = default;
  friend std::strong_ordering operator<=>(const version_t& a, const version_t& b);
};

// Where a reference comes from.
struct origin_t {
  id_t domain_id;
  id_t user_id;
  int32_t type = 0;

  template <class Self, class V>
  static void visit(Self& s, V& v) {
    v("domain_id", s.domain_id);
    v("user_id", s.user_id);
    v("type", s.type);
  }
  bool operator==(const origin_t&) const = default;
};

// fdio form of an id: 32-bit count, then each component. Reading more than 3
// components raises error::EParseError.
protocol::ioprim& operator<<(protocol::ioprim& io, const id_t& id);
protocol::ioprim& operator>>(protocol::ioprim& io, id_t& id);
// fdio form of a version: the two as 64 bits.
protocol::ioprim& operator<<(protocol::ioprim& io, const version_t& v);
protocol::ioprim& operator>>(protocol::ioprim& io, version_t& v);

// "small_vector<3> {", one component a line, "}".
void print_value(std::ostream& os, const id_t& id, int indent);
// The version's text.
void print_value(std::ostream& os, const version_t& v, int indent);

}  // namespace tql
