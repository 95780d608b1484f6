// A listening TCP socket: the server side of io::Socket, for the stand-in
// siblings and the tests.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "io/selectable.h"
#include "io/socket.h"

namespace io {

class Listener : public Selectable {
 public:
  // Listens on `address` (network order) and `port`; port 0 takes any free
  // one. Raises error::ESystemError "Unable to listen on " + address + ":" +
  // port + ": " + the system's text.
  Listener(uint32_t address, uint16_t port);
  ~Listener() override;

  // "Listener(" + address + ":" + port + ")".
  void name(std::string& out) const override;
  // Signalled while a connection waits to be accepted.
  WaitHandle wait_handle() const override { return {fd_, kWaitRead}; }
  bool is_ready() const override { return false; }

  // The port it listens on.
  uint16_t port() const { return port_; }
  // Takes one waiting connection, or returns null when none waits. Raises
  // error::ESystemError for other failures.
  std::unique_ptr<Socket> accept();

 private:
  int fd_;
  uint32_t address_;
  uint16_t port_;
};

}  // namespace io
