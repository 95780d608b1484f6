#include "email/encoder_streambuf.h"

#include "base/error.h"
#include "base/fatal.h"

namespace email {

EncoderStreambuf::EncoderStreambuf(std::ostream& target) : target_(target), buffer_(kBufferSize) {}

void EncoderStreambuf::finish() {
  if (finished_) return;
  finished_ = true;
  writeTail();
  drain();
}

void EncoderStreambuf::finishQuietly() noexcept {
  try {
    finish();
  } catch (...) {
    // The target stream is in a failed state, and its owner learns of that
    // from the stream itself.
  }
}

char* EncoderStreambuf::reserve(std::size_t n) {
  TAVREL_ASSERT(n <= kBufferSize, "EncoderStreambuf::reserve beyond the buffer");
  if (length_ + n > buffer_.size()) drain();
  return buffer_.data() + length_;
}

EncoderStreambuf::int_type EncoderStreambuf::overflow(int_type c) {
  if (traits_type::eq_int_type(c, traits_type::eof())) return traits_type::not_eof(c);
  const auto byte = static_cast<unsigned char>(traits_type::to_char_type(c));
  encode(&byte, 1);
  return c;
}

std::streamsize EncoderStreambuf::xsputn(const char* s, std::streamsize n) {
  encode(reinterpret_cast<const unsigned char*>(s), static_cast<std::size_t>(n));
  return n;
}

int EncoderStreambuf::sync() {
  drain();
  return 0;
}

void EncoderStreambuf::drain() {
  if (length_ == 0) return;
  const auto n = static_cast<std::streamsize>(length_);
  length_ = 0;
  target_.write(buffer_.data(), n);
  if (!target_) throw error::ESystemError("Writing the encoded mail text failed");
}

}  // namespace email
