#include "protocol/ber_value.h"

#include <typeinfo>

#include "protocol/ber_skipper.h"

namespace protocol {

std::string tag_words(uint32_t tag) {
  switch (tag) {
    case BE_BOOLEAN:
      return "BE_BOOLEAN";
    case BE_INTEGER:
      return "BE_INTEGER";
    case BE_STRING_CURRENT:
      return "BE_STRING_CURRENT";
    case BE_STRING_LEGACY:
      return "BE_STRING_LEGACY";
    case BE_NULL:
      return "BE_NULL";
    case BE_REAL:
      return "BE_REAL";
    case BE_ENUMERATED:
      return "BE_ENUMERATED";
    case BE_SEQ_CURRENT:
      return "BE_SEQ_CURRENT";
    case BE_SEQ_LEGACY:
      return "BE_SEQ_LEGACY";
    case BE_SET_CURRENT:
      return "BE_SET_CURRENT";
    case BE_SET_LEGACY:
      return "BE_SET_LEGACY";
  }
  return std::to_string(tag);
}

int BerValue::compare_classes(const BerValue& other) const {
  uint32_t mine = tag(false), theirs = other.tag(false);
  if (mine != theirs) return mine < theirs ? -1 : 1;
  if (typeid(*this) == typeid(other)) return 0;
  return typeid(*this).before(typeid(other)) ? -1 : 1;
}

BerValue* BerConstructed::skip(uint32_t tag) {
  if (is_constructed(tag)) return slot_.keep(std::make_unique<BerConstructedSkipper>(tag));
  return slot_.keep(std::make_unique<BerPrimitiveSkipper>(tag));
}

void tag_mismatch(uint32_t got, const std::string& expected) {
  throw EBer("Tag mismatch, got " + std::to_string(got) + " expected " + expected);
}

}  // namespace protocol
