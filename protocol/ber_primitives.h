// The primitive values besides the integers: booleans, reals, NULL and
// strings. Each either owns its native value or reads into and writes from
// a target that the caller keeps alive (see ber_target.h).
#pragma once

#include <string>

#include "protocol/ber_short_value.h"
#include "protocol/ber_target.h"

namespace protocol {

// One content byte, written 1 or 0. Read: false if the content is empty or
// its first byte is 0, true otherwise.
class BerBoolean final : public BerShortValue {
 public:
  explicit BerBoolean(bool value = false) : BerShortValue(BE_BOOLEAN, 1), target_(value) {}
  explicit BerBoolean(bool* target) : BerShortValue(BE_BOOLEAN, 1), target_(target) {}

  std::unique_ptr<BerValue> clone() const override;
  void readDone() override;
  void write(BerOutput& out, bool legacy) const override;
  int compare(const BerValue& other) const override;
  bool value() const { return target_.value(); }

 private:
  Target<bool> target_;
};

// A double. Content: empty for 0 (and -0), 0x40 for +infinity, 0x41 for
// -infinity, 0x60 for NaN, otherwise 0x00 and the value in printf's "%e"
// form. Reading maps 0x60 to 0.0. Faults: "Parse error in real number",
// "Unsupported real number format revceived".
class BerReal final : public BerShortValue {
 public:
  static constexpr size_t kMaxLength = 60;

  explicit BerReal(double value = 0.0) : BerShortValue(BE_REAL, kMaxLength), target_(value) {}
  explicit BerReal(double* target) : BerShortValue(BE_REAL, kMaxLength), target_(target) {}

  std::unique_ptr<BerValue> clone() const override;
  void readDone() override;
  void write(BerOutput& out, bool legacy) const override;
  // NaN orders after every number and equals NaN, so that values holding
  // reals have a total order.
  int compare(const BerValue& other) const override;
  double value() const { return target_.value(); }

 private:
  Target<double> target_;
};

// Three-way comparison of doubles with NaN after every number.
int compare_reals(double a, double b);

// NULL: no content.
class BerNull final : public BerShortValue {
 public:
  BerNull() : BerShortValue(BE_NULL, 0) {}

  std::unique_ptr<BerValue> clone() const override;
  void readDone() override {}
  void write(BerOutput& out, bool legacy) const override;
  int compare(const BerValue& other) const override;
};

// A string of bytes with a per-field limit. Tagged BE_STRING_LEGACY in the
// legacy generation, BE_STRING_CURRENT otherwise. A longer string raises EBer
// "String exceeds allowed length <n> > <limit>", in reserve() before any
// allocation and in write().
class BerString final : public BerPrimitive {
 public:
  explicit BerString(size_t limit, std::string value = {})
      : target_(std::move(value)), limit_(limit) {}
  BerString(std::string* target, size_t limit) : target_(target), limit_(limit) {}

  std::unique_ptr<BerValue> clone() const override;
  uint32_t tag(bool legacy) const override { return string_tag(legacy); }
  void readDone() override {}
  void write(BerOutput& out, bool legacy) const override;
  int compare(const BerValue& other) const override;
  void reserve(size_t length) override;
  void append(const uint8_t* bytes, size_t n) override;

  const std::string& value() const { return target_.value(); }
  size_t limit() const { return limit_; }

 private:
  void check_length(size_t length) const;

  Target<std::string> target_;
  size_t limit_;
  size_t length_ = 0;  // As announced by reserve().
};

}  // namespace protocol
