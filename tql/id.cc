#include "tql/id.h"

#include "base/error.h"
#include "protocol/fdio.h"
#include "protocol/print.h"

namespace tql {

id_t::id_t(std::initializer_list<uint32_t> components) {
  for (uint32_t c : components) push_back(c);
}

void id_t::check_index(uint32_t i) const {
  if (i >= count_) {
    throw error::ERange("small vector reference overflow " + std::to_string(i) +
                        " >= " + std::to_string(kMaxComponents));
  }
}

uint32_t id_t::operator[](uint32_t i) const {
  check_index(i);
  return components_[i];
}

uint32_t& id_t::operator[](uint32_t i) {
  check_index(i);
  return components_[i];
}

void id_t::push_back(uint32_t component) {
  if (count_ == kMaxComponents) {
    throw error::ERange("small vector reference overflow " + std::to_string(count_) +
                        " >= " + std::to_string(kMaxComponents));
  }
  components_[count_++] = component;
}

std::string id_t::text() const {
  std::string out;
  for (uint32_t i = 0; i < count_; ++i) {
    if (i > 0) out += '.';
    out += std::to_string(components_[i]);
  }
  return out;
}

bool operator==(const id_t& a, const id_t& b) { return (a <=> b) == 0; }

std::strong_ordering operator<=>(const id_t& a, const id_t& b) {
  for (uint32_t i = 0; i < a.count_ && i < b.count_; ++i) {
    if (auto c = a.components_[i] <=> b.components_[i]; c != 0) return c;
  }
  return a.count_ <=> b.count_;
}

std::string version_t::text() const {
  return std::to_string(first) + ".1." + std::to_string(second);
}

namespace {

// The sign of a - b computed as a wrapping difference, as the database does.
std::strong_ordering difference_order(int64_t a, int64_t b) {
  auto d = static_cast<int64_t>(static_cast<uint64_t>(a) - static_cast<uint64_t>(b));
  return d <=> 0;
}

}  // namespace

std::strong_ordering operator<=>(const version_t& a, const version_t& b) {
  if (auto c = difference_order(a.first, b.first); c != 0) return c;
  return difference_order(a.second, b.second);
}

protocol::ioprim& operator<<(protocol::ioprim& io, const id_t& id) {
  io << id.size();
  for (uint32_t i = 0; i < id.size(); ++i) io << id[i];
  return io;
}

protocol::ioprim& operator>>(protocol::ioprim& io, id_t& id) {
  uint32_t count = 0;
  io >> count;
  if (count > id_t::kMaxComponents) {
    throw error::EParseError("object id with " + std::to_string(count) +
                             " components in the stream; at most 3 are allowed");
  }
  id.clear();
  for (uint32_t i = 0; i < count; ++i) {
    uint32_t c = 0;
    io >> c;
    id.push_back(c);
  }
  return io;
}

protocol::ioprim& operator<<(protocol::ioprim& io, const version_t& v) {
  return io << v.first << v.second;
}

protocol::ioprim& operator>>(protocol::ioprim& io, version_t& v) {
  return io >> v.first >> v.second;
}

void print_value(std::ostream& os, const id_t& id, int indent) {
  os << "small_vector<3> {\n";
  for (uint32_t i = 0; i < id.size(); ++i) {
    protocol::print_indent(os, indent + 2);
    os << id[i] << "\n";
  }
  protocol::print_indent(os, indent);
  os << "}";
}

void print_value(std::ostream& os, const version_t& v, int) { os << v.text(); }

}  // namespace tql
