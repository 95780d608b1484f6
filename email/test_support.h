// Shared pieces of the mail tests: a body that attaches a picture while it
// is written, a recorder of the SMTP client's log, a small message, and the
// bytes that the DATA phase carries for it, and a stream target that refuses
// every write.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <ostream>
#include <streambuf>
#include <string>
#include <vector>

#include "email/message.h"
#include "email/mime_multipart.h"
#include "email/smtp_reply.h"

namespace email {

// A stream target that takes nothing: every write to it fails.
class RefusingBuf : public std::streambuf {
 protected:
  int_type overflow(int_type) override { return traits_type::eof(); }
};

// An HTML body that writes `html` and, while doing so, appends a base64
// picture of `picture` with content id "logo" to `related`, as a report's
// HTML body attaches the pictures it shows. Both texts must outlive it.
class HtmlWithPicture : public UnstructuredMimeBody {
 public:
  HtmlWithPicture(MimeMultipart& related, const std::string& html, const std::string& picture,
                  std::string pictureType = "image/png");

 protected:
  void writeContent(std::ostream& out) override;

 private:
  MimeMultipart& related_;
  const std::string& html_;
  const std::string& picture_;
  const std::string pictureType_;
};

// A quoted-printable text/plain leaf over `text`, which must outlive it,
// with the file name "a.txt" and no content id.
std::unique_ptr<DataMimeBody> textLeaf(const std::string& text);

struct LogLine {
  std::string text;
  bool isError;
  bool operator==(const LogLine&) const = default;
};
std::ostream& operator<<(std::ostream& os, const LogLine& line);

// Reads from a fixed script of server replies and keeps what is written.
class ScriptBuf : public std::streambuf {
 public:
  explicit ScriptBuf(std::string replies) : in_(std::move(replies)) {
    setg(in_.data(), in_.data(), in_.data() + in_.size());
  }
  std::string out;

 protected:
  int_type overflow(int_type c) override {
    if (!traits_type::eq_int_type(c, traits_type::eof())) out += traits_type::to_char_type(c);
    return traits_type::not_eof(c);
  }
  std::streamsize xsputn(const char* s, std::streamsize n) override {
    out.append(s, static_cast<std::size_t>(n));
    return n;
  }

 private:
  std::string in_;
};

// A fixture whose `log` records into `lines`.
class SmtpTest : public ::testing::Test {
 protected:
  SmtpLog log = [this](const std::string& text, bool isError) { lines.push_back({text, isError}); };
  std::vector<LogLine> lines;
};

// From "Reports" <sender@example.org> (given in mixed case) to `to`,
// subject "Test", one quoted-printable text body of `body`, which the caller
// keeps alive; the default body has a line that starts with a dot.
extern const std::string kDottedBody;
std::unique_ptr<Message> makeMessage(const std::vector<std::string>& to,
                                     const std::string& body = kDottedBody);

// `text` dot-stuffed, written in one piece or a character at a time.
std::string stuffed(const std::string& text, bool perCharacter = false);

// What the DATA phase carries for `message`: the message dot-stuffed, then
// the end mark.
std::string dataOf(Message& message);

}  // namespace email
