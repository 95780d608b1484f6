#include "protocol/ber_primitives.h"

#include <charconv>
#include <cmath>
#include <cstdio>

#include "base/fatal.h"
#include "protocol/ber_encoding.h"

namespace protocol {

namespace {

constexpr uint8_t kRealText = 0x00;
constexpr uint8_t kRealPlusInfinity = 0x40;
constexpr uint8_t kRealMinusInfinity = 0x41;
constexpr uint8_t kRealNotANumber = 0x60;

std::vector<uint8_t> real_content(double value) {
  if (std::isnan(value)) return {kRealNotANumber};
  if (std::isinf(value)) return {value > 0 ? kRealPlusInfinity : kRealMinusInfinity};
  if (value == 0.0) return {};
  char text[BerReal::kMaxLength];
  int n = std::snprintf(text, sizeof text, "%e", value);
  TAVREL_ASSERT(n > 0 && n < static_cast<int>(sizeof text),
                "String representation of double larger than buffer");
  std::vector<uint8_t> content{kRealText};
  content.insert(content.end(), text, text + n);
  return content;
}

double parse_real_text(const uint8_t* text, size_t n) {
  const char* begin = reinterpret_cast<const char*>(text);
  double value = 0.0;
  auto [end, ec] = std::from_chars(begin, begin + n, value);
  if (n == 0 || ec != std::errc() || end != begin + n) throw EBer("Parse error in real number");
  return value;
}

}  // namespace

// BerBoolean

std::unique_ptr<BerValue> BerBoolean::clone() const { return std::make_unique<BerBoolean>(*this); }

void BerBoolean::readDone() { target_.value() = !bytes().empty() && bytes()[0] != 0; }

void BerBoolean::write(BerOutput& out, bool) const {
  write_content(out, {static_cast<uint8_t>(value() ? 1 : 0)});
}

int BerBoolean::compare(const BerValue& other) const {
  const BerBoolean* o = same_class(*this, other);
  return o ? compare_values(value(), o->value()) : compare_classes(other);
}

// BerReal

std::unique_ptr<BerValue> BerReal::clone() const { return std::make_unique<BerReal>(*this); }

void BerReal::readDone() {
  const std::vector<uint8_t>& content = bytes();
  double value = 0.0;
  if (!content.empty()) {
    switch (content[0]) {
      case kRealPlusInfinity:
        value = HUGE_VAL;
        break;
      case kRealMinusInfinity:
        value = -HUGE_VAL;
        break;
      case kRealNotANumber:
        value = 0.0;
        break;
      case kRealText:
        value = parse_real_text(content.data() + 1, content.size() - 1);
        break;
      default:
        throw EBer("Unsupported real number format revceived");
    }
  }
  target_.value() = value;
}

void BerReal::write(BerOutput& out, bool) const { write_content(out, real_content(value())); }

int compare_reals(double a, double b) {
  if (std::isnan(a) || std::isnan(b)) return std::isnan(a) - std::isnan(b);
  return compare_values(a, b);
}

int BerReal::compare(const BerValue& other) const {
  const BerReal* o = same_class(*this, other);
  return o ? compare_reals(value(), o->value()) : compare_classes(other);
}

// BerNull

std::unique_ptr<BerValue> BerNull::clone() const { return std::make_unique<BerNull>(); }

void BerNull::write(BerOutput& out, bool) const { write_content(out, {}); }

int BerNull::compare(const BerValue& other) const {
  return same_class(*this, other) ? 0 : compare_classes(other);
}

// BerString

std::unique_ptr<BerValue> BerString::clone() const { return std::make_unique<BerString>(*this); }

void BerString::check_length(size_t length) const {
  if (length > limit_) {
    throw EBer("String exceeds allowed length " + std::to_string(length) + " > " +
               std::to_string(limit_));
  }
}

void BerString::reserve(size_t length) {
  check_length(length);
  length_ = length;
  target_.value().clear();
  target_.value().reserve(length);
}

void BerString::append(const uint8_t* bytes, size_t n) {
  std::string& text = target_.value();
  if (n > length_ - text.size()) throw EBer("Content exceeds its announced length");
  text.append(reinterpret_cast<const char*>(bytes), n);
}

void BerString::write(BerOutput& out, bool legacy) const {
  const std::string& text = value();
  check_length(text.size());
  write_primitive(out, tag(legacy), reinterpret_cast<const uint8_t*>(text.data()), text.size());
}

int BerString::compare(const BerValue& other) const {
  const BerString* o = same_class(*this, other);
  return o ? compare_values(value(), o->value()) : compare_classes(other);
}

}  // namespace protocol
