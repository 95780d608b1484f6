#include "email/smtp_client.h"

#include <ios>
#include <memory>
#include <optional>

#include "base/error.h"
#include "email/smtp_dialogue.h"
#include "email/smtp_server.h"
#include "io/connector.h"
#include "io/iostream.h"
#include "io/selector.h"
#include "io/socket.h"
#include "io/socket_address.h"
#include "io/tls.h"

namespace email {
namespace {

// A TCP connection to the server, TLS on it from the start or after
// STARTTLS. The streams are made afresh when TLS starts; the plain one is
// dropped first, so that the socket's own streams are no longer used.
class SocketChannel : public SmtpChannel {
 public:
  SocketChannel(const SmtpServerAddress& address, io::Duration timeout)
      : address_(address), timeout_(timeout) {
    io::SocketConnector connector(io::resolve(address.host), address.port);
    io::waitReady(connector, timeout_);
    socket_.emplace(connector);
    if (address.tls == SmtpTls::kImplicit) {
      startTls();
    } else {
      stream_ = std::make_unique<io::iostream>(socket_->input(), socket_->output(), timeout_);
    }
  }
  // The stream goes before the TLS connection, and that before the socket.
  ~SocketChannel() override {
    stream_.reset();
    tls_.reset();
  }

  std::iostream& stream() override { return *stream_; }
  bool secure() const override { return tls_ != nullptr; }
  void startTls() override {
    stream_.reset();
    io::TlsOptions options;
    options.host = address_.host;
    options.ca_file = address_.ca_file;
    options.verify = address_.tls != SmtpTls::kWhenOffered;
    tls_ = std::make_unique<io::TlsConnection>(socket_->descriptor(), socket_->name(), options,
                                               timeout_);
    stream_ = std::make_unique<io::iostream>(tls_->input(), tls_->output(), timeout_);
  }

 private:
  const SmtpServerAddress& address_;
  const io::Duration timeout_;
  std::optional<io::Socket> socket_;
  std::unique_ptr<io::TlsConnection> tls_;
  std::unique_ptr<io::iostream> stream_;
};

}  // namespace

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

// The channel and its socket are destroyed on every path, which closes the
// connection. A failure or time-out while reading shows as the end of the
// stream; writing raises (io::iostream sets badbit exceptions).
bool SmtpClient::connectAndSend(Message& message) {
  const SmtpServerAddress address = parse_smtp_server(server_, log_);
  SocketChannel channel(address, timeout_);
  SmtpDialogueSettings settings;
  settings.server = server_;
  settings.heloName = heloName_.empty() ? io::fully_qualified_host_name() : heloName_;
  settings.tls = address.tls;
  settings.user = address.user;
  settings.auth = address.auth;
  settings.password = [&address] { return read_smtp_password(address); };
  return smtp_dialogue(channel, settings, message, log_);
}

}  // namespace email
