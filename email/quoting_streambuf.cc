#include "email/quoting_streambuf.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace email {
namespace {

enum ByteClass : uint8_t { kLiteral, kHex, kBlank, kReturn, kNewline };

constexpr std::array<uint8_t, 256> makeClasses() {
  std::array<uint8_t, 256> classes{};
  for (int c = 0; c < 256; ++c) {
    if (c == '\r') {
      classes[c] = kReturn;
    } else if (c == '\n') {
      classes[c] = kNewline;
    } else if (c == ' ' || c == '\t') {
      classes[c] = kBlank;
    } else if (c >= 33 && c <= 126 && c != '=') {
      classes[c] = kLiteral;
    } else {
      classes[c] = kHex;
    }
  }
  return classes;
}

constexpr std::array<uint8_t, 256> kClasses = makeClasses();
constexpr char kHexDigits[] = "0123456789ABCDEF";

// Input bytes taken per reserve() in encode().
constexpr std::size_t kChunk = 1024;

}  // namespace

char* QuotingStreambuf::advance(int n, char* p) {
  column_ += n;
  if (column_ > kLineLimit) {
    *p++ = '=';
    *p++ = '\r';
    *p++ = '\n';
    column_ = n;
  }
  return p;
}

char* QuotingStreambuf::putLiteral(unsigned char c, char* p) {
  p = advance(1, p);
  *p++ = static_cast<char>(c);
  return p;
}

char* QuotingStreambuf::putHex(unsigned char c, char* p) {
  p = advance(3, p);
  p[0] = '=';
  p[1] = kHexDigits[c >> 4];
  p[2] = kHexDigits[c & 15];
  return p + 3;
}

char* QuotingStreambuf::encodeByte(unsigned char c, char* p) {
  const uint8_t kind = kClasses[c];
  if (kind == kReturn) return p;
  if (kind == kNewline) {
    if (pending_ != 0) p = putHex(pending_, p);
    pending_ = 0;
    *p++ = '\r';
    *p++ = '\n';
    column_ = 0;
    return p;
  }
  if (pending_ != 0) p = putLiteral(pending_, p);
  pending_ = 0;
  if (kind == kBlank) {
    pending_ = c;
    return p;
  }
  return kind == kLiteral ? putLiteral(c, p) : putHex(c, p);
}

void QuotingStreambuf::encode(const unsigned char* in, std::size_t n) {
  const auto* const end = in + n;
  while (in != end) {
    const std::size_t count = std::min<std::size_t>(kChunk, static_cast<std::size_t>(end - in));
    char* p = reserve(count * kMaxPerByte);
    for (const auto* stop = in + count; in != stop; ++in) p = encodeByte(*in, p);
    commit(p);
  }
}

void QuotingStreambuf::writeTail() {
  char* p = reserve(kMaxPerByte);
  if (pending_ != 0) p = putHex(pending_, p);
  pending_ = 0;
  if (column_ > 0) {
    *p++ = '=';
    *p++ = '\r';
    *p++ = '\n';
  }
  column_ = 0;
  commit(p);
}

}  // namespace email
