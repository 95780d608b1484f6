#include <errno.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <system_error>
#include <thread>

#include "io/connector.h"
#include "io/errors.h"
#include "io/socket_address.h"
#include "io/system_error.h"

namespace io {

namespace {

// A connect() that a signal interrupted goes on in the background; wait for
// its end and fetch its outcome.
int finish_interrupted_connect(int fd) {
  pollfd p{fd, POLLOUT, 0};
  while (poll(&p, 1, -1) < 0)
    if (errno != EINTR) return errno;
  int code = 0;
  socklen_t len = sizeof code;
  if (getsockopt(fd, SOL_SOCKET, SO_ERROR, &code, &len) != 0) return errno;
  return code;
}

int connect_blocking(int fd, uint32_t address, uint16_t port) {
  sockaddr_in peer{};
  peer.sin_family = AF_INET;
  peer.sin_addr.s_addr = address;
  peer.sin_port = htons(port);
  if (connect(fd, reinterpret_cast<const sockaddr*>(&peer), sizeof peer) == 0) return 0;
  if (errno == EINTR) return finish_interrupted_connect(fd);
  return errno;
}

void signal_done(connect_state* state) {
  uint64_t one = 1;
  // An eventfd write of 1 can't fail short of a counter overflow.
  (void)!write(state->done, &one, sizeof one);
}

void run_connect(connect_state* state) {
  int code = connect_blocking(state->socket, state->address, state->port);
  state->status.store(code, std::memory_order_release);
  signal_done(state);
  release(state);
}

}  // namespace

void release(connect_state* state) {
  if (state->references.fetch_sub(1, std::memory_order_acq_rel) != 1) return;
  if (state->socket >= 0) close(state->socket);
  if (state->done >= 0) close(state->done);
  delete state;
}

SocketConnector::SocketConnector(uint32_t address, uint16_t port) : state_(new connect_state) {
  state_->address = address;
  state_->port = port;
  state_->status.store(EINPROGRESS);
  // Close-on-exec from the start: the socket is never inherited.
  state_->socket = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  if (state_->socket < 0) {
    int code = errno;
    delete state_;
    throw EConnection("Inavlid socket returned from socket(): " + system_error_text(code));
  }
  state_->done = eventfd(0, EFD_CLOEXEC);
  if (state_->done < 0) {
    int code = errno;
    std::string what = "Unable to create the event of " + name_of(*this);
    close(state_->socket);
    delete state_;
    raise_system_error(what, code);
  }
  try {
    std::thread(run_connect, state_).detach();
  } catch (const std::system_error& e) {
    state_->status.store(e.code().value());
    signal_done(state_);
    release(state_);
  }
}

SocketConnector::~SocketConnector() { release(state_); }

void SocketConnector::name(std::string& out) const {
  out = "SocketConnector(" + endpoint_text(state_->address, state_->port) + ")";
}

WaitHandle SocketConnector::wait_handle() const { return {state_->done, kWaitRead}; }

}  // namespace io
