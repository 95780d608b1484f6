#include <errno.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/socket.h>
#include <unistd.h>

#include <mutex>

#include "io/descriptor.h"
#include "io/system_error.h"

namespace io {

namespace {

TransferResult result_of(ssize_t n) {
  if (n >= 0) return {static_cast<size_t>(n), 0};
  if (errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR) return {0, kTransferPending};
  return {0, errno};
}

void ignore_broken_pipe_signal() {
  static std::once_flag once;
  std::call_once(once, [] { signal(SIGPIPE, SIG_IGN); });
}

}  // namespace

TransferResult read_some(int fd, char* to, size_t n) { return result_of(::read(fd, to, n)); }

TransferResult write_some(int fd, const char* from, size_t n) {
  ignore_broken_pipe_signal();
  return result_of(::write(fd, from, n));
}

TransferResult send_some(int fd, const char* from, size_t n) {
  return result_of(::send(fd, from, n, MSG_NOSIGNAL));
}

bool is_invalid_descriptor_code(int code) { return code == EBADF || code == ENOTSOCK; }

void set_nonblocking(int fd) {
  int flags = fcntl(fd, F_GETFL);
  if (flags < 0 || fcntl(fd, F_SETFL, flags | O_NONBLOCK) < 0)
    raise_last_error("Unable to set descriptor " + std::to_string(fd) + " to non-blocking");
}

int adopt_nonblocking(int fd) {
  if (fd < 0) return fd;
  try {
    set_nonblocking(fd);
  } catch (...) {
    ::close(fd);
    throw;
  }
  return fd;
}

void close_descriptor(int fd) {
  // Linux releases the descriptor even when close() reports an error, so a
  // retry could close somebody else's.
  ::close(fd);
}

int shutdown_socket(int fd, ShutdownHow how) {
  int mode = how == ShutdownHow::kReceive ? SHUT_RD
             : how == ShutdownHow::kSend  ? SHUT_WR
                                          : SHUT_RDWR;
  return ::shutdown(fd, mode) == 0 ? 0 : errno;
}

DescriptorPair create_pipe() {
  int fds[2];
  if (pipe2(fds, O_CLOEXEC) != 0) raise_last_error("Unable to create pipe");
  return {fds[0], fds[1]};
}

DescriptorPair create_socket_pair() {
  int fds[2];
  if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, fds) != 0)
    raise_last_error("Unable to create socket pair");
  return {fds[0], fds[1]};
}

}  // namespace io
