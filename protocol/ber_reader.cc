#include "protocol/ber_reader.h"

#include <string>

namespace protocol {

namespace {

// Tag numbers past this would overflow the 32-bit tag value.
constexpr uint32_t kMaxTagNumber = 0xFFFFFFFFu >> 3;

}  // namespace

uint8_t BerReader::next_byte() {
  if (pos_ >= size_ || pos_ >= limit_) throw EBer("Unexpected end of BER data");
  return data_[pos_++];
}

uint32_t BerReader::read_tag() {
  uint8_t first = next_byte();
  uint32_t low = first >> 5;
  uint32_t number = first & 0x1F;
  if (number == 31) {
    number = 0;
    uint8_t byte;
    do {
      byte = next_byte();
      if (number > (kMaxTagNumber >> 7)) throw EBer("Bad tag encoding");
      number = (number << 7) | (byte & 0x7F);
    } while (byte & 0x80);
    if (number < 31) throw EBer("Bad tag encoding");
  }
  return number * 8 + low;
}

std::optional<size_t> BerReader::read_length() {
  uint8_t first = next_byte();
  if (first < 0x80) return first;
  if (first == 0x80) return std::nullopt;
  size_t k = first & 0x7F;
  if (k > 4) throw EBer("Bad length encoding");
  size_t length = 0;
  for (size_t i = 0; i < k; ++i) length = (length << 8) | next_byte();
  return length;
}

std::unique_ptr<BerConstructed> BerReader::read_message(const BerProtocol& protocol) {
  uint32_t tag = read_tag();
  std::unique_ptr<BerConstructed> message = protocol.make(tag, legacy_);
  read_content(*message, tag, read_length(), 0);
  return message;
}

void BerReader::read(BerValue& value) {
  uint32_t tag = read_tag();
  uint32_t expected = value.tag(legacy_);
  if (tag != expected) tag_mismatch(tag, value.tag_name(legacy_));
  read_content(value, tag, read_length(), 0);
}

void BerReader::read_content(BerValue& value, uint32_t tag, std::optional<size_t> length,
                             int depth) {
  if (depth > kMaxDepth) throw EBer("BER nesting too deep");
  if (auto* constructed = dynamic_cast<BerConstructed*>(&value)) {
    if (!is_constructed(tag)) throw EBer("Primitive encoding of a constructed value");
    if (length) check_available(*length);
    read_elements(*constructed, length, depth);
  } else {
    if (is_constructed(tag)) throw EBer("Constructed encoding of a primitive value");
    read_primitive(dynamic_cast<BerPrimitive&>(value), length);
  }
  value.readDone();
}

void BerReader::check_available(size_t length) const {
  if (length <= std::min(size_, limit_) - pos_) return;
  throw EBer(pos_ + length > size_ ? "Unexpected end of BER data"
                                   : "Length exceeds the enclosing value");
}

void BerReader::read_primitive(BerPrimitive& value, std::optional<size_t> length) {
  if (!length) throw EBer("Indefinite length of a primitive value");
  // The value checks its bound first, so a huge length never gets further.
  value.reserve(*length);
  check_available(*length);
  value.append(data_ + pos_, *length);
  pos_ += *length;
}

bool BerReader::at_end_of_contents() {
  if (pos_ + 2 <= std::min(size_, limit_) && data_[pos_] == 0 && data_[pos_ + 1] == 0) {
    pos_ += 2;
    return true;
  }
  return false;
}

void BerReader::read_elements(BerConstructed& value, std::optional<size_t> length, int depth) {
  size_t outer_limit = limit_;
  if (length) limit_ = pos_ + *length;
  for (uint32_t index = 0;; ++index) {
    if (length ? pos_ == limit_ : at_end_of_contents()) break;
    uint32_t tag = read_tag();
    BerValue* element = value.element(index, tag, legacy_);
    read_content(*element, tag, read_length(), depth + 1);
  }
  limit_ = outer_limit;
  if (value.elements_seen() < value.required_elements()) {
    throw EBer("Too few elements, got " + std::to_string(value.elements_seen()) + " required " +
               std::to_string(value.required_elements()));
  }
}

}  // namespace protocol
