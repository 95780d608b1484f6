// Opening a TCP connection without blocking the process.
//
// The connector starts a thread that runs the blocking connect(); the
// process waits on the connector in a selector (or with waitReady) and then
// builds an io::Socket from it, which raises if the connection failed. The
// thread and the connector share nothing but the reference-counted
// connect_state. This is the only thread the process ever starts.
#pragma once

#include <atomic>
#include <cstdint>
#include <string>

#include "io/selectable.h"

namespace io {

// Shared by the connector and its thread. Whoever drops the last reference
// closes what is still open in it and frees it.
struct connect_state {
  std::atomic<uint32_t> references{2};
  // The system's code of the connection: "in progress" (EINPROGRESS) at the
  // start, 0 when connected. Written by the thread before it signals `done`.
  std::atomic<int> status{0};
  uint32_t address = 0;  // Network order.
  uint16_t port = 0;
  int socket = -1;  // -1 once io::Socket has taken it.
  int done = -1;    // An eventfd that becomes readable when the thread ends.
};

class SocketConnector : public Selectable {
 public:
  // Starts connecting to `address` (network order) and `port`, and returns
  // at once. Raises io::EConnection "Inavlid socket returned from socket(): "
  // + the system's text when no socket can be made, and error::ESystemError
  // when the completion event can't be made. A thread that can't be started
  // is a failed connection, raised by io::Socket.
  SocketConnector(uint32_t address, uint16_t port);
  // Safe before the thread has ended: the thread then closes the socket.
  ~SocketConnector() override;

  // "SocketConnector(" + address + ":" + port + ")".
  void name(std::string& out) const override;
  // The completion event: signalled, and staying so, when the thread ended.
  WaitHandle wait_handle() const override;
  // Always false: the connector is ready only through its descriptor.
  bool is_ready() const override { return false; }

  // The shared state, for io::Socket.
  connect_state& state() const { return *state_; }

 private:
  connect_state* state_;
};

// Drops one reference of `state`.
void release(connect_state* state);

}  // namespace io
