#include "email/message.h"

#include "base/error.h"
#include "base/fatal.h"
#include "email/header_text.h"

namespace email {
namespace {

constexpr char kMailer[] = "Tavrel Monitoring Server v.3.8.0 build 5153 on Windows NT (AMD-64)";

void writeAddressList(std::ostream& stream, const Message::AddressList& list) {
  const char* separator = "";
  for (const auto& address : list) {
    stream << separator << address->toString();
    separator = ", ";
  }
}

}  // namespace

const Address& Message::getFrom() const {
  TAVREL_ASSERT(from_ != nullptr, "Message without a sender");
  return *from_;
}

void Message::write(std::ostream& stream) {
  TAVREL_ASSERT(from_ != nullptr && body_ != nullptr, "Message written without sender or body");
  stamp_ = std::string(1, '1');  // the same in every message
  int counter = 1;
  writeHeaders(stream, counter);
  body_->writeBody(stream, stamp_, counter);
  stream << "\r\n";
  stream.flush();
  if (!stream) throw error::ESystemError("Writing the mail failed");
}

void Message::writeHeaders(std::ostream& stream, int& counter) {
  stream << "From: " << from_->toString() << "\r\n"
         << "X-Mailer: " << kMailer << "\r\n"
         << "To: ";
  writeAddressList(stream, to_);
  if (!replyTo_.empty()) {
    stream << "\r\nReply-To: ";
    writeAddressList(stream, replyTo_);
  }
  stream << "\r\nSubject: " << plain_header_text(subject_) << "\r\n"
         << "MIME-Version: 1.0\r\n"
         << "Content-Type: " << body_->contentType(stamp_, counter) << "\r\n"
         << "Content-Transfer-Encoding: " << body_->transferEncoding() << "\r\n";
  for (const auto& [name, value] : headers_) writeExtraHeader(stream, name, value);
  stream << "\r\n";
}

// A line feed in the value ends the line and the next character goes on a
// folded line behind a TAB; carriage returns are dropped. Whether the value
// ended in a line feed is judged after dropping them, so that no value can
// produce the empty line that ends the headers.
void Message::writeExtraHeader(std::ostream& stream, const std::string& name,
                               const std::string& value) {
  stream << "X-" << plain_header_text(name) << ": ";
  bool afterLineFeed = false;
  for (char c : value) {
    if (c == '\r') continue;
    if (afterLineFeed) stream << '\t';
    afterLineFeed = c == '\n';
    if (afterLineFeed) {
      stream << "\r\n";
    } else {
      stream << c;
    }
  }
  if (!afterLineFeed) stream << "\r\n";
}

}  // namespace email
