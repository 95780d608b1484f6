// Base64 content encoding (RFC 2045) as a stream buffer.
//
// Three input bytes become four characters of the standard alphabet; a line
// holds 76 characters and ends in CR LF. At the end, one or two bytes still
// held are written with "==" or "=" and CR LF, and a line that is still open
// then gets its CR LF too. So a text whose last line has a full group before
// the padding ends in an empty line, which decoders ignore.
//
// Every byte, CR and LF included, is data: nothing is treated as a line end.
// Output and failure as in EncoderStreambuf.
#pragma once

#include <cstdint>

#include "email/encoder_streambuf.h"

namespace email {

class Base64Streambuf final : public EncoderStreambuf {
 public:
  explicit Base64Streambuf(std::ostream& target) : EncoderStreambuf(target) {}
  ~Base64Streambuf() override { finishQuietly(); }

  static constexpr int kLineLength = 76;

 protected:
  void encode(const unsigned char* in, std::size_t n) override;
  void writeTail() override;

 private:
  void addByte(unsigned char c);
  // Writes the four characters of the three bytes held, and the line end
  // when the line is full.
  void writeGroup();

  uint32_t accumulator_ = 0;
  int held_ = 0;  // bytes in accumulator_, 0 to 2 between calls
  int column_ = 0;
};

}  // namespace email
