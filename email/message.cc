#include "email/message.h"

#include "base/error.h"
#include "base/fatal.h"
#include "email/encoded_words.h"
#include "email/header_fold.h"
#include "email/header_text.h"
#include "email/message_identity.h"

namespace email {
namespace {

constexpr char kMailer[] = "Tavrel Monitoring Server v.3.8.0 build 5153 on Windows NT (AMD-64)";

// The display name, if any, and the address in lower case, then `separator`
// on the same line.
void writeAddress(HeaderFolder& folder, const Address& address, const char* separator = "") {
  if (!address.name().empty()) write_phrase(folder, plain_header_text(address.name()));
  folder.word("<" + plain_header_text(address.bare()) + ">" + separator);
}

// Addresses separated by commas, folded between them.
void writeAddressList(std::ostream& stream, std::string_view field,
                      const Message::AddressList& list) {
  HeaderFolder folder(stream, field);
  for (size_t i = 0; i < list.size(); ++i)
    writeAddress(folder, *list[i], i + 1 < list.size() ? "," : "");
  folder.end();
}

void writeField(std::ostream& stream, std::string_view field, std::string_view value) {
  HeaderFolder folder(stream, field);
  folder.word(value);
  folder.end();
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

// The Date and Message-ID follow the Subject; long fields are folded, and
// text that can't stand in a header goes out as encoded words.
void Message::writeHeaders(std::ostream& stream, int& counter) {
  HeaderFolder from(stream, "From");
  writeAddress(from, *from_);
  from.end();
  writeField(stream, "X-Mailer", kMailer);
  writeAddressList(stream, "To", to_);
  if (!replyTo_.empty()) writeAddressList(stream, "Reply-To", replyTo_);
  HeaderFolder subject(stream, "Subject");
  write_unstructured(subject, plain_header_text(subject_));
  subject.end();
  writeField(stream, "Date", date_.empty() ? mail_date(std::time(nullptr)) : date_);
  writeField(stream, "Message-ID",
             messageId_.empty() ? new_message_id(message_id_domain(from_->bare())) : messageId_);
  stream << "MIME-Version: 1.0\r\n"
         << "Content-Type: " << body_->contentType(stamp_, counter) << "\r\n"
         << "Content-Transfer-Encoding: " << body_->transferEncoding() << "\r\n";
  for (const auto& [name, value] : headers_) writeExtraHeader(stream, name, value);
  stream << "\r\n";
}

// A line feed in the value ends the line and the next character goes on a
// folded line behind a TAB; carriage returns are dropped. Whether the value
// ended in a line feed is judged after dropping them, so that no value can
// produce the empty line that ends the headers. Each line of the value is
// folded and encoded as unstructured text.
void Message::writeExtraHeader(std::ostream& stream, const std::string& name,
                               const std::string& value) {
  std::string lines;
  for (char c : value) {
    if (c != '\r') lines += c;
  }
  HeaderFolder folder(stream, "X-" + plain_header_text(name));
  size_t start = 0;
  for (size_t end; (end = lines.find('\n', start)) != std::string::npos; start = end + 1) {
    write_unstructured(folder, std::string_view(lines).substr(start, end - start));
    if (end + 1 < lines.size()) folder.breakLine();
  }
  if (start < lines.size() || start == 0)
    write_unstructured(folder, std::string_view(lines).substr(start));
  folder.end();
}

}  // namespace email
