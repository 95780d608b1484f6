#include "email/smtp_escape_streambuf.h"

#include <cstring>

namespace email {

SmtpEscapeStreambuf::int_type SmtpEscapeStreambuf::overflow(int_type c) {
  if (traits_type::eq_int_type(c, traits_type::eof())) return traits_type::not_eof(c);
  const char ch = traits_type::to_char_type(c);
  if (atLineStart_ && ch == '.') stream_->put('.');
  stream_->put(ch);
  atLineStart_ = ch == '\n';
  return *stream_ ? c : traits_type::eof();
}

// Writes a line at a time: the extra dot when the line starts with one,
// then everything up to and including the next line feed.
std::streamsize SmtpEscapeStreambuf::xsputn(const char* s, std::streamsize n) {
  const char* const end = s + n;
  while (s != end && *stream_) {
    if (atLineStart_ && *s == '.') stream_->put('.');
    const void* lf = std::memchr(s, '\n', static_cast<std::size_t>(end - s));
    const char* stop = lf ? static_cast<const char*>(lf) + 1 : end;
    stream_->write(s, stop - s);
    atLineStart_ = stop[-1] == '\n';
    s = stop;
  }
  return *stream_ ? n : 0;
}

int SmtpEscapeStreambuf::sync() {
  stream_->flush();
  return *stream_ ? 0 : -1;
}

}  // namespace email
