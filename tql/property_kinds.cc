#include "tql/property_kinds.h"

#include <cmath>
#include <cstdio>

#include "protocol/fdio.h"
#include "tql/text.h"

namespace tql {

namespace {

std::string quoted(const std::string& s) { return "\"" + s + "\""; }

std::string gid_text(uint32_t v) {
  char buf[16];
  std::snprintf(buf, sizeof buf, "%02x:%02x:%02x:%02x", v >> 24, (v >> 16) & 0xff, (v >> 8) & 0xff,
                v & 0xff);
  return buf;
}

template <class C, class F>
std::string joined(const C& c, F each) {
  std::string out;
  for (const auto& e : c) {
    if (!out.empty()) out += ", ";
    out += each(e);
  }
  return out;
}

}  // namespace

int kinds::by_length_then_value::rank(const std::vector<uint32_t>& a,
                                      const std::vector<uint32_t>& b) {
  if (a.size() != b.size()) return a.size() < b.size() ? -2 : 2;
  return by_value::rank(a, b);
}

void kinds::gid_list_text::text(const std::vector<uint32_t>& v, std::string& out) {
  out = joined(v, gid_text);
}

void kind_traits<kind::kString>::text(const value_type& v, std::string& out) { out = quoted(v); }

// Bytes first: equal bytes rank 0. Different bytes rank by the case-folded
// order when that differs too (2, -2), else by the byte order (1, -1).
int kind_traits<kind::kString>::rank(const value_type& a, const value_type& b) {
  int bytes = a.compare(b);
  if (bytes == 0) return 0;
  int folded = to_lower(a).compare(to_lower(b));
  if (folded != 0) return folded < 0 ? -2 : 2;
  return bytes < 0 ? -1 : 1;
}

void kind_traits<kind::kStringList>::text(const value_type& v, std::string& out) {
  out = joined(v, quoted);
}

void kind_traits<kind::kObjectSet>::text(const value_type& v, std::string& out) {
  out = "{" + joined(v, [](const auto& e) { return quoted(e.first.text()); }) + "}";
}

// Same size and same ids rank 0; anything else 2 (sets have no order here).
int kind_traits<kind::kObjectSet>::rank(const value_type& a, const value_type& b) {
  if (a.size() != b.size()) return 2;
  for (auto i = a.begin(), j = b.begin(); i != a.end(); ++i, ++j) {
    if (!(i->first == j->first)) return 2;
  }
  return 0;
}

void kind_traits<kind::kObject>::text(const value_type& v, std::string& out) {
  out = quoted(v.id.text());
}

void kind_traits<kind::kVersion>::text(const value_type& v, std::string& out) {
  out = quoted(v.text());
}

void kind_traits<kind::kReal>::text(const value_type& v, std::string& out) {
  if (std::isnan(v)) {
    out = "nan";
  } else if (std::isinf(v)) {
    out = v > 0 ? "inf" : "-inf";
  } else {
    char buf[400];
    std::snprintf(buf, sizeof buf, "%f", v);
    out = buf;
  }
}

int kind_traits<kind::kReal>::rank(const value_type& a, const value_type& b) {
  bool a_nan = std::isnan(a);
  bool b_nan = std::isnan(b);
  if (a_nan || b_nan) return a_nan == b_nan ? 0 : (a_nan ? 2 : -2);
  return kinds::by_value::rank(a, b);
}

void kind_traits<kind::kBignum>::write(protocol::ioprim& io, const value_type& v) {
  std::vector<uint8_t> bytes = v.toBytes(4);
  io << std::string(bytes.begin(), bytes.end());
}

void kind_traits<kind::kBignum>::read(protocol::ioprim& io, value_type& v) {
  std::string bytes;
  io >> bytes;
  v = BigNum::fromBytes(std::vector<uint8_t>(bytes.begin(), bytes.end()));
}

void kind_traits<kind::kGid>::text(const value_type& v, std::string& out) { out = gid_text(v); }

void kind_traits<kind::kEnum>::text(const value_type& v, std::string& out) {
  out = "enum(" + std::to_string(v.enum_type) + ", " + std::to_string(v.value) + ")";
}

}  // namespace tql
