// Dot-stuffing for the DATA phase of SMTP: a "." at the start of a line gets
// a second "." in front, so that no line of the message reads as the end of
// the data. The first character counts as a line start. Line ends must
// already be CR LF; they are passed on untouched.
//
// Unbuffered: characters go straight to the target stream, which must
// outlive this buffer. Bulk writes produce the same bytes as per-character
// ones, in fewer calls. End of file written to it is a no-op (it is never
// passed on, as it would close a socket stream). A failure of the target
// shows as the target's exception or as a failed write.
#pragma once

#include <ostream>
#include <streambuf>

namespace email {

class SmtpEscapeStreambuf final : public std::streambuf {
 public:
  explicit SmtpEscapeStreambuf(std::ostream& stream) : stream_(&stream) {}
  SmtpEscapeStreambuf(const SmtpEscapeStreambuf&) = delete;
  SmtpEscapeStreambuf& operator=(const SmtpEscapeStreambuf&) = delete;

 protected:
  int_type overflow(int_type c) override;
  std::streamsize xsputn(const char* s, std::streamsize n) override;
  // Flushes the target.
  int sync() override;

 private:
  std::ostream* stream_;  // not owned
  bool atLineStart_ = true;
};

}  // namespace email
