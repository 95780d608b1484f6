// BerBigNum: a BigNum as the content of a BE_INTEGER, the number's bytes most
// significant first, without leading zero bytes (0 has an empty content).
// At most 1040 bytes, in reading and in writing; more raises EBer "Data value
// exceeds maximum allowed length <n> > 1040".
#pragma once

#include "base/bignum.h"
#include "protocol/ber_short_value.h"
#include "protocol/ber_target.h"

namespace protocol {

class BerBigNum final : public BerShortValue {
 public:
  static constexpr size_t kMaxLength = 1040;

  explicit BerBigNum(BigNum value = BigNum())
      : BerShortValue(BE_INTEGER, kMaxLength), target_(value) {}
  explicit BerBigNum(BigNum* target) : BerShortValue(BE_INTEGER, kMaxLength), target_(target) {}

  std::unique_ptr<BerValue> clone() const override;
  void readDone() override;
  void write(BerOutput& out, bool legacy) const override;
  int compare(const BerValue& other) const override;
  const BigNum& value() const { return target_.value(); }

 private:
  Target<BigNum> target_;
};

}  // namespace protocol
