// Stand-ins for elements the reader doesn't know (a newer peer may add
// elements at the end of a sequence): they accept any content and keep
// nothing, so an unknown element costs no memory. They are never written or
// ordered: write(), operator< and operator> on them are fatal assertions.
#pragma once

#include "protocol/ber_value.h"

namespace protocol {

class BerPrimitiveSkipper final : public BerPrimitive {
 public:
  explicit BerPrimitiveSkipper(uint32_t tag) : tag_(tag) {}

  std::unique_ptr<BerValue> clone() const override;
  uint32_t tag(bool) const override { return tag_; }
  void readDone() override {}
  bool operator<(const BerValue& other) const override;
  bool operator>(const BerValue& other) const override;
  void write(BerOutput& out, bool legacy) const override;
  int compare(const BerValue& other) const override;
  void reserve(size_t) override {}
  void append(const uint8_t*, size_t) override {}

 private:
  uint32_t tag_;
};

class BerConstructedSkipper final : public BerConstructed {
 public:
  explicit BerConstructedSkipper(uint32_t tag) : tag_(tag) {}

  std::unique_ptr<BerValue> clone() const override;
  uint32_t tag(bool) const override { return tag_; }
  bool operator<(const BerValue& other) const override;
  bool operator>(const BerValue& other) const override;
  void write(BerOutput& out, bool legacy) const override;
  int compare(const BerValue& other) const override;
  // Every element, whatever its tag, is skipped in turn.
  BerValue* element(uint32_t index, uint32_t tag, bool legacy) override;
  uint32_t required_elements() const override { return 0; }
  bool open_ended() const override { return true; }

 private:
  uint32_t tag_;
};

}  // namespace protocol
