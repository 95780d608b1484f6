// What tells the property kinds apart, once per kind: kind_traits<K> gives
// the value type, the class name (for decoder messages), the kind's word in
// compare's "Type mismatch, WORD != type of " message, the value's text and
// the rank of two non-null values (2, -2 or 0; strings also 1 or -1).
#pragma once

#include <cstdint>
#include <list>
#include <map>
#include <string>
#include <vector>

#include "base/bignum.h"
#include "protocol/ioprim.h"
#include "tql/id.h"

namespace tql {

// The kinds of property values, by the numbers that travel with them.
namespace kind {
inline constexpr int32_t kString = 7;
inline constexpr int32_t kStringList = 8;
inline constexpr int32_t kObjectSet = 9;
inline constexpr int32_t kObject = 10;
inline constexpr int32_t kVersion = 11;
inline constexpr int32_t kAction = 12;
inline constexpr int32_t kReal = 13;
inline constexpr int32_t kBignum = 14;
inline constexpr int32_t kGid = 15;
inline constexpr int32_t kGidList = 16;
inline constexpr int32_t kDate = 17;
inline constexpr int32_t kIndex = 18;
inline constexpr int32_t kInt = 19;
inline constexpr int32_t kUint = 20;
inline constexpr int32_t kBoolean = 21;
inline constexpr int32_t kBlob = 22;
inline constexpr int32_t kLob = 23;
inline constexpr int32_t kOid = 24;
inline constexpr int32_t kEnum = 25;
}  // namespace kind

// The value of a property_object_t: an id and where the reference comes from.
struct object_ref_t {
  id_t id;
  origin_t origin;

  template <class Self, class V>
  static void visit(Self& s, V& v) {
    v("id", s.id);
    v("origin", s.origin);
  }
  bool operator==(const object_ref_t&) const = default;
};

// The value of a property_object_set_t: ids with their origins, by id.
using object_set_t = std::map<id_t, origin_t>;

// The value of a property_enum_t.
struct enum_value_t {
  uint32_t enum_type = 0;
  uint32_t value = 0;

  template <class Self, class V>
  static void visit(Self& s, V& v) {
    v("enum_type", s.enum_type);
    v("value", s.value);
  }
  bool operator==(const enum_value_t&) const = default;
};

template <int32_t K>
struct kind_traits;

namespace kinds {

// Rank by the value's own order.
struct by_value {
  template <class T>
  static int rank(const T& a, const T& b) {
    return a < b ? -2 : (b < a ? 2 : 0);
  }
};

// Decimal text of a number.
struct decimal {
  template <class T>
  static void text(const T& v, std::string& out) {
    out = std::to_string(v);
  }
};

// Rank of two vectors: the longer is greater, else element by element.
struct by_length_then_value {
  static int rank(const std::vector<uint32_t>& a, const std::vector<uint32_t>& b);
};

// Each GID as for kind 15, joined by ", ".
struct gid_list_text {
  static void text(const std::vector<uint32_t>& v, std::string& out);
};

}  // namespace kinds

template <>
struct kind_traits<kind::kString> {
  using value_type = std::string;
  static constexpr const char* class_name = "property_string_t";
  static constexpr const char* word = "string";
  static void text(const value_type& v, std::string& out);
  static int rank(const value_type& a, const value_type& b);
};
template <>
struct kind_traits<kind::kStringList> : kinds::by_value {
  using value_type = std::list<std::string>;
  static constexpr const char* class_name = "property_string_list_t";
  static constexpr const char* word = "string_list";
  static void text(const value_type& v, std::string& out);
};
template <>
struct kind_traits<kind::kObjectSet> {
  using value_type = object_set_t;
  static constexpr const char* class_name = "property_object_set_t";
  static constexpr const char* word = "object_set";
  static void text(const value_type& v, std::string& out);
  static int rank(const value_type& a, const value_type& b);
};
template <>
struct kind_traits<kind::kObject> {
  using value_type = object_ref_t;
  static constexpr const char* class_name = "property_object_t";
  static constexpr const char* word = "object";
  static void text(const value_type& v, std::string& out);
  static int rank(const value_type& a, const value_type& b) {
    return kinds::by_value::rank(a.id, b.id);
  }
};
template <>
struct kind_traits<kind::kVersion> : kinds::by_value {
  using value_type = version_t;
  static constexpr const char* class_name = "property_version_t";
  static constexpr const char* word = "version";
  static void text(const value_type& v, std::string& out);
};
template <>
struct kind_traits<kind::kAction> : kinds::by_value {
  using value_type = int32_t;
  static constexpr const char* class_name = "property_action_t";
  static constexpr const char* word = "action";
  static void text(const value_type&, std::string& out) { out = "(null)"; }
};
template <>
struct kind_traits<kind::kReal> {
  using value_type = double;
  static constexpr const char* class_name = "property_real_t";
  static constexpr const char* word = "real";
  static void text(const value_type& v, std::string& out);
  // NaN ranks above every number and equal to NaN, so that the order stays
  // total and NaN never equals a number.
  static int rank(const value_type& a, const value_type& b);
};
template <>
struct kind_traits<kind::kBignum> : kinds::by_value {
  using value_type = BigNum;
  static constexpr const char* class_name = "property_bignum_t";
  static constexpr const char* word = "bignum";
  static void text(const value_type& v, std::string& out) { out = v.text(); }
  // A string of the number's bytes, least significant first, padded with
  // zero bytes to at least 4.
  static void write(protocol::ioprim& io, const value_type& v);
  static void read(protocol::ioprim& io, value_type& v);
};
template <>
struct kind_traits<kind::kGid> : kinds::by_value {
  using value_type = uint32_t;
  static constexpr const char* class_name = "property_gid_t";
  static constexpr const char* word = "GID";
  // Four two-digit hexadecimal bytes, most significant first, joined by ":".
  static void text(const value_type& v, std::string& out);
};
template <>
struct kind_traits<kind::kGidList> : kinds::by_length_then_value, kinds::gid_list_text {
  using value_type = std::vector<uint32_t>;
  static constexpr const char* class_name = "property_gid_list_t";
  static constexpr const char* word = "GIDList";
};
template <>
struct kind_traits<kind::kDate> : kinds::by_value, kinds::decimal {
  using value_type = int64_t;
  static constexpr const char* class_name = "property_date_t";
  static constexpr const char* word = "date";
};
template <>
struct kind_traits<kind::kIndex> : kinds::by_value, kinds::decimal {
  using value_type = uint32_t;
  static constexpr const char* class_name = "property_index_t";
  static constexpr const char* word = "index";
};
template <>
struct kind_traits<kind::kInt> : kinds::by_value, kinds::decimal {
  using value_type = int32_t;
  static constexpr const char* class_name = "property_int_t";
  static constexpr const char* word = "int";
};
template <>
struct kind_traits<kind::kUint> : kinds::by_value, kinds::decimal {
  using value_type = uint32_t;
  static constexpr const char* class_name = "property_uint_t";
  static constexpr const char* word = "uint";
};
template <>
struct kind_traits<kind::kBoolean> : kinds::by_value {
  using value_type = bool;
  static constexpr const char* class_name = "property_boolean_t";
  static constexpr const char* word = "boolean";
  static void text(const value_type& v, std::string& out) { out = v ? "true" : "false"; }
};
template <>
struct kind_traits<kind::kBlob> : kinds::by_value {
  using value_type = std::string;
  static constexpr const char* class_name = "property_blob_t";
  static constexpr const char* word = "blob";
  static void text(const value_type&, std::string& out) { out = "BLOB"; }
};
template <>
struct kind_traits<kind::kLob> : kinds::by_value {
  using value_type = std::string;
  static constexpr const char* class_name = "property_lob_t";
  static constexpr const char* word = "lob";
  static void text(const value_type&, std::string& out) { out = "LOB"; }
};
template <>
struct kind_traits<kind::kOid> : kinds::by_length_then_value, kinds::gid_list_text {
  using value_type = std::vector<uint32_t>;
  static constexpr const char* class_name = "property_oid_t";
  static constexpr const char* word = "GIDList";
};
template <>
struct kind_traits<kind::kEnum> {
  using value_type = enum_value_t;
  static constexpr const char* class_name = "property_enum_t";
  static constexpr const char* word = "int";
  static void text(const value_type& v, std::string& out);
  static int rank(const value_type& a, const value_type& b) {
    return kinds::by_value::rank(a.value, b.value);
  }
};

}  // namespace tql
