#include "tql/property.h"

#include <array>

#include "protocol/fdio.h"
#include "protocol/print.h"
#include "tql/compare.h"

namespace tql {

std::string property_t::text() const {
  if (is_null) return "(null)";
  std::string out;
  value_text(out);
  return out;
}

template <int32_t K>
std::unique_ptr<property_t> property_kind_t<K>::clone() const {
  return std::make_unique<property_kind_t>(*this);
}

template <int32_t K>
void property_kind_t<K>::value_text(std::string& out) const {
  traits::text(value, out);
}

// First the operators that a kind knows beyond the common table, then the
// rank (nulls first) through the table.
template <int32_t K>
bool property_kind_t<K>::compare(int32_t op, const property_t& other) const {
  if constexpr (K == 10) {
    if (op == kElementOf) return detail::object_in_set(*this, other);
  }
  const auto* o = dynamic_cast<const property_kind_t*>(&other);
  if (o == nullptr) detail::type_mismatch(traits::word, other);
  if constexpr (K == 25) detail::check_enum_types(*this, *o);
  if constexpr (K == 7) {
    if (op == kContainsIgnoreCase && !is_null && !o->is_null) {
      return detail::contains_ignore_case(value, o->value);
    }
  }
  if constexpr (K == 9) {
    if (op >= kSubsetOf && op <= kIntersects) return detail::set_relation(*this, *o, op);
  }
  int r = (is_null || o->is_null) ? detail::null_rank(is_null, o->is_null)
                                  : traits::rank(value, o->value);
  return detail::apply_rel_op(op, r);
}

template <int32_t K>
void property_kind_t<K>::write_value(protocol::ioprim& io) const {
  if constexpr (requires { traits::write(io, value); }) {
    traits::write(io, value);
  } else {
    io << value;
  }
}

template <int32_t K>
void property_kind_t<K>::read_value(protocol::ioprim& io) {
  if constexpr (requires { traits::read(io, value); }) {
    traits::read(io, value);
  } else {
    io >> value;
  }
}

template <int32_t K>
bool property_kind_t<K>::equals(const property_t& other) const {
  const auto* o = dynamic_cast<const property_kind_t*>(&other);
  return o != nullptr && name == o->name && is_null == o->is_null && modifiers == o->modifiers &&
         value == o->value;
}

namespace {

using Factory = std::unique_ptr<property_t> (*)();

template <int32_t K>
std::unique_ptr<property_t> make_kind() {
  return std::make_unique<property_kind_t<K>>();
}

template <int32_t... I>
constexpr std::array<Factory, sizeof...(I)> factories(std::integer_sequence<int32_t, I...>) {
  return {&make_kind<I + kFirstKind>...};
}

constexpr auto kFactories =
    factories(std::make_integer_sequence<int32_t, kLastKind - kFirstKind + 1>());

}  // namespace

std::unique_ptr<property_t> make_property(int32_t kind) {
  if (kind < kFirstKind || kind > kLastKind) return nullptr;
  return kFactories[kind - kFirstKind]();
}

std::unique_ptr<property_t> make_string_property(int32_t number, std::string value,
                                                 int32_t modifiers) {
  return make_property<kind::kString>(number, std::move(value), modifiers);
}

std::unique_ptr<property_t> make_object_property(int32_t number, id_t value, int32_t modifiers) {
  return make_property<kind::kObject>(number, object_ref_t{value, {}}, modifiers);
}

std::unique_ptr<property_t> make_boolean_property(int32_t number, bool value, int32_t modifiers) {
  return make_property<kind::kBoolean>(number, value, modifiers);
}

protocol::ioprim& operator<<(protocol::ioprim& io, const property_ptr& p) {
  if (!p) return io << int32_t{0};
  io << p->type() << p->name << p->is_null << p->modifiers;
  p->write_value(io);
  return io;
}

protocol::ioprim& operator>>(protocol::ioprim& io, property_ptr& p) {
  int32_t kind = 0;
  io >> kind;
  std::unique_ptr<property_t> made = make_property(kind);
  if (made) {
    io >> made->name >> made->is_null >> made->modifiers;
    made->read_value(io);
  }
  p.reset(std::move(made));
  return io;
}

void print_value(std::ostream& os, const property_t& p, int indent) {
  os << "{\n";
  protocol::print_indent(os, indent + 2);
  os << "type: " << p.type() << "\n";
  protocol::print_indent(os, indent + 2);
  os << "name: " << p.name << "\n";
  protocol::print_indent(os, indent + 2);
  os << "is_null: " << (p.is_null ? "true" : "false") << "\n";
  protocol::print_indent(os, indent + 2);
  os << "modifiers: " << p.modifiers << "\n";
  protocol::print_indent(os, indent + 2);
  os << "value: " << p.text() << "\n";
  protocol::print_indent(os, indent);
  os << "}";
}

template class property_kind_t<kind::kString>;
template class property_kind_t<kind::kStringList>;
template class property_kind_t<kind::kObjectSet>;
template class property_kind_t<kind::kObject>;
template class property_kind_t<kind::kVersion>;
template class property_kind_t<kind::kAction>;
template class property_kind_t<kind::kReal>;
template class property_kind_t<kind::kBignum>;
template class property_kind_t<kind::kGid>;
template class property_kind_t<kind::kGidList>;
template class property_kind_t<kind::kDate>;
template class property_kind_t<kind::kIndex>;
template class property_kind_t<kind::kInt>;
template class property_kind_t<kind::kUint>;
template class property_kind_t<kind::kBoolean>;
template class property_kind_t<kind::kBlob>;
template class property_kind_t<kind::kLob>;
template class property_kind_t<kind::kOid>;
template class property_kind_t<kind::kEnum>;

}  // namespace tql
