// The mail server setting: a host name, or a host name, a colon and a port.
#pragma once

#include <cstdint>
#include <string>

#include "email/smtp_reply.h"

namespace email {

struct SmtpServerAddress {
  std::string host;
  uint16_t port = 25;
};

inline constexpr uint16_t kSmtpPort = 25;

// Splits `server` at its first colon; without one the port is 25. An empty
// host, or port 0, is told to `log` as the error "SMTP server parse
// problem: " and the quoted text, and then the whole text is taken as the
// host, on port 25. A port text that is not a decimal number from 0 to
// 65535 raises error::EParseError.
SmtpServerAddress parse_smtp_server(const std::string& server, const SmtpLog& log);

}  // namespace email
