// Shared pieces of the SMTP tests: a recorder of the client's log, a small
// message, and the bytes that the DATA phase carries for it.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "email/message.h"
#include "email/smtp_reply.h"

namespace email {

struct LogLine {
  std::string text;
  bool isError;
  bool operator==(const LogLine&) const = default;
};
std::ostream& operator<<(std::ostream& os, const LogLine& line);

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
