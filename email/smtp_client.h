// The SMTP client: hands one message to one mail server in one plain
// dialogue (no authentication, no TLS, no extensions, no retry).
//
// Not thread-safe; send() blocks the calling thread for the whole dialogue,
// and for up to the stream time-out at each read or write.
#pragma once

#include <chrono>
#include <string>

#include "email/message.h"
#include "email/smtp_reply.h"
#include "io/clock.h"

namespace email {

// The time-out of each wait on the connection's stream.
inline constexpr io::Duration kSmtpTimeout = std::chrono::seconds(120);

class SmtpClient {
 public:
  // `server` is a host name, optionally with ":" and a port (25 by
  // default); `mailFrom` is the name given in HELO; `log` gets every report
  // of the client, errors flagged.
  SmtpClient(std::string server, std::string mailFrom, SmtpLog log)
      : server_(std::move(server)), mailFrom_(std::move(mailFrom)), log_(std::move(log)) {}

  // Connects, runs the dialogue for `message` and closes the connection.
  // Gives true if the server took the message (also when some but not all
  // recipients were refused), else false. Never raises error::Exception
  // or std::ios_base::failure: every such failure, from name resolution and
  // connection to a failure of the message's own bodies while they are
  // written, is told through `log` as "SMTP connection to " server
  // " lost: " and the quoted text.
  bool send(Message& message);

  // Replaces the stream time-out; tests use a short one.
  void setTimeout(io::Duration timeout) { timeout_ = timeout; }

 private:
  bool connectAndSend(Message& message);

  const std::string server_;
  const std::string mailFrom_;
  const SmtpLog log_;
  io::Duration timeout_ = kSmtpTimeout;
};

}  // namespace email
