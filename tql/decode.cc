#include "tql/decode.h"

#include <cmath>

#include "tql/catalogue.h"
#include "tql/errors.h"

namespace tql {

namespace {

[[noreturn]] void fail(const std::string& what, const property_t& p) {
  throw errors::tql(errors::tql::kIllegalType, what + property_name(p.name));
}

// The property as kind K, or the decoder's error.
template <int32_t K>
const property_kind_t<K>& as_kind(const property_t& p) {
  const char* cls = kind_traits<K>::class_name;
  if (p.is_null) fail(std::string("Null given for ") + cls + ": ", p);
  const auto* k = dynamic_cast<const property_kind_t<K>*>(&p);
  if (k == nullptr) fail(std::string("Type mismatch for ") + cls + ": ", p);
  return *k;
}

}  // namespace

void decode_string(const property_t& p, std::string& out) { out = as_kind<kind::kString>(p).value; }
void decode_object(const property_t& p, id_t& out) { out = as_kind<kind::kObject>(p).value.id; }
void decode_object_set(const property_t& p, object_set_t& out) {
  out = as_kind<kind::kObjectSet>(p).value;
}
void decode_real(const property_t& p, double& out) { out = as_kind<kind::kReal>(p).value; }
void decode_date(const property_t& p, int64_t& out) { out = as_kind<kind::kDate>(p).value; }
void decode_uint(const property_t& p, uint32_t& out) { out = as_kind<kind::kUint>(p).value; }
void decode_boolean(const property_t& p, bool& out) { out = as_kind<kind::kBoolean>(p).value; }
void decode_blob(const property_t& p, std::string& out) { out = as_kind<kind::kBlob>(p).value; }

void decode_scalar(const property_t& p, double& out) {
  if (p.is_null) fail("Null given for decode scalar property: ", p);
  if (const auto* u = dynamic_cast<const property_uint_t*>(&p)) {
    out = u->value;
  } else if (const auto* i = dynamic_cast<const property_int_t*>(&p)) {
    out = i->value;
  } else if (const auto* r = dynamic_cast<const property_real_t*>(&p)) {
    out = r->value;
  } else {
    fail("Type mismatch for property_uint_t, property_int_t or property_real_t: ", p);
  }
}

void decode_enum(const property_t& p, uint32_t expected, uint32_t& out) {
  if (p.is_null) fail("Null given for property_t: ", p);
  const auto* e = dynamic_cast<const property_enum_t*>(&p);
  std::string mismatch = "Type mismatch for property_t: " + property_name(p.name) +
                         " [exp:" + std::to_string(expected) + ",actual:";
  if (e == nullptr) throw errors::tql(errors::tql::kIllegalType, mismatch + " non-enum");
  uint32_t actual = e->value.enum_type & 0x1ffff;
  if (actual != (expected & 0x1ffff)) {
    throw errors::tql(errors::tql::kIllegalType, mismatch + std::to_string(actual));
  }
  out = e->value.value;
}

double decode_percentage(const property_t* value, const property_t* fallback, double low,
                         double high) {
  if (value != nullptr && !value->is_null) {
    double out = 0;
    decode_scalar(*value, out);
    return out;
  }
  if (fallback != nullptr && !fallback->is_null) {
    const auto* r = dynamic_cast<const property_real_t*>(fallback);
    if (r == nullptr) fail("Type mismatch for decoding double: ", *fallback);
    return low + (high - low) * r->value / 100;
  }
  return std::nan("");
}

void decode_string_or_text(const property_t& p, std::string& out) {
  int32_t kind = p.type();
  if (kind == 12 || kind == 22 || kind == 23) fail("Type mismatch for decoding to string: ", p);
  if (p.is_null) {
    out = "null";
  } else if (const auto* s = dynamic_cast<const property_string_t*>(&p)) {
    out = s->value;
  } else {
    p.value_text(out);
  }
}

}  // namespace tql
