#include "base/bignum.h"

#include <algorithm>
#include <cstring>

#include "base/fatal.h"

namespace {

constexpr uint32_t kMaxShares = 1000;

uint32_t* new_block(size_t words) {
  uint32_t* block = new uint32_t[words + 1]();
  block[0] = 1;
  return block + 1;
}

void free_block(uint32_t* digits, size_t capacity) {
  std::fill(digits - 1, digits + capacity, 0u);
  delete[](digits - 1);
}

}  // namespace

BigNum::BigNum(uint32_t word) {
  if (word == 0) return;
  grow(1);
  digits_[0] = word;
}

BigNum::BigNum(const BigNum& other)
    : digits_(other.digits_), used_(other.used_), capacity_(other.capacity_) {
  if (digits_ == nullptr) return;
  uint32_t& count = digits_[-1];
  if (count == 0 || count >= kMaxShares) assertion_failed("BigNum share count out of range");
  ++count;
}

BigNum& BigNum::operator=(const BigNum& other) {
  if (this != &other) {
    BigNum copy(other);
    *this = std::move(copy);
  }
  return *this;
}

BigNum::BigNum(BigNum&& other) noexcept
    : digits_(other.digits_), used_(other.used_), capacity_(other.capacity_) {
  other.digits_ = nullptr;
  other.used_ = other.capacity_ = 0;
}

BigNum& BigNum::operator=(BigNum&& other) noexcept {
  if (this != &other) {
    release();
    std::swap(digits_, other.digits_);
    std::swap(used_, other.used_);
    std::swap(capacity_, other.capacity_);
  }
  return *this;
}

BigNum::~BigNum() { release(); }

void BigNum::release() {
  if (digits_ != nullptr && --digits_[-1] == 0) free_block(digits_, capacity_);
  digits_ = nullptr;
  used_ = capacity_ = 0;
}

void BigNum::grow(size_t n) {
  TAVREL_ASSERT(n >= used_, "Bad reallocation in BigNum");
  const bool shared = digits_ != nullptr && digits_[-1] > 1;
  if (!shared && digits_ != nullptr && capacity_ >= n) {
    std::fill(digits_ + used_, digits_ + n, 0u);
    used_ = n;
    return;
  }
  if (n == 0) {  // Nothing to hold: leave a shared block to the others.
    release();
    return;
  }
  uint32_t* fresh = new_block(n);
  std::copy(digits_, digits_ + used_, fresh);
  release();
  digits_ = fresh;
  used_ = n;
  capacity_ = n;
}

void BigNum::trim() {
  while (used_ > 0 && digits_[used_ - 1] == 0) --used_;
}

bool BigNum::operator==(const BigNum& b) const {
  return used_ == b.used_ && std::equal(digits_, digits_ + used_, b.digits_);
}

bool BigNum::operator<(const BigNum& b) const {
  if (used_ != b.used_) return used_ < b.used_;
  for (size_t i = used_; i-- > 0;) {
    if (digits_[i] != b.digits_[i]) return digits_[i] < b.digits_[i];
  }
  return false;
}

BigNum BigNum::operator+(const BigNum& b) const {
  // Room for the carry: a word more when a top word of full length has
  // its top bit set, or when both are 0.
  size_t n = std::max(used_, b.used_);
  if (n == 0 || (word(n - 1) | b.word(n - 1)) & 0x80000000u) ++n;
  BigNum sum;
  sum.grow(n);
  uint64_t carry = 0;
  for (size_t i = 0; i < n; ++i) {
    carry += uint64_t{word(i)} + b.word(i);
    sum.digits_[i] = static_cast<uint32_t>(carry);
    carry >>= 32;
  }
  sum.trim();
  return sum;
}

void BigNum::shiftLeft(int bits) {
  for (int b = 0; b < bits; ++b) {
    if (used_ == 0 || (digits_[used_ - 1] & 0x80000000u) != 0) {
      grow(used_ + 1);
    } else {
      unshare();
    }
    uint32_t carry = 0;
    for (size_t i = 0; i < used_; ++i) {
      const uint32_t top = digits_[i] >> 31;
      digits_[i] = (digits_[i] << 1) | carry;
      carry = top;
    }
    TAVREL_ASSERT(carry == 0, "Shift error in BigNum");
    trim();
  }
}

BigNum BigNum::fromBytes(const std::vector<uint8_t>& bytes) {
  BigNum value;
  for (size_t i = bytes.size(); i-- > 0;) {
    value.shiftLeft(8);
    value = value + BigNum(bytes[i]);
  }
  return value;
}

std::vector<uint8_t> BigNum::toBytes(size_t minLength) const {
  std::vector<uint8_t> bytes;
  for (size_t i = 0; i < used_; ++i) {
    for (int k = 0; k < 4; ++k) bytes.push_back(static_cast<uint8_t>(digits_[i] >> (8 * k)));
  }
  while (!bytes.empty() && bytes.back() == 0) bytes.pop_back();
  if (bytes.size() < minLength) bytes.resize(minLength, 0);
  return bytes;
}

BigNum BigNum::fromBigEndian(const uint8_t* data, size_t n) {
  BigNum value;
  value.grow((n + 3) / 4);
  for (size_t i = 0; i < n; ++i) {
    uint32_t& w = value.digits_[(n - 1 - i) / 4];
    w = (w << 8) | data[i];
  }
  value.trim();
  return value;
}

void BigNum::bn_get_data(uint8_t* buffer, size_t& size) const {
  const size_t wanted = 4 * used_;
  if (size < wanted) {
    assertion_failed("Buffer given to bn_get_data is too small (wanted " + std::to_string(wanted));
  }
  uint8_t* out = buffer + size - wanted;
  for (size_t i = 0; i < used_; ++i) {
    const uint32_t w = digits_[used_ - 1 - i];
    for (int k = 0; k < 4; ++k) out[4 * i + k] = static_cast<uint8_t>(w >> (24 - 8 * k));
  }
  size_t skip = 0;
  while (skip < wanted && out[skip] == 0) ++skip;
  const size_t remaining = wanted - skip;
  // The value 0 may come with no buffer at all (the data of an empty vector):
  // memmove and memset take no null pointer, not even for 0 bytes.
  if (remaining > 0) std::memmove(buffer, out + skip, remaining);
  if (size > remaining) std::memset(buffer + remaining, 0, size - remaining);
  size = remaining;
}

uint32_t BigNum::divideSmall(uint32_t divisor) {
  unshare();
  uint64_t rest = 0;
  for (size_t i = used_; i-- > 0;) {
    const uint64_t current = (rest << 32) | digits_[i];
    digits_[i] = static_cast<uint32_t>(current / divisor);
    rest = current % divisor;
  }
  trim();
  return static_cast<uint32_t>(rest);
}

std::string BigNum::text() const {
  if (used_ == 0) return "0";
  BigNum copy = *this;
  std::string digits;
  while (copy.used_ > 0)
    digits.insert(digits.begin(), static_cast<char>('0' + copy.divideSmall(10)));
  return digits;
}
