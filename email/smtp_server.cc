#include "email/smtp_server.h"

#include "base/error.h"

namespace email {
namespace {

uint16_t parsePort(const std::string& text) {
  const bool digits = !text.empty() && text.size() <= 5 &&
                      text.find_first_not_of("0123456789") == std::string::npos;
  const unsigned long port = digits ? std::stoul(text) : 0;
  if (!digits || port > 65535) {
    throw error::EParseError("Bad port number in SMTP server \"" + text + "\"");
  }
  return static_cast<uint16_t>(port);
}

}  // namespace

SmtpServerAddress parse_smtp_server(const std::string& server, const SmtpLog& log) {
  const auto colon = server.find(':');
  if (colon == std::string::npos) {
    if (!server.empty()) return {server, kSmtpPort};
  } else {
    SmtpServerAddress parsed{server.substr(0, colon), parsePort(server.substr(colon + 1))};
    if (!parsed.host.empty() && parsed.port != 0) return parsed;
  }
  log("SMTP server parse problem: \"" + server + "\"", true);
  return {server, kSmtpPort};
}

}  // namespace email
