#include "protocol/ber_encoding.h"

#include "base/fatal.h"

namespace protocol {

namespace {

void put_byte(BerOutput& out, uint8_t byte) { out.put(&byte, 1); }

}  // namespace

void write_tag(BerOutput& out, uint32_t tag) {
  if (tag < 248) {
    put_byte(out, static_cast<uint8_t>(((tag & 7) << 5) | (tag >> 3)));
    return;
  }
  uint32_t number = tag >> 3;
  TAVREL_ASSERT(number != 0, "Tag encoding failed");
  uint8_t bytes[6];
  size_t n = 0;
  bytes[n++] = static_cast<uint8_t>((tag & 7) * 32 + 31);
  int shift = 28;
  while (shift > 0 && (number >> shift) == 0) shift -= 7;
  for (; shift >= 0; shift -= 7) {
    uint8_t group = (number >> shift) & 0x7F;
    bytes[n++] = shift > 0 ? (group | 0x80) : group;
  }
  out.put(bytes, n);
}

void write_length(BerOutput& out, size_t length) {
  if (length < 128) {
    put_byte(out, static_cast<uint8_t>(length));
    return;
  }
  TAVREL_ASSERT(length <= 0xFFFFFFFFu, "BER length beyond 4 bytes");
  uint8_t bytes[5];
  size_t k = 0;
  for (size_t rest = length; rest != 0; rest >>= 8) ++k;
  bytes[0] = static_cast<uint8_t>(0x80 + k);
  for (size_t i = 0; i < k; ++i) bytes[k - i] = static_cast<uint8_t>(length >> (8 * i));
  out.put(bytes, k + 1);
}

void write_primitive(BerOutput& out, uint32_t tag, const uint8_t* content, size_t n) {
  write_tag(out, tag);
  write_length(out, n);
  if (n > 0) out.put(content, n);
}

void open_constructed(BerOutput& out, uint32_t tag) {
  write_tag(out, tag);
  put_byte(out, 0x80);
}

void close_constructed(BerOutput& out) {
  static const uint8_t kEnd[2] = {0, 0};
  out.put(kEnd, 2);
}

std::vector<uint8_t> signed_content(int64_t value) {
  std::vector<uint8_t> bytes;
  // Drop leading bytes while the next byte's top bit still carries the sign.
  int n = 8;
  while (n > 1) {
    int64_t top = value >> (8 * (n - 1) - 1);
    if (top != 0 && top != -1) break;
    --n;
  }
  for (int i = n - 1; i >= 0; --i) bytes.push_back(static_cast<uint8_t>(value >> (8 * i)));
  return bytes;
}

std::vector<uint8_t> unsigned_content(uint64_t value) {
  std::vector<uint8_t> bytes;
  int n = 1;
  while (n < 8 && (value >> (8 * n)) != 0) ++n;
  if ((value >> (8 * n - 1)) & 1) bytes.push_back(0);
  for (int i = n - 1; i >= 0; --i) bytes.push_back(static_cast<uint8_t>(value >> (8 * i)));
  return bytes;
}

}  // namespace protocol
