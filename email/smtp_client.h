// The SMTP client: hands one message to one mail server in one dialogue,
// over TLS and with authentication as the server setting asks
// (smtp_server.h); no queue and no retry.
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
  // `server` is the server setting (smtp_server.h); `log` gets every report
  // of the client, errors flagged. The client greets with this machine's
  // fully qualified name. `mailFrom`, the configuration's sender name, is
  // kept for the callers' sake and no longer given in the greeting, since
  // servers refuse a greeting that is no host name.
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
  // Replaces the name in the greeting; tests use a fixed one.
  void setHeloName(std::string name) { heloName_ = std::move(name); }

 private:
  bool connectAndSend(Message& message);

  const std::string server_;
  const std::string mailFrom_;
  const SmtpLog log_;
  io::Duration timeout_ = kSmtpTimeout;
  std::string heloName_;  // empty: the machine's fully qualified name
};

}  // namespace email
