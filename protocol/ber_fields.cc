#include "protocol/ber_fields.h"

namespace protocol {

void UintOrNullField::write(BerOutput& out, bool legacy, const native& v, const char*) {
  if (v) {
    BerIntegerTemplate<uint32_t>(*v).write(out, legacy);
  } else {
    BerNull().write(out, legacy);
  }
}

BerValue* UintOrNullField::fill(native& v, uint32_t tag, bool, ElementSlot& slot) {
  if (tag == BE_NULL) {
    v.reset();
    return slot.keep(std::make_unique<BerNull>());
  }
  if (tag != BE_INTEGER) tag_mismatch(tag, "BE_INTEGER or BE_NULL");
  v.emplace(0);
  return slot.keep(std::make_unique<BerIntegerTemplate<uint32_t>>(
      &*v, BerIntegerTemplate<uint32_t>::kLowest, BerIntegerTemplate<uint32_t>::kHighest));
}

}  // namespace protocol
