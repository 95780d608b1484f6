// Fuzz target: arbitrary bytes as the mail server setting and as the reply
// to EHLO; either parser may refuse the text with error::EParseError, and
// nothing may crash, hang or leak.
#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>

#include "base/error.h"
#include "email/smtp_extensions.h"
#include "email/smtp_reply.h"
#include "email/smtp_server.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  const email::SmtpLog log = [](const std::string&, bool) {};
  try {
    email::parse_smtp_server(text, log);
  } catch (const error::EParseError&) {
  }
  std::istringstream in(text);
  std::string said;
  email::readReply(in, log, &said);
  email::parse_ehlo_reply(said);
  email::parse_ehlo_reply(text);
  return 0;
}
