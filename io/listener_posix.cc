#include <errno.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include "io/listener.h"
#include "io/socket_address.h"
#include "io/system_error.h"

namespace io {

namespace {

// A listening socket on `address`:`port`; sets `port` to the one taken.
int listen_on(uint32_t address, uint16_t& port) {
  std::string what = "Unable to listen on " + endpoint_text(address, port);
  int fd = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
  if (fd < 0) raise_last_error(what);
  int one = 1;
  setsockopt(fd, SOL_SOCKET, SO_REUSEADDR, &one, sizeof one);
  sockaddr_in local{};
  local.sin_family = AF_INET;
  local.sin_addr.s_addr = address;
  local.sin_port = htons(port);
  socklen_t len = sizeof local;
  if (bind(fd, reinterpret_cast<sockaddr*>(&local), len) != 0 || listen(fd, SOMAXCONN) != 0 ||
      getsockname(fd, reinterpret_cast<sockaddr*>(&local), &len) != 0) {
    int code = errno;
    close(fd);
    raise_system_error(what, code);
  }
  port = ntohs(local.sin_port);
  return fd;
}

}  // namespace

Listener::Listener(uint32_t address, uint16_t port)
    : fd_(listen_on(address, port)), address_(address), port_(port) {}

Listener::~Listener() { close(fd_); }

void Listener::name(std::string& out) const {
  out = "Listener(" + endpoint_text(address_, port_) + ")";
}

std::unique_ptr<Socket> Listener::accept() {
  sockaddr_in peer{};
  socklen_t len = sizeof peer;
  int fd = accept4(fd_, reinterpret_cast<sockaddr*>(&peer), &len, SOCK_CLOEXEC);
  if (fd < 0) {
    if (errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR || errno == ECONNABORTED)
      return nullptr;
    raise_last_error("Unable to accept on " + name_of(*this));
  }
  return std::make_unique<Socket>(endpoint_text(peer.sin_addr.s_addr, ntohs(peer.sin_port)), fd);
}

}  // namespace io
