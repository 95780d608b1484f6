// The common ground of the content encoders: a write-only stream buffer that
// turns the bytes written to it into encoded text and passes that on to a
// target stream.
//
// An encoder has no put area, so each character that a stream writes reaches
// it at once through overflow(); bulk writes come through xsputn(), which
// gives the same bytes as the same characters written one by one. Encoded
// text gathers in an output buffer of the encoder's own and goes to the
// target when that is full, on sync() (a flush of the stream over it), and
// at finish().
//
// Failure: when the target stream refuses what is written to it, the write
// raises error::ESystemError, unless the target raises its own exception
// first, which then passes through unchanged. A stream over the encoder
// passes these on only if its exception mask has badbit set (see
// UnstructuredMimeBody::writeBody).
//
// Not thread-safe; the target must outlive the encoder.
#pragma once

#include <cstddef>
#include <ostream>
#include <streambuf>
#include <vector>

namespace email {

class EncoderStreambuf : public std::streambuf {
 public:
  explicit EncoderStreambuf(std::ostream& target);
  EncoderStreambuf(const EncoderStreambuf&) = delete;
  EncoderStreambuf& operator=(const EncoderStreambuf&) = delete;

  // Writes what the encoding holds back (padding, a held blank, the last
  // line end) and passes all output to the target. Later calls do nothing.
  // Raises as described above.
  void finish();

 protected:
  // Derived destructors call this: finish() with any failure swallowed, as
  // a destructor must not raise. The failure shows on the target stream.
  void finishQuietly() noexcept;

  // Encodes the `n` bytes at `in`, in order, into the output buffer. Both
  // overflow() and xsputn() come here, so per-character and bulk writes
  // give the same bytes.
  virtual void encode(const unsigned char* in, std::size_t n) = 0;
  // Writes the held-back tail into the output buffer.
  virtual void writeTail() = 0;

  // Gives room for at least `n` characters (n <= kBufferSize) at the end of
  // the output buffer, passing the buffer to the target first when needed.
  char* reserve(std::size_t n);
  // Marks the output up to `end`, a pointer into the room of reserve(), as
  // written.
  void commit(const char* end) { length_ = static_cast<std::size_t>(end - buffer_.data()); }

  int_type overflow(int_type c) override;
  std::streamsize xsputn(const char* s, std::streamsize n) override;
  int sync() override;

  static constexpr std::size_t kBufferSize = 64 * 1024;

 private:
  // Passes the output buffer to the target.
  void drain();

  std::ostream& target_;
  std::vector<char> buffer_;
  std::size_t length_ = 0;
  bool finished_ = false;
};

}  // namespace email
