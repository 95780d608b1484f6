#include "host/world_values.h"

#include <array>
#include <cmath>
#include <limits>
#include <utility>

#include "host/store_errors.h"
#include "host/world_names.h"

namespace host {

namespace {

// Where a value is read, for the messages.
struct Ctx {
  const std::string& path;
  const Resolver& resolve;
};

[[noreturn]] void fail(const Ctx& c, const std::string& text) { throw EWorldError(c.path, text); }

template <class T>
T integer(const Json& v, const Ctx& c, const char* what) {
  if (!v.is_number_integer()) fail(c, std::string("expected ") + what);
  if (v.is_number_unsigned()) {
    const auto u = v.get<uint64_t>();
    if (u > static_cast<uint64_t>(std::numeric_limits<T>::max()))
      fail(c, std::string("expected ") + what);
    return static_cast<T>(u);
  }
  const auto s = v.get<int64_t>();
  if (s < static_cast<int64_t>(std::numeric_limits<T>::min()) ||
      (s > 0 && static_cast<uint64_t>(s) > static_cast<uint64_t>(std::numeric_limits<T>::max()))) {
    fail(c, std::string("expected ") + what);
  }
  return static_cast<T>(s);
}

const Json& array_of(const Json& v, const Ctx& c, size_t size = 0) {
  if (!v.is_array() || (size != 0 && v.size() != size)) {
    fail(c, size == 0 ? "expected an array" : "expected an array of " + std::to_string(size));
  }
  return v;
}

std::string string_of(const Json& v, const Ctx& c) {
  if (!v.is_string()) fail(c, "expected a string");
  return v.get<std::string>();
}

std::string from_hex(const Json& v, const Ctx& c) {
  const std::string hex = string_of(v, c);
  if (hex.size() % 2 != 0 || hex.find_first_not_of("0123456789abcdefABCDEF") != std::string::npos) {
    fail(c, "expected an even number of hexadecimal digits");
  }
  std::string out;
  for (size_t i = 0; i < hex.size(); i += 2) {
    out.push_back(static_cast<char>(std::stoi(hex.substr(i, 2), nullptr, 16)));
  }
  return out;
}

std::string to_hex(const std::string& bytes) {
  static const char kDigits[] = "0123456789abcdef";
  std::string out;
  for (unsigned char b : bytes) {
    out.push_back(kDigits[b >> 4]);
    out.push_back(kDigits[b & 15]);
  }
  return out;
}

// Readers by value type.
void read(const Json& v, const Ctx& c, std::string& out) { out = string_of(v, c); }
void read(const Json& v, const Ctx& c, int32_t& out) {
  out = integer<int32_t>(v, c, "a 32-bit integer");
}
void read(const Json& v, const Ctx& c, uint32_t& out) {
  out = integer<uint32_t>(v, c, "an unsigned 32-bit integer");
}
void read(const Json& v, const Ctx& c, int64_t& out) {
  out = integer<int64_t>(v, c, "a 64-bit integer");
}
void read(const Json& v, const Ctx& c, bool& out) {
  if (!v.is_boolean()) fail(c, "expected true or false");
  out = v.get<bool>();
}
void read(const Json& v, const Ctx& c, double& out) {
  if (!real_from_json(v, out)) fail(c, "expected a number, \"nan\", \"inf\" or \"-inf\"");
}
void read(const Json& v, const Ctx& c, std::list<std::string>& out) {
  for (const Json& e : array_of(v, c)) out.push_back(string_of(e, c));
}
void read(const Json& v, const Ctx& c, std::vector<uint32_t>& out) {
  for (const Json& e : array_of(v, c))
    out.push_back(integer<uint32_t>(e, c, "unsigned 32-bit integers"));
}
void read(const Json& v, const Ctx& c, tql::object_ref_t& out) {
  out.id = c.resolve(string_of(v, c), c.path);
}
void read(const Json& v, const Ctx& c, tql::object_set_t& out) {
  for (const Json& e : array_of(v, c))
    out.emplace(c.resolve(string_of(e, c), c.path), tql::origin_t{});
}
void read(const Json& v, const Ctx& c, tql::version_t& out) {
  array_of(v, c, 2);
  read(v[0], c, out.first);
  read(v[1], c, out.second);
}
void read(const Json& v, const Ctx& c, tql::enum_value_t& out) {
  array_of(v, c, 2);
  read(v[0], c, out.enum_type);
  read(v[1], c, out.value);
}
void read(const Json& v, const Ctx& c, BigNum& out) {
  const std::string bytes = from_hex(v, c);
  out = BigNum::fromBytes(std::vector<uint8_t>(bytes.begin(), bytes.end()));
}

// Writers by value type.
template <class T>
Json write(const T& v) {
  return v;
}
Json write(const double& v) { return real_to_json(v); }
Json write(const tql::object_ref_t& v) { return v.id.text(); }
Json write(const tql::object_set_t& v) {
  Json out = Json::array();
  for (const auto& [id, origin] : v) out.push_back(id.text());
  return out;
}
Json write(const tql::version_t& v) { return Json::array({v.first, v.second}); }
Json write(const tql::enum_value_t& v) { return Json::array({v.enum_type, v.value}); }
Json write(const BigNum& v) {
  std::vector<uint8_t> bytes = v.toBytes(0);
  return to_hex(std::string(bytes.begin(), bytes.end()));
}

// Blobs and lobs are written in hexadecimal; every other kind by its type.
template <int32_t K>
constexpr bool kHexKind = K == 22 || K == 23;

template <int32_t K>
tql::property_ptr parse_kind(int32_t number, const Json& v, const Ctx& c) {
  auto p = std::make_unique<tql::property_kind_t<K>>();
  p->name = number;
  if constexpr (kHexKind<K>) {
    p->value = from_hex(v, c);
  } else {
    read(v, c, p->value);
  }
  return p;
}

template <int32_t K>
Json dump_kind(const tql::property_t& p) {
  const auto& value = static_cast<const tql::property_kind_t<K>&>(p).value;
  if constexpr (kHexKind<K>) {
    return to_hex(value);
  } else {
    return write(value);
  }
}

struct KindEntry {
  const char* key;
  tql::property_ptr (*parse)(int32_t, const Json&, const Ctx&);
  Json (*dump)(const tql::property_t&);
};

constexpr const char* kKeys[] = {"string",   "string_list", "object_set", "object", "version",
                                 "action",   "real",        "bignum_hex", "gid",    "gid_list",
                                 "date",     "index",       "int",        "uint",   "bool",
                                 "blob_hex", "lob_hex",     "oid",        "enum"};

template <int32_t... I>
constexpr std::array<KindEntry, sizeof...(I)> make_kinds(std::integer_sequence<int32_t, I...>) {
  return {KindEntry{kKeys[I], &parse_kind<I + 7>, &dump_kind<I + 7>}...};
}
constexpr auto kKinds = make_kinds(std::make_integer_sequence<int32_t, 19>());

// The kind number of a key, or 0.
int32_t kind_of(const std::string& key) {
  for (size_t i = 0; i < kKinds.size(); ++i) {
    if (key == kKinds[i].key) return static_cast<int32_t>(i) + 7;
  }
  return 0;
}

std::string kind_list() {
  std::string out;
  for (const KindEntry& k : kKinds) out += std::string(out.empty() ? "" : ", ") + k.key;
  return out + ", null";
}

}  // namespace

bool real_from_json(const Json& value, double& out) {
  if (value.is_number()) {
    out = value.get<double>();
  } else if (value == "nan") {
    out = std::nan("");
  } else if (value == "inf" || value == "-inf") {
    out = (value == "inf" ? 1 : -1) * std::numeric_limits<double>::infinity();
  } else {
    return false;
  }
  return true;
}

Json real_to_json(double value) {
  if (std::isnan(value)) return "nan";
  if (std::isinf(value)) return value > 0 ? "inf" : "-inf";
  return value;
}

bool is_reference_value(const Json& value) {
  return value.is_object() && value.size() == 1 &&
         (value.contains("object") || value.contains("object_set"));
}

tql::property_ptr property_from_json(int32_t number, const Json& value, const std::string& path,
                                     const Resolver& resolve) {
  const Ctx c{path, resolve};
  if (!value.is_object() || value.size() != 1) {
    fail(c, "expected a typed value with one member, one of: " + kind_list());
  }
  const std::string key = value.begin().key();
  const Json& inner = value.begin().value();
  if (key == "null") {
    const int32_t kind = inner.is_string() ? kind_of(inner.get<std::string>()) : 0;
    if (kind == 0) fail(c, "a null value names its kind, one of: " + kind_list());
    tql::property_ptr p(tql::make_property(kind));
    p->name = number;
    p->is_null = true;
    return p;
  }
  const int32_t kind = kind_of(key);
  if (kind == 0) fail(c, "unknown value kind \"" + key + "\"; one of: " + kind_list());
  const std::string inner_path = path + "." + key;
  return kKinds[kind - 7].parse(number, inner, Ctx{inner_path, resolve});
}

Json property_to_json(const tql::property_t& property) {
  const KindEntry& k = kKinds[property.type() - 7];
  if (property.is_null) return Json{{"null", k.key}};
  return Json{{k.key, k.dump(property)}};
}

}  // namespace host
