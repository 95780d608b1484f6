// The mail server setting. Two forms:
//
//   host[:port]
//       as ever: port 25 by default, no authentication; STARTTLS when the
//       server offers it, without checking its certificate (a plain
//       connection would be taken as well, so checking it would only make
//       mail fail that goes out in plain text today).
//   smtp://[user@]host[:port][?parameters]    STARTTLS required, port 587
//   smtps://[user@]host[:port][?parameters]   TLS from the start, port 465
//       the server's certificate is checked against the system's CA store
//       (or `ca-file`) and must name `host`.
//
// Parameters, joined by "&", values percent-decoded like the user name:
//   password-file=PATH   the password is the first line of the file
//   password-env=NAME    the password is the environment variable NAME
//   ca-file=PATH         trust the CAs of this PEM file instead of the system's
//   auth=plain|login     the AUTH mechanism (default: PLAIN when offered)
//
// A user needs a password source, and a password source a user. The setting
// itself never holds the password: "user:password@" is refused, so that no
// log line, incident, dump or error text can show it; the password is read
// only when a mail is sent.
#pragma once

#include <cstdint>
#include <string>

#include "email/smtp_reply.h"

namespace email {

inline constexpr uint16_t kSmtpPort = 25;
inline constexpr uint16_t kSubmissionPort = 587;
inline constexpr uint16_t kSmtpsPort = 465;

enum class SmtpTls {
  kWhenOffered,  // plain host[:port]: STARTTLS if offered, certificate unchecked
  kStartTls,     // smtp://: STARTTLS required, certificate checked
  kImplicit,     // smtps://: TLS from the start, certificate checked
};

enum class SmtpAuth { kAny, kPlain, kLogin };

struct SmtpServerAddress {
  std::string host;
  uint16_t port = kSmtpPort;
  SmtpTls tls = SmtpTls::kWhenOffered;
  std::string user;  // empty: no authentication
  std::string password_file;
  std::string password_env;
  std::string ca_file;  // empty: the system's CA store
  SmtpAuth auth = SmtpAuth::kAny;
};

// Parses the setting. The plain form splits at its first colon; an empty
// host, or port 0, is told to `log` as the error "SMTP server parse
// problem: " and the quoted text, and then the whole text is taken as the
// host, on port 25. A port text that is not a decimal number from 0 to
// 65535 raises error::EParseError, as does a URL that breaks the rules
// above (its text names the fault, never a password).
SmtpServerAddress parse_smtp_server(const std::string& server, const SmtpLog& log);

// The password that `address` names: the first line of its file (without
// the line end) or its environment variable. Raises error::EParseError with
// the file's or the variable's name when it can't be read.
std::string read_smtp_password(const SmtpServerAddress& address);

}  // namespace email
