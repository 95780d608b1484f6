// The SMTP dialogue of one mail over an open connection: EHLO (HELO when
// EHLO is refused), STARTTLS and EHLO again when wanted, AUTH when a user is
// set, MAIL FROM, RCPT TO for each recipient, DATA with the dot-stuffed
// message, QUIT.
#pragma once

#include <functional>
#include <iostream>
#include <string>

#include "email/message.h"
#include "email/smtp_reply.h"
#include "email/smtp_server.h"

namespace email {

// The connection a dialogue runs over.
class SmtpChannel {
 public:
  virtual ~SmtpChannel() = default;
  // The stream of the connection; after startTls() a new one.
  virtual std::iostream& stream() = 0;
  // Whether the connection is encrypted.
  virtual bool secure() const = 0;
  // Starts TLS on the connection, once the server agreed to STARTTLS.
  // Raises error::Exception when the handshake fails.
  virtual void startTls() = 0;
};

struct SmtpDialogueSettings {
  std::string server;    // the setting's text, for messages (holds no password)
  std::string heloName;  // the name given in EHLO and HELO
  SmtpTls tls = SmtpTls::kWhenOffered;
  std::string user;  // empty: no authentication
  SmtpAuth auth = SmtpAuth::kAny;
  std::function<std::string()> password;  // asked only when AUTH is sent
};

// Hands `message` to the server at the other end of `channel`, which has
// just been connected to it.
//
// Gives true when the server took the message, also when some (not all)
// recipients were refused or QUIT failed; false after any other refusal,
// which is followed by a QUIT whose outcome isn't told. Every refusal and
// the success are told through `log`; no text names the password or the
// AUTH exchange. Raises what writing the message and starting TLS raise
// (error::Exception and derived classes); the caller closes the connection
// in any case.
bool smtp_dialogue(SmtpChannel& channel, const SmtpDialogueSettings& settings, Message& message,
                   const SmtpLog& log);

// The dialogue over a plain stream that can't start TLS, without
// authentication: `server` names the server in messages, `heloName` is the
// name in EHLO. A server that offers STARTTLS gets it, which fails.
bool smtp_dialogue(std::iostream& stream, const std::string& server, const std::string& heloName,
                   Message& message, const SmtpLog& log);

}  // namespace email
