#include "protocol/ber_short_value.h"

#include "protocol/ber_encoding.h"

namespace protocol {

void BerShortValue::reserve(size_t length) {
  if (length > max_length_) {
    throw EBer("Data value exceeds maximum allowed length " + std::to_string(length) + " > " +
               std::to_string(max_length_));
  }
  length_ = length;
  bytes_.clear();
  bytes_.reserve(length);
}

void BerShortValue::append(const uint8_t* bytes, size_t n) {
  if (n > length_ - bytes_.size()) throw EBer("Content exceeds its announced length");
  bytes_.insert(bytes_.end(), bytes, bytes + n);
}

void BerShortValue::write_content(BerOutput& out, const std::vector<uint8_t>& content) const {
  write_primitive(out, tag_, content.data(), content.size());
}

}  // namespace protocol
