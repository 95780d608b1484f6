// Property values of stored objects: the abstract tql::property_t and its
// family of kinds 7 to 25, one class per kind.
//
// Every kind is an instance of property_kind_t<K>; what differs between the
// kinds (value type, text, order, names) is told once per kind by
// kind_traits<K> in property_kinds.h. The named classes (property_string_t,
// ...) are aliases of those instances.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <ostream>
#include <string>

#include "protocol/clone_ptr.h"
#include "protocol/ioprim.h"
#include "tql/property_kinds.h"

namespace tql {

// The relative operators of compare(). 1 to 8 apply to every kind; 9 to 12
// and 14 only where a kind says so.
enum rel_op : int32_t {
  kEqual = 1,
  kGreater = 2,
  kLess = 3,
  kGreaterEqual = 4,
  kLessEqual = 5,
  kNotEqual = 6,
  kEqualIgnoreCase = 7,
  kNotEqualIgnoreCase = 8,
  kSubsetOf = 9,
  kSupersetOf = 10,
  kIntersects = 11,
  kElementOf = 12,
  kContainsIgnoreCase = 14,
};

class property_t {
 public:
  int32_t name = 0;       // The property number (see catalogue.h).
  bool is_null = false;   // The value is written and read even when set.
  int32_t modifiers = 0;  // Copied as read; 0 on what this process builds.

  // The kind number, 7 to 25.
  virtual int32_t type() const = 0;
  virtual ~property_t() = default;
  // A deep copy, owned by the caller.
  virtual std::unique_ptr<property_t> clone() const = 0;
  // The value as text (see the kinds); meant to be reached through text().
  virtual void value_text(std::string& out) const = 0;
  // Compares with `other` by `op`. Raises errors::tql_incomparable when
  // `other` is of a kind that can't be compared with this one, and for an
  // operator that the kind doesn't know.
  virtual bool compare(int32_t op, const property_t& other) const = 0;

  // The value's fdio form, without the common header.
  virtual void write_value(protocol::ioprim& io) const = 0;
  virtual void read_value(protocol::ioprim& io) = 0;
  // Same kind and equal in every field.
  virtual bool equals(const property_t& other) const = 0;

  // "(null)" for a null property, else value_text().
  std::string text() const;

 protected:
  property_t() = default;
  property_t(const property_t&) = default;
  property_t& operator=(const property_t&) = default;
};

using property_ptr = protocol::clone_ptr<property_t>;

template <int32_t K>
class property_kind_t final : public property_t {
 public:
  using traits = kind_traits<K>;
  using value_type = typename traits::value_type;
  static constexpr int32_t kKind = K;

  value_type value{};

  property_kind_t() = default;
  property_kind_t(int32_t number, value_type v, int32_t mods = 0) : value(std::move(v)) {
    name = number;
    modifiers = mods;
  }

  int32_t type() const override { return K; }
  std::unique_ptr<property_t> clone() const override;
  void value_text(std::string& out) const override;
  bool compare(int32_t op, const property_t& other) const override;
  void write_value(protocol::ioprim& io) const override;
  void read_value(protocol::ioprim& io) override;
  bool equals(const property_t& other) const override;
};

using property_string_t = property_kind_t<kind::kString>;
using property_string_list_t = property_kind_t<kind::kStringList>;
using property_object_set_t = property_kind_t<kind::kObjectSet>;
using property_object_t = property_kind_t<kind::kObject>;
using property_version_t = property_kind_t<kind::kVersion>;
using property_action_t = property_kind_t<kind::kAction>;
using property_real_t = property_kind_t<kind::kReal>;
using property_bignum_t = property_kind_t<kind::kBignum>;
using property_gid_t = property_kind_t<kind::kGid>;
using property_gid_list_t = property_kind_t<kind::kGidList>;
using property_date_t = property_kind_t<kind::kDate>;
using property_index_t = property_kind_t<kind::kIndex>;
using property_int_t = property_kind_t<kind::kInt>;
using property_uint_t = property_kind_t<kind::kUint>;
using property_boolean_t = property_kind_t<kind::kBoolean>;
using property_blob_t = property_kind_t<kind::kBlob>;
using property_lob_t = property_kind_t<kind::kLob>;
using property_oid_t = property_kind_t<kind::kOid>;
using property_enum_t = property_kind_t<kind::kEnum>;

extern template class property_kind_t<kind::kString>;
extern template class property_kind_t<kind::kStringList>;
extern template class property_kind_t<kind::kObjectSet>;
extern template class property_kind_t<kind::kObject>;
extern template class property_kind_t<kind::kVersion>;
extern template class property_kind_t<kind::kAction>;
extern template class property_kind_t<kind::kReal>;
extern template class property_kind_t<kind::kBignum>;
extern template class property_kind_t<kind::kGid>;
extern template class property_kind_t<kind::kGidList>;
extern template class property_kind_t<kind::kDate>;
extern template class property_kind_t<kind::kIndex>;
extern template class property_kind_t<kind::kInt>;
extern template class property_kind_t<kind::kUint>;
extern template class property_kind_t<kind::kBoolean>;
extern template class property_kind_t<kind::kBlob>;
extern template class property_kind_t<kind::kLob>;
extern template class property_kind_t<kind::kOid>;
extern template class property_kind_t<kind::kEnum>;

inline constexpr int32_t kFirstKind = 7;
inline constexpr int32_t kLastKind = 25;

// A new property of kind `kind` with default value, or null for a number
// outside 7 to 25.
std::unique_ptr<property_t> make_property(int32_t kind);

// Makers: a heap property with `is_null` clear.
template <int32_t K>
std::unique_ptr<property_t> make_property(int32_t number, typename kind_traits<K>::value_type v,
                                          int32_t modifiers = 0) {
  return std::make_unique<property_kind_t<K>>(number, std::move(v), modifiers);
}
std::unique_ptr<property_t> make_string_property(int32_t number, std::string value,
                                                 int32_t modifiers = 0);
std::unique_ptr<property_t> make_object_property(int32_t number, id_t value, int32_t modifiers = 0);
std::unique_ptr<property_t> make_boolean_property(int32_t number, bool value,
                                                  int32_t modifiers = 0);

// fdio form as an element of a container: 32-bit kind (0 for null), `name`,
// `is_null` as a 32-bit word, `modifiers`, then the value. A kind of 0 or
// outside 7 to 25 reads as null, with nothing more read.
protocol::ioprim& operator<<(protocol::ioprim& io, const property_ptr& p);
protocol::ioprim& operator>>(protocol::ioprim& io, property_ptr& p);

// Prints kind, name, is_null, modifiers and the value's text as a record.
void print_value(std::ostream& os, const property_t& p, int indent);

}  // namespace tql
