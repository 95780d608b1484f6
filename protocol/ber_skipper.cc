#include "protocol/ber_skipper.h"

#include "base/fatal.h"

namespace protocol {

namespace {

// Skippers keep nothing, so two of the same class and tag are equal.
int compare_skippers(const BerValue& self, const BerValue& other) {
  if (typeid(self) != typeid(other)) return self.compare_classes(other);
  uint32_t a = self.tag(false), b = other.tag(false);
  return a == b ? 0 : (a < b ? -1 : 1);
}

}  // namespace

std::unique_ptr<BerValue> BerPrimitiveSkipper::clone() const {
  return std::make_unique<BerPrimitiveSkipper>(tag_);
}

bool BerPrimitiveSkipper::operator<(const BerValue&) const {
  assertion_failed("Cannot call operator< for BerPrimitiveSkipper");
}

bool BerPrimitiveSkipper::operator>(const BerValue&) const {
  assertion_failed("Cannot call operator> for BerPrimitiveSkipper");
}

void BerPrimitiveSkipper::write(BerOutput&, bool) const {
  assertion_failed("BerPrimitiveSkipper::write invoked");
}

int BerPrimitiveSkipper::compare(const BerValue& other) const {
  return compare_skippers(*this, other);
}

std::unique_ptr<BerValue> BerConstructedSkipper::clone() const {
  return std::make_unique<BerConstructedSkipper>(tag_);
}

bool BerConstructedSkipper::operator<(const BerValue&) const {
  assertion_failed("Cannot call operator< for BerConstructedSkipper");
}

bool BerConstructedSkipper::operator>(const BerValue&) const {
  assertion_failed("Cannot call operator> for BerConstructedSkipper");
}

void BerConstructedSkipper::write(BerOutput&, bool) const {
  assertion_failed("BerConstructedSkipper::write invoked");
}

int BerConstructedSkipper::compare(const BerValue& other) const {
  return compare_skippers(*this, other);
}

BerValue* BerConstructedSkipper::element(uint32_t index, uint32_t tag, bool) {
  note_element(index);
  return skip(tag);
}

}  // namespace protocol
