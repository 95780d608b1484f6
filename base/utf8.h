// Telling UTF-8 from other bytes. The database stores names and texts without
// saying in which character set they are; our worlds store UTF-8, older data
// may hold ISO-8859-1. Bytes that are no valid UTF-8 are read as ISO-8859-1,
// the one character set in which every byte is a character.
#pragma once

#include <cstddef>
#include <streambuf>
#include <string>
#include <string_view>

namespace text {

// The length of the valid UTF-8 sequence at the start of `bytes` (1 to 4),
// or 0 when they don't start with one: a stray continuation byte, an
// overlong form, a surrogate, a code point above U+10FFFF, or a sequence cut
// short by the end of `bytes`.
size_t utf8_sequence_length(std::string_view bytes);

// Whether all of `bytes` is valid UTF-8 (the empty text is).
bool is_valid_utf8(std::string_view bytes);

// `bytes` as UTF-8: valid sequences unchanged, every other byte read as
// ISO-8859-1 and converted.
std::string to_utf8(std::string_view bytes);

// A write-only stream buffer that passes what is written to it on to
// `target` as UTF-8, converting as to_utf8() does. A sequence that a write
// cuts in two is held until the next write completes or refutes it, or until
// finish(). sync() hands on what is complete and syncs the target.
class Utf8Streambuf : public std::streambuf {
 public:
  explicit Utf8Streambuf(std::streambuf& target);
  ~Utf8Streambuf() override;
  Utf8Streambuf(const Utf8Streambuf&) = delete;
  Utf8Streambuf& operator=(const Utf8Streambuf&) = delete;

  // Hands on everything, a held sequence read as ISO-8859-1; false when the
  // target refused bytes.
  bool finish();

 protected:
  int_type overflow(int_type c) override;
  std::streamsize xsputn(const char* s, std::streamsize n) override;
  int sync() override;

 private:
  // Converts the held bytes and the put area; holds back an unfinished tail
  // unless `final`.
  bool drain(bool final);

  std::streambuf& target_;
  std::string held_;  // the tail that may still become a sequence, then the put area's bytes
  char buffer_[4096];
  std::string out_;
};

}  // namespace text
