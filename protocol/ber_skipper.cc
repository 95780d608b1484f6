#include "protocol/ber_skipper.h"

namespace protocol {

std::unique_ptr<BerValue> BerPrimitiveSkipper::clone() const {
  return std::make_unique<BerPrimitiveSkipper>(tag(false));
}

std::unique_ptr<BerValue> BerConstructedSkipper::clone() const {
  return std::make_unique<BerConstructedSkipper>(tag(false));
}

BerValue* BerConstructedSkipper::element(uint32_t index, uint32_t tag, bool) {
  note_element(index);
  return skip(tag);
}

}  // namespace protocol
