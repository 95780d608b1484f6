#include "protocol/ber_integer.h"

#include "protocol/ber_encoding.h"

namespace protocol {

namespace {

template <class T>
const char* type_name();
template <>
const char* type_name<int32_t>() {
  return "int32_t";
}
template <>
const char* type_name<uint32_t>() {
  return "uint32_t";
}
template <>
const char* type_name<int64_t>() {
  return "int64_t";
}
template <>
const char* type_name<uint64_t>() {
  return "uint64_t";
}

}  // namespace

template <class T>
std::unique_ptr<BerValue> BerIntegerTemplate<T>::clone() const {
  return std::make_unique<BerIntegerTemplate<T>>(*this);
}

template <class T>
T BerIntegerTemplate<T>::decode() const {
  const std::vector<uint8_t>& content = bytes();
  if (content.empty()) return 0;
  uint64_t value = 0;
  if constexpr (std::is_signed_v<T>) {
    if (content[0] & 0x80) value = ~uint64_t{0};
  } else if (content.size() == kMaxLength && content[0] != 0) {
    throw EBer("data out of range in BerIntegerTemplate");
  }
  for (uint8_t byte : content) value = (value << 8) | byte;
  return static_cast<T>(value);
}

template <class T>
void BerIntegerTemplate<T>::readDone() {
  T value = decode();
  if (value < min_ || value > max_) out_of_range("readDone", value);
  target_.value() = value;
}

template <class T>
void BerIntegerTemplate<T>::write(BerOutput& out, bool) const {
  T value = target_.value();
  if (value < min_ || value > max_) out_of_range("write", value);
  if constexpr (std::is_signed_v<T>) {
    write_content(out, signed_content(value));
  } else {
    write_content(out, unsigned_content(value));
  }
}

template <class T>
int BerIntegerTemplate<T>::compare(const BerValue& other) const {
  const BerIntegerTemplate<T>* o = same_class(*this, other);
  if (o == nullptr) return compare_classes(other);
  return compare_values(value(), o->value());
}

template <class T>
void BerIntegerTemplate<T>::out_of_range(const char* where, T value) const {
  throw EBer(std::string("data out of range in BerIntegerTemplate<") + type_name<T>() +
             ">::" + where + " " + std::to_string(min_) + " <= " + std::to_string(value) +
             " <= " + std::to_string(max_));
}

template class BerIntegerTemplate<int32_t>;
template class BerIntegerTemplate<uint32_t>;
template class BerIntegerTemplate<int64_t>;
template class BerIntegerTemplate<uint64_t>;

}  // namespace protocol
