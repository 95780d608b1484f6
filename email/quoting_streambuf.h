// Quoted-printable content encoding (RFC 2045) as a stream buffer, for text.
//
// Rules, per input byte:
// - CR is dropped and LF is the line end, written as CR LF: input line ends
//   are taken to be text line ends, so this encoder is for text only.
// - Codes 33 to 60 and 62 to 126 are written as they are; "=", control
//   characters and 8-bit bytes as "=" and two upper-case hex digits.
// - A blank or tab is held back until the next byte: before a line end (or
//   the end of the text) it is written in hex, else as it is. So no white
//   space ever stands unquoted at a line end.
// - A line holds at most 75 encoded characters; the piece (1 or 3
//   characters) that would pass that goes to the next line behind a soft
//   break, "=" CR LF.
// At the end a held blank is written in hex, and an open line is closed by
// a soft break, so the decoded text ends exactly where the input did.
//
// Output and failure as in EncoderStreambuf.
#pragma once

#include "email/encoder_streambuf.h"

namespace email {

class QuotingStreambuf final : public EncoderStreambuf {
 public:
  explicit QuotingStreambuf(std::ostream& target) : EncoderStreambuf(target) {}
  ~QuotingStreambuf() override { finishQuietly(); }

  static constexpr int kLineLimit = 75;

 protected:
  void encode(const unsigned char* in, std::size_t n) override;
  void writeTail() override;

 private:
  // The most characters that one input byte can produce: a held blank and
  // the byte in hex, each behind a soft break.
  static constexpr std::size_t kMaxPerByte = 12;

  // Encodes one byte at `p`, which has room for kMaxPerByte characters, and
  // gives the end of what it wrote.
  inline char* encodeByte(unsigned char c, char* p);
  // Makes room on the line for `n` more characters, with a soft break when
  // they would pass the limit.
  inline char* advance(int n, char* p);
  inline char* putLiteral(unsigned char c, char* p);
  inline char* putHex(unsigned char c, char* p);

  int column_ = 0;
  unsigned char pending_ = 0;  // a held blank or tab; 0 when none
};

}  // namespace email
