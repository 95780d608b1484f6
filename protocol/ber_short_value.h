// BerShortValue: a primitive whose content is collected in a byte buffer of
// bounded size and decoded in readDone(). The integers, booleans, reals, big
// numbers and NULL derive from it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "protocol/ber_value.h"

namespace protocol {

class BerShortValue : public BerPrimitive {
 public:
  uint32_t tag(bool) const override { return tag_; }
  // Raises EBer "Data value exceeds maximum allowed length <n> > <max>".
  void reserve(size_t length) override;
  void append(const uint8_t* bytes, size_t n) override;

  size_t max_length() const { return max_length_; }

 protected:
  BerShortValue(uint32_t tag, size_t max_length) : tag_(tag), max_length_(max_length) {}
  BerShortValue(const BerShortValue& other)
      : BerPrimitive(), tag_(other.tag_), max_length_(other.max_length_) {}

  // The content read so far.
  const std::vector<uint8_t>& bytes() const { return bytes_; }
  // Writes tag, length and `content`.
  void write_content(BerOutput& out, const std::vector<uint8_t>& content) const;

 private:
  uint32_t tag_;
  size_t max_length_;
  size_t length_ = 0;  // As announced by reserve().
  std::vector<uint8_t> bytes_;
};

// Three-way comparison of two plain values.
template <class T>
int compare_values(const T& a, const T& b) {
  if (a < b) return -1;
  if (b < a) return 1;
  return 0;
}

}  // namespace protocol
