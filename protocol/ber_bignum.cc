#include "protocol/ber_bignum.h"

#include <vector>

namespace protocol {

std::unique_ptr<BerValue> BerBigNum::clone() const { return std::make_unique<BerBigNum>(*this); }

void BerBigNum::readDone() {
  target_.value() = BigNum::fromBigEndian(bytes().data(), bytes().size());
}

void BerBigNum::write(BerOutput& out, bool) const {
  // Never an empty buffer: bn_get_data moves bytes even for 0, and a null
  // buffer there is undefined behaviour.
  std::vector<uint8_t> content(4 * value().used() + 4);
  size_t size = content.size();
  value().bn_get_data(content.data(), size);
  if (size > kMaxLength) {
    throw EBer("Data value exceeds maximum allowed length " + std::to_string(size) + " > " +
               std::to_string(kMaxLength));
  }
  content.resize(size);
  write_content(out, content);
}

int BerBigNum::compare(const BerValue& other) const {
  const BerBigNum* o = same_class(*this, other);
  return o ? compare_values(value(), o->value()) : compare_classes(other);
}

}  // namespace protocol
