#include "email/smtp_client.h"

#include <ios>

#include "base/error.h"
#include "email/smtp_dialogue.h"
#include "email/smtp_server.h"
#include "io/connector.h"
#include "io/iostream.h"
#include "io/selector.h"
#include "io/socket.h"
#include "io/socket_address.h"

namespace email {

bool SmtpClient::send(Message& message) {
  std::string failure;
  try {
    return connectAndSend(message);
  } catch (const error::Exception& e) {
    failure = e.text();
  } catch (const std::ios_base::failure& e) {
    // A stream that failed without an exception of its own.
    failure = e.what();
  }
  log_("SMTP connection to " + server_ + " lost: \"" + failure + "\"", true);
  return false;
}

// The stream, the socket and the connector are destroyed on every path,
// which closes the connection.
bool SmtpClient::connectAndSend(Message& message) {
  const SmtpServerAddress address = parse_smtp_server(server_, log_);
  io::SocketConnector connector(io::resolve(address.host), address.port);
  io::waitReady(connector, timeout_);
  io::Socket socket(connector);
  // Raises the failures of writing (io::iostream sets badbit exceptions); a
  // failure or time-out while reading shows as the end of the stream.
  io::iostream stream(socket.input(), socket.output(), timeout_);
  return smtp_dialogue(stream, server_, mailFrom_, message, log_);
}

}  // namespace email
