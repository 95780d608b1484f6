#include "email/base64_streambuf.h"

namespace email {
namespace {

constexpr char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

// Writes the base64 characters of the low `count` sextets of `bits`, the
// highest first.
inline char* putSextets(uint32_t bits, int count, char* p) {
  for (int shift = 6 * (count - 1); shift >= 0; shift -= 6) *p++ = kAlphabet[(bits >> shift) & 63];
  return p;
}

}  // namespace

void Base64Streambuf::addByte(unsigned char c) {
  accumulator_ = accumulator_ << 8 | c;
  if (++held_ == 3) writeGroup();
}

void Base64Streambuf::writeGroup() {
  char* p = putSextets(accumulator_, 4, reserve(6));
  column_ += 4;
  if (column_ >= kLineLength) {
    *p++ = '\r';
    *p++ = '\n';
    column_ = 0;
  }
  commit(p);
  accumulator_ = 0;
  held_ = 0;
}

// The same groups and line ends as addByte, a line at a time: first the
// bytes that complete a group already begun, then whole groups, then the
// rest byte by byte.
void Base64Streambuf::encode(const unsigned char* in, std::size_t n) {
  const auto* const end = in + n;
  while (held_ != 0 && in != end) addByte(*in++);
  while (end - in >= 3) {
    char* p = reserve(kLineLength + 2);
    int column = column_;
    while (end - in >= 3 && column < kLineLength) {
      const uint32_t group = uint32_t{in[0]} << 16 | uint32_t{in[1]} << 8 | in[2];
      p[0] = kAlphabet[group >> 18];
      p[1] = kAlphabet[(group >> 12) & 63];
      p[2] = kAlphabet[(group >> 6) & 63];
      p[3] = kAlphabet[group & 63];
      p += 4;
      in += 3;
      column += 4;
    }
    if (column >= kLineLength) {
      *p++ = '\r';
      *p++ = '\n';
      column = 0;
    }
    column_ = column;
    commit(p);
  }
  while (in != end) addByte(*in++);
}

void Base64Streambuf::writeTail() {
  char* p = reserve(8);
  if (held_ == 1) {
    p = putSextets(accumulator_ << 4, 2, p);
    for (char c : {'=', '=', '\r', '\n'}) *p++ = c;
  } else if (held_ == 2) {
    p = putSextets(accumulator_ << 2, 3, p);
    for (char c : {'=', '\r', '\n'}) *p++ = c;
  }
  if (column_ != 0) {
    *p++ = '\r';
    *p++ = '\n';
  }
  commit(p);
  accumulator_ = 0;
  held_ = 0;
  column_ = 0;
}

}  // namespace email
