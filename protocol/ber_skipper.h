// Stand-ins for elements the reader doesn't know (a newer peer may add
// elements at the end of a sequence): they accept any content and keep
// nothing, so an unknown element costs no memory. They are never written or
// ordered: write(), operator< and operator> on them are fatal assertions
// ("BerPrimitiveSkipper::write invoked", "Cannot call operator< for
// BerPrimitiveSkipper", ...). Two skippers of one class and tag are equal.
#pragma once

#include <string>

#include "base/fatal.h"
#include "protocol/ber_value.h"

namespace protocol {

// What both skippers share; Base is BerPrimitive or BerConstructed.
template <class Base>
class Skipper : public Base {
 public:
  explicit Skipper(uint32_t tag) : tag_(tag) {}

  uint32_t tag(bool) const override { return tag_; }
  void readDone() override {}
  bool operator<(const BerValue&) const override {
    assertion_failed(std::string("Cannot call operator< for ") + name());
  }
  bool operator>(const BerValue&) const override {
    assertion_failed(std::string("Cannot call operator> for ") + name());
  }
  void write(BerOutput&, bool) const override {
    assertion_failed(std::string(name()) + "::write invoked");
  }
  int compare(const BerValue& other) const override {
    const Skipper* o = same_class(*this, other);
    if (o == nullptr) return this->compare_classes(other);
    return tag_ == o->tag_ ? 0 : (tag_ < o->tag_ ? -1 : 1);
  }

 protected:
  // The class's name in the assertion texts.
  virtual const char* name() const = 0;

 private:
  uint32_t tag_;
};

class BerPrimitiveSkipper final : public Skipper<BerPrimitive> {
 public:
  using Skipper::Skipper;
  std::unique_ptr<BerValue> clone() const override;
  void reserve(size_t) override {}
  void append(const uint8_t*, size_t) override {}

 protected:
  const char* name() const override { return "BerPrimitiveSkipper"; }
};

class BerConstructedSkipper final : public Skipper<BerConstructed> {
 public:
  using Skipper::Skipper;
  std::unique_ptr<BerValue> clone() const override;
  // Every element, whatever its tag, is skipped in turn.
  BerValue* element(uint32_t index, uint32_t tag, bool legacy) override;
  uint32_t required_elements() const override { return 0; }
  bool open_ended() const override { return true; }

 protected:
  const char* name() const override { return "BerConstructedSkipper"; }
};

}  // namespace protocol
