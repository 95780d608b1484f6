// BigNum: an unsigned integer of any size, the `bignum` value of stored
// objects.
//
// The digits are 32-bit words, least significant first, in a heap block
// whose word just before the first digit counts the holders. Copies share
// the block; an operation that changes a value unshares it first. The
// count stays between 1 and 1000: a copy that finds it otherwise stops the
// process (a fatal assertion), since that means a damaged block. Blocks
// are wiped with zeros before they are freed. A value has no leading zero
// word, and 0 has no words at all.
//
// Not thread-safe: the count has no lock.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

class BigNum {
 public:
  // 0.
  BigNum() = default;
  explicit BigNum(uint32_t word);
  BigNum(const BigNum& other);
  BigNum& operator=(const BigNum& other);
  BigNum(BigNum&& other) noexcept;
  BigNum& operator=(BigNum&& other) noexcept;
  ~BigNum();

  bool operator==(const BigNum& b) const;
  // Fewer words is less; at equal length the words decide from the top.
  bool operator<(const BigNum& b) const;
  bool operator>(const BigNum& b) const { return b < *this; }
  BigNum operator+(const BigNum& b) const;

  // Multiplies by 2 to the power `bits`; nothing for bits below 1.
  void shiftLeft(int bits);

  // The stored byte string: least significant byte first. Any string is a
  // valid number, so reading never fails.
  static BigNum fromBytes(const std::vector<uint8_t>& bytes);
  // The byte string, padded with zero bytes to at least `minLength` bytes.
  std::vector<uint8_t> toBytes(size_t minLength) const;

  // Big-endian access: the value of `n` bytes, most significant first.
  static BigNum fromBigEndian(const uint8_t* data, size_t n);
  // Writes the value big-endian without leading zero bytes to the start of
  // `buffer` (of `size` bytes), zeroes the rest, and sets `size` to the
  // number of bytes written. A buffer shorter than 4 bytes per word is the
  // fatal assertion "Buffer given to bn_get_data is too small (wanted " N.
  void bn_get_data(uint8_t* buffer, size_t& size) const;

  // Decimal text; 0 is "0".
  std::string text() const;

  size_t used() const { return used_; }
  size_t capacity() const { return capacity_; }
  // Word `i` (least significant first), 0 beyond `used`.
  uint32_t word(size_t i) const { return i < used_ ? digits_[i] : 0; }
  // The number of holders of the block; 0 for a value without one.
  uint32_t shareCount() const { return digits_ ? digits_[-1] : 0; }

 private:
  // Makes the value the only holder of a block of at least `n` words and
  // sets `used` to `n`; new words are 0. `n` below `used` is the fatal
  // assertion "Bad reallocation in BigNum".
  void grow(size_t n);
  // Gives up the block: the last holder wipes and frees it.
  void release();
  // Drops zero words at the top.
  void trim();
  // Divides by a small number in place and gives the remainder.
  uint32_t divideSmall(uint32_t divisor);
  // Makes the value the only holder of its block.
  void unshare() { grow(used_); }

  uint32_t* digits_ = nullptr;  // Just behind the count word; null for 0.
  size_t used_ = 0;
  size_t capacity_ = 0;
};
