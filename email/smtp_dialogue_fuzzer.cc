// Fuzz target: arbitrary bytes as the replies of an SMTP server, read by
// readReply and answered by a whole dialogue (EHLO extensions, HELO
// fallback, STARTTLS, refusals); nothing may crash, hang or leak, whatever
// the server says. Starting TLS on this stream raises, as documented.
#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>

#include "base/error.h"
#include "email/encoding.h"
#include "email/message.h"
#include "email/smtp_dialogue.h"

namespace {

// Reads the server's bytes from `replies` and drops what the client sends.
class ServerBuf : public std::streambuf {
 public:
  explicit ServerBuf(std::string& replies) {
    setg(replies.data(), replies.data(), replies.data() + replies.size());
  }

 protected:
  int_type overflow(int_type c) override { return traits_type::not_eof(c); }
  std::streamsize xsputn(const char*, std::streamsize n) override { return n; }
};

const std::string kBody = ".line\nline\n";

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::string replies(reinterpret_cast<const char*>(data), size);
  const email::SmtpLog log = [](const std::string&, bool) {};

  std::istringstream in(replies);
  std::string text;
  while (in.peek() != std::char_traits<char>::eof()) email::readReply(in, log, &text);

  email::Message message;
  message.setFrom(std::make_unique<email::Address>("from@x"));
  message.addTo(std::make_unique<email::Address>("a@x"));
  message.addTo(std::make_unique<email::Address>("b@x"));
  message.setBody(std::make_unique<email::DataMimeBody>(
      kBody.data(), kBody.size(), "", "f", "text/plain", email::quoted_printable_encoding()));
  ServerBuf server(replies);
  std::iostream stream(&server);
  try {
    email::smtp_dialogue(stream, "server", "client", message, log);
  } catch (const error::Exception&) {
    // A server that offers STARTTLS gets it, which this stream can't start.
  }
  return 0;
}
