// Integers of four native kinds, with bounds, and the enumerations on top.
//
// Content is two's complement in the fewest bytes. The unsigned kinds are
// coded as positive numbers, so they may take one byte more than their size:
// max_length is 4 (int32_t), 5 (uint32_t), 8 (int64_t), 9 (uint64_t). After
// reading and before writing the value must lie within [min, max]; else EBer
// "data out of range in BerIntegerTemplate<T>::readDone min <= value <= max"
// (">::write " when writing).
#pragma once

#include <cstdint>
#include <limits>
#include <type_traits>

#include "protocol/ber_short_value.h"
#include "protocol/ber_target.h"

namespace protocol {

template <class T>
class BerIntegerTemplate : public BerShortValue {
 public:
  static constexpr size_t kMaxLength = sizeof(T) + (std::is_unsigned_v<T> ? 1 : 0);
  static constexpr T kLowest = std::numeric_limits<T>::min();
  static constexpr T kHighest = std::numeric_limits<T>::max();

  // A value that owns its native integer.
  explicit BerIntegerTemplate(T value = 0, T min = kLowest, T max = kHighest,
                              uint32_t tag = BE_INTEGER)
      : BerShortValue(tag, kMaxLength), target_(value), min_(min), max_(max) {}
  // A value that reads into and writes from *target, which the caller keeps.
  BerIntegerTemplate(T* target, T min, T max, uint32_t tag = BE_INTEGER)
      : BerShortValue(tag, kMaxLength), target_(target), min_(min), max_(max) {}

  std::unique_ptr<BerValue> clone() const override;
  void readDone() override;
  void write(BerOutput& out, bool legacy) const override;
  int compare(const BerValue& other) const override;

  T value() const { return target_.value(); }
  T min() const { return min_; }
  T max() const { return max_; }

 private:
  // Raises the range fault for `value`; `where` is "readDone" or "write".
  [[noreturn]] void out_of_range(const char* where, T value) const;
  T decode() const;

  Target<T> target_;
  T min_;
  T max_;
};

extern template class BerIntegerTemplate<int32_t>;
extern template class BerIntegerTemplate<uint32_t>;
extern template class BerIntegerTemplate<int64_t>;
extern template class BerIntegerTemplate<uint64_t>;

// An enumeration of the catalogue: a signed 32-bit integer tagged
// BE_ENUMERATED. The catalogue names no members, so any value a peer sends
// is carried unchanged.
template <class Self>
class BerEnumerated : public BerIntegerTemplate<int32_t> {
 public:
  explicit BerEnumerated(int32_t value = 0)
      : BerIntegerTemplate(value, kLowest, kHighest, BE_ENUMERATED) {}
  // The value is read into *target later, so it can't point to const.
  explicit BerEnumerated(int32_t* target)  // NOLINT(readability-non-const-parameter)
      : BerIntegerTemplate(target, kLowest, kHighest, BE_ENUMERATED) {}

  std::unique_ptr<BerValue> clone() const override {
    return std::make_unique<Self>(static_cast<const Self&>(*this));
  }
};

}  // namespace protocol
