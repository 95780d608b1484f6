#include "email/test_support.h"

#include <sstream>

#include "email/encoding.h"
#include "email/smtp_escape_streambuf.h"

namespace email {

const std::string kDottedBody = ".hidden line\nplain\n";

HtmlWithPicture::HtmlWithPicture(MimeMultipart& related, const std::string& html,
                                 const std::string& picture, std::string pictureType)
    : UnstructuredMimeBody("text/html", quoted_printable_encoding()),
      related_(related),
      html_(html),
      picture_(picture),
      pictureType_(std::move(pictureType)) {}

void HtmlWithPicture::writeContent(std::ostream& out) {
  out << html_;
  related_.addPart(std::make_unique<DataMimeBody>(picture_.data(),
                                                  static_cast<uint32_t>(picture_.size()), "logo",
                                                  "logo.gif", pictureType_, base64_encoding()));
}

std::unique_ptr<DataMimeBody> textLeaf(const std::string& text) {
  return std::make_unique<DataMimeBody>(text.data(), static_cast<uint32_t>(text.size()), "",
                                        "a.txt", "text/plain", quoted_printable_encoding());
}

std::ostream& operator<<(std::ostream& os, const LogLine& line) {
  return os << (line.isError ? "error: " : "trace: ") << line.text;
}

std::unique_ptr<Message> makeMessage(const std::vector<std::string>& to, const std::string& body) {
  auto m = std::make_unique<Message>();
  m->setFrom(std::make_unique<Address>("Reports", "Sender@Example.org"));
  for (const auto& a : to) m->addTo(std::make_unique<Address>(a));
  m->setSubject("Test");
  m->setBody(textLeaf(body));
  // Fixed, so that two writes of the message give the same bytes.
  m->setDate("Tue, 24 Nov 2026 04:59:00 +0000");
  m->setMessageId("<test@example.org>");
  return m;
}

std::string stuffed(const std::string& text, bool perCharacter) {
  std::ostringstream out;
  SmtpEscapeStreambuf escape(out);
  std::ostream data(&escape);
  if (perCharacter) {
    for (char c : text) data.put(c);
  } else {
    data.write(text.data(), static_cast<std::streamsize>(text.size()));
  }
  data.flush();
  return out.str();
}

std::string dataOf(Message& message) {
  std::ostringstream raw;
  message.write(raw);
  return stuffed(raw.str()) + "\r\n.\r\n";
}

}  // namespace email
